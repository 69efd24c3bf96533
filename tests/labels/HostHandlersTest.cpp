#include <gtest/gtest.h>

#include "PrintEngine/Printing/JobMetaData.h"
#include "fields/data/HostQuestions.h"
#include "frontend/handlers/CommandHandlerPool.h"
#include "labels/HostStatus.h"
#include "labels/Job.h"
#include "tests/support/StreamRun.h"
#include "tests/support/TemporaryDirectory.h"
#include "tests/support/Texts.h"

namespace {

TEST(HostStatus, EachFlagHasItsPlaceAndNumbersKeepTheirWidth) {
    struct Row {
        std::function<void(Scripting::PrinterStatus&, ZplCore::StreamStatus&)> set;
        std::string told;  // of the first or of the second string; the other is that of an idle printer
    };
    for (auto const& [set, told] : std::vector<Row>{
             {[](auto&, auto&) {}, "030,0,0,0000,000,0,0,0"},
             {[](auto&printer, auto&) { printer.paperOut = true; }, "030,1,0,0000,000,0,0,0"},
             {[](auto&printer, auto&) { printer.paused = true; }, "030,0,1,0000,000,0,0,0"},
             {[](auto&, auto&stream) { stream.labelLength = 99999; }, "030,0,0,9999,000,0,0,0"},
             {[](auto&printer, auto&) { printer.formatsInBuffer = 12345; }, "030,0,0,0000,999,0,0,0"},
             {[](auto&, auto&stream) { stream.formatOpen = true; }, "030,0,0,0000,000,0,0,1"},
             {[](auto&printer, auto&) { printer.continuousMedia = true; }, "128,0,0,0,0,2,0,0,00000000,1,000"},
             {[](auto&printer, auto&) { printer.headOpen = true; }, "000,0,1,0,0,2,0,0,00000000,1,000"},
             {[](auto&printer, auto&) { printer.ribbonOut = true; }, "000,0,0,1,0,2,0,0,00000000,1,000"},
             {[](auto&printer, auto&) { printer.thermalTransfer = true; }, "001,0,0,0,1,2,0,0,00000000,1,000"},
             {[](auto&, auto&stream) { stream.printMode = ZplPrintMode::PeelOff; }, "000,0,0,0,0,1,0,0,00000000,1,000"},
             {[](auto&, auto&stream) { stream.printMode = ZplPrintMode::Cutter; }, "000,0,0,0,0,3,0,0,00000000,1,000"},
             {[](auto&, auto&stream) { stream.printMode = ZplPrintMode::Applicator; },
              "000,0,0,0,0,4,0,0,00000000,1,000"},
             {[](auto&printer, auto&) { printer.labelsRemaining = 4'294'967'295U; },
              "000,0,0,0,0,2,0,0,99999999,1,000"},
             {[](auto&, auto&stream) { stream.storedGraphics = 7; }, "000,0,0,0,0,2,0,0,00000000,1,007"},
         }) {
        Scripting::PrinterStatus printer;
        ZplCore::StreamStatus stream;
        set(printer, stream);
        bool const isFirst = told.starts_with("030,");
        EXPECT_EQ(ZplCore::HostStatusAnswer(printer, stream),
                  "\x02" + (isFirst ? told : "030,0,0,0000,000,0,0,0") + ",000,0,0,0\x03\r\n\x02" +
                      (isFirst ? "000,0,0,0,0,2,0,0,00000000,1,000" : told) + "\x03\r\n\x02" + "0000,0\x03\r\n");
    }
}

class HostAnswers : public testing::Test {
protected:
    /// Runs a stream and gives what was sent back, after the page and after the format of each label.
    std::string Run(std::string const& stream) {
        Desk desk{DeskSettings{}};
        desk.SetHostReceiver([this](std::string_view data) { answers_ += data; });
        RunStream(desk, stream, [this](Zpl::Label& label, auto&) {
            for (unsigned copy = 0; copy < label.Quantity(); ++copy) {
                label.ProcessLabel(copy, false);
                answers_ += "|page:";
                label.SendEndOfPageNetworkResponses();
            }
            answers_ += "|format:";
            label.SendEndOfFormatNetworkResponses();
            if (tellsEndTwice_) label.RenderLabel("", 0, 0, true), label.SendEndOfFormatNetworkResponses();
        });
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
    for (char const* const each : {"~DGR:A.", "~DGR:S."}) EXPECT_EQ(CountOf(each, answers), 1U);
    EXPECT_EQ(CountOf("~DGR:", answers), 2U);
    EXPECT_LE(answers.size(), ZplCore::MostAnswerBytes);
}

TEST_F(HostAnswers, StatusComesAtOnceAndDisturbsNoFormat) {
    std::string const answer = Run("^XA^FO9,9^FDa~HS^FS^XZ");
    EXPECT_EQ(answer.find("030,0,0,1218,000,0,0,1,"), 1U);
    EXPECT_EQ(answer.substr(answer.size() - 14), "|page:|format:");
}

TEST(HostStatus, FollowsThePrinter) {
    Desk desk{DeskSettings{}};
    auto& model = desk.Model();
    std::string answer;
    desk.SetHostReceiver([&answer](std::string_view data) { answer = data; });
    TemporaryDirectory const first, second;
    PrintEngine::Printing::JobMetaData{.jobName = "n", .totalPages = 9}.Write(first.Path());
    PrintEngine::Printing::JobMetaData{.jobName = "n", .totalPages = 4}.Write(second.Path());
    auto const print = [&model](TemporaryDirectory const& job, unsigned page) {
        model.GetCurrentJobPathProperty()->Set(job.Path().string());
        model.GetCurrentPrintingPageProperty()->Set(page);
    };
    auto const expectLeft = [&answer](char const* pages) {
        EXPECT_EQ(answer.substr(37, 30), "000,0,0,0,0,2,0,0," + std::string(pages) + ",1,0");
    };
    for (auto const& [page, left] : {std::pair(2U, "00000007"), {9U, "00000000"}, {12U, "00000000"}}) {
        print(first, page);
        RunStream(desk, "~HS");
        expectLeft(left);
    }
    RunStream(desk, "~HS^XA^FDa^FS^XZ~HS", [&](auto&, auto&) { print(second, 1); });
    expectLeft("00000003");
    model.GetPrintJobStatusProperty()->Set("Print Paused");
    RunStream(desk, "~HS");
    EXPECT_EQ(answer.substr(1, 8), "030,0,1,");
    // Media without an end are as long as is set, where the printer does not measure them itself (2).
    model.PartManager().SetInstalledPart({4, 6, true});
    model.GetDefaultZplContinuousLabelLengthProperty()->Set(2500);
    for (auto const& [mode, length] : {std::pair(2U, "1218"), {3U, "0508"}}) {
        model.GetSubstrateMode()->Set(mode);
        RunStream(desk, "~HS");
        EXPECT_EQ(answer.substr(1, 12), "030,0,1," + std::string(length)) << mode;
        EXPECT_EQ(answer.substr(37, 4), "128,");
    }
}

TEST_F(HostAnswers, ReportsPrintAsLabelsOutsideFormatsOnly) {
    EXPECT_EQ(Run("~WC~WL"), "|page:|format:|page:|format:");
    EXPECT_EQ(Run("^XA^FO9,9^FDa~WC^FS^XZ"), "|page:|format:");
}

}  // namespace
