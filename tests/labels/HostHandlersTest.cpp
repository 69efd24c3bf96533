#include <gtest/gtest.h>

#include "fields/data/HostQuestions.h"
#include "frontend/handlers/CommandHandlerPool.h"
#include "labels/HostStatus.h"
#include "labels/Job.h"
#include "tests/support/FakePrinterContext.h"
#include "tests/support/StreamRun.h"

namespace {

TEST(HostStatus, OfAnIdlePrinterIsTheKnownAnswer) {
    Scripting::PrinterStatus printer;
    ZplCore::StreamStatus stream;
    stream.labelLength = 1218;
    EXPECT_EQ(ZplCore::HostStatusAnswer(printer, stream),
              "\x02"
              "030,0,0,1218,000,0,0,0,000,0,0,0\x03\r\n"
              "\x02"
              "000,0,0,0,0,2,0,0,00000000,1,000\x03\r\n"
              "\x02"
              "0000,0\x03\r\n");
}

TEST(HostStatus, NumbersKeepTheirWidth) {
    Scripting::PrinterStatus printer;
    printer.paperOut = printer.paused = printer.headOpen = printer.ribbonOut = printer.thermalTransfer = true;
    printer.continuousMedia = true;
    printer.formatsInBuffer = 12345;
    printer.labelsRemaining = 4'294'967'295U;
    EXPECT_EQ(ZplCore::HostStatusAnswer(printer, {99999, true, ZplPrintMode::Applicator, 7}),
              "\x02"
              "030,1,1,9999,999,0,0,1,000,0,0,0\x03\r\n"
              "\x02"
              "129,0,1,1,1,4,0,0,99999999,1,007\x03\r\n"
              "\x02"
              "0000,0\x03\r\n");
}

class HostAnswers : public testing::Test {
protected:
    /// Runs a stream and gives what was sent back, after the page and after the format of each label.
    std::string Run(std::string const& stream) {
        Desk desk{RenderOptions{}};
        desk.SetHostReceiver([this](std::string_view data) { answers_ += data; });
        auto const session = desk.MakeSession();
        for (std::string_view rest = stream; !rest.empty();) {
            auto result = session->Consume(rest, false, true);
            rest = result.remaining;
            if (!result.label) continue;
            Zpl::Label label = std::get<1>(*result.label);
            for (unsigned copy = 0; copy < label.Quantity(); ++copy) {
                label.ProcessLabel(copy, false);
                answers_ += "|page:";
                label.SendEndOfPageNetworkResponses();
            }
            answers_ += "|format:";
            label.SendEndOfFormatNetworkResponses();
            if (tellsEndTwice_) label.RenderLabel("", 0, 0, true), label.SendEndOfFormatNetworkResponses();
        }
        return std::exchange(answers_, {});
    }

    bool tellsEndTwice_ = false;
    std::string answers_;
};

TEST_F(HostAnswers, VerifyFieldsOncePerFormatOrLabel) {
    std::string const store = "^XA^DFR:T.ZPL^FS^FO9,9^FN3^FS^XZ^XA^XFR:T.ZPL^FN3^FDABCDE^FS";
    struct Row {
        char const* name;
        std::string command;
        std::string answers;
    };
    for (auto const& row : std::vector<Row>{
             {"once for the format", "^HV3", "|page:|format:ABCDE"},
             {"framed", "^FH^HV3,3,<_0D,_0A>,F^FS", "|page:|format:<\rABC\n>"},
             {"once for every label", "^PQ2^HV3,64,,;,L", "|page:ABCDE;|page:ABCDE;|format:"},
             {"a number that no field has", "^HV4", "|page:|format:"},
             {"a number that no field has, framed", "^HV4,,<,>", "|page:|format:<>"},
             {"data of the field itself", "^FN5^FDxy^FS^HV5", "|page:|format:xy"},
             {"two questions", "^HV3,1^HV3,2", "|page:|format:AAB"},
         }) {
        SCOPED_TRACE(row.name);
        EXPECT_EQ(Run(store + row.command + "^XZ"), row.answers);
    }
}

TEST_F(HostAnswers, SendAStoredPictureOnceHoweverOftenTheFormatIsDrawn) {
    std::string const store = "~DGR:L.GRF,4,2,FF81";
    std::string const answer = "~DGR:L.GRF,4,2,:B64:/4EAAA==:0E4B\r\n";
    for (auto const& [stream, expected] : std::vector<std::pair<std::string, std::string>>{
             {"^XA^HYR:L.GRF^XZ", answer},
             {"^XA^HYL^XZ^XA^HYr:l^XZ", answer + answer},
             {"^XA^PQ3^HYR:L^FDa^FS^XZ", "|page:|page:|page:|format:" + answer},
             {"^XA^HYR:L^FDa^FS~DGR:L.GRF,1,1,00^XZ", "|page:|format:~DGR:L.GRF,1,1,:B64:AA==:A682\r\n"},
             {"^XA^HYR:L^FDa^FS^XZ~DGR:L.GRF,1,1,00", "|page:|format:" + answer},
             {"^XA^HY^HYQ:L^HYR:X^HYR:../L^XZ", ""},
         }) {
        EXPECT_EQ(Run(store + stream), expected) << stream;
    }
    EXPECT_EQ(Run(answer + "^XA^HYL^XZ"), answer);
    tellsEndTwice_ = true;
    EXPECT_EQ(Run(store + "^XA^HYL^HYR:L^FDa^FS^XZ"), "|page:|format:" + answer);
}

TEST_F(HostAnswers, PicturesOfAFormatFitALineOfTheBusTogether) {
    std::string const answers =
        Run("~DGR:A.GRF,20971520,8192,FF~DGR:B.GRF,20971520,8192,FF~DGR:TOOLARGE.GRF,41943040,8192,FF~DGR:S.GRF,1,1,FF"
            "^XA^HYA^HYB^HYTOOLARGE^HYS^HYA^XZ");
    std::string names;
    for (auto at = answers.find("~DGR:"); at != answers.npos; at = answers.find("~DGR:", at + 1))
        names += answers[at + 5];
    EXPECT_EQ(names, "AS");
    EXPECT_LE(answers.size(), ZplCore::MostAnswerBytes);
}

TEST_F(HostAnswers, StatusComesAtOnceAndDisturbsNoFormat) {
    std::string const answer = Run("^XA^FO9,9^FDa~HS^FS^XZ");
    EXPECT_EQ(answer.find("030,0,0,1218,000,0,0,1,"), 1U);
    EXPECT_EQ(answer.substr(answer.size() - 14), "|page:|format:");
}

TEST_F(HostAnswers, ReportsPrintAsLabelsOutsideFormatsOnly) {
    EXPECT_EQ(Run("~WC~WL"), "|page:|format:|page:|format:");
    EXPECT_EQ(Run("^XA^FO9,9^FDa~WC^FS^XZ"), "|page:|format:");
}

}  // namespace
