#include <gtest/gtest.h>

#include "library/StreamInterpreter.h"
#include "rfid/TagOperations.h"
#include "tests/support/Texts.h"

namespace {

/// Runs a stream on a desk whose labels carry a tag, as `zpl render` does, and writes down the operations of each copy,
/// what the copies say, and what the printer answers.
std::string Printed(std::string const& stream, std::string const& tag = "blank") {
    DeskSettings options;
    options.tag = VirtualTag::Parse(tag);
    Desk desk(options);
    TemporaryFolder const pages(std::filesystem::temp_directory_path(), "tags-");
    std::string log;
    desk.SetHostReceiver([&](std::string_view answer) { log += "host " + std::string(answer) + "\n"; });
    desk.StartStream();
    Findings findings(stream);
    StreamInterpreter(desk, stream, findings).Run([&](FinishedLabel& finished) {
        auto& label = finished.label;
        for (unsigned copy = 0; copy < label.Quantity(); ++copy) {
            auto const readTag = [&] {
                if (label.IsWaitingOnRfidReadResponse(copy))
                    label.SetRfidReadResponse(copy, VirtualTag(*options.tag).Perform(label.GetRfidOperations()));
            };
            readTag();
            label.RenderLabel(pages.Make(), copy, copy, false);
            label.LogTagOperations();
            readTag();
            for (auto const& operation : label.GetRfidOperations()) {
                log += TagOperations::NameOf(operation.type);
                for (auto const& [name, value] : operation.arguments) {
                    if (name != "Sequence") log.append(" ").append(name).append("=").append(value);
                }
                log += '\n';
            }
            log += "page " + label.ProcessLabel(copy, false).value_or("") + "\n";
            label.SendEndOfPageNetworkResponses();
        }
        label.SendEndOfFormatNetworkResponses();
        return true;
    });
    for (auto const& finding : findings.List()) log += "finding " + finding.text + "\n";
    return log;
}

std::string const WriteE = "write Bank=E Start=0 Bytes=0 Data=";

TEST(TagCommands, RecordTheOperationsOfTheirLabel) {
    struct Row {
        char const* name;
        char const* body;
        std::string expected;
    };
    for (auto const& row : std::initializer_list<Row>{
             {"write", "^RFW,H^FD3034f1^FS", WriteE + "3034F100\n"},
             {"every parameter", "^RFW,A,2,6,3^FDabcd^FS", "write Bank=3 Start=2 Bytes=6 Data=616263640000\n"},
             {"write and lock", "^RFL^FD12^FS", "write Bank=E Start=0 Bytes=0 Lock=true Data=1200\n"},
             {"password", "^RFP,H,,4,0^FD00000001^FS", "password Bank=0 Start=0 Bytes=4 Data=00000001\n"},
             {"parts of a number", "^RB64,32,32^RFW,E^FD1,2^FS", WriteE + "0000000100000002\n"},
             {"parts that do not add up", "^RB96,32,32^RFW,E^FD1,2^FS", WriteE + "000000000000000100000002\n"},
             {"bad parameters", "^RFX,Z,x,y,Q^FDAB^FS", WriteE + "AB00\n"},
             {"family byte", "^WF,,1^FD9A^FS", "write Bank=AFI Start=0 Data=9A\n"},
             {"data of a template", "^RFW^FN5^FS^FN5^FDABCD^FS", WriteE + "ABCD\n"},
             {"locks", "^RLM,L,U,x,P^RLB,4,2^RLQ,L^RLM",
              "lock Bank=Kill Start=0 Style=L\nlock Bank=Access Start=0 Style=U\nlock Bank=3 Start=0 Style=P\n"
              "lock Bank=3 Start=4 Blocks=2 Style=P\n"},
             {"password of what follows", "^RFW^FDAA^FS^RZ1f,E,L^RFW^FDBB^FS^RZxyz",
              WriteE + "AA00\nlock Password=0000001F Bank=E Start=0 Style=L\n"
                       "write Password=0000001F Bank=E Start=0 Bytes=0 Data=BB00\n"},
             {"set-up comes first", "^RS8,,,99,Q^RW31,H,A1^RFW^FDAA^FS",
              "setup TagType=8 LabelsToTry=10 ReadPower=30 WritePower=H Antenna=A1\n" + WriteE + "AA00\n"},
             {"once, as it was set last", "^RS8^RW20^RS2^RW5^RFW^FDAA^FS^RFW^FDBB^FS",
              "setup TagType=2 ReadPower=5\n" + WriteE + "AA00\n" + WriteE + "BB00\n"},
         }) {
        EXPECT_EQ(Printed(std::string("^XA") + row.body + "^XZ"), row.expected + "page \n") << row.name;
    }
}

TEST(TagCommands, WithoutAnOperationMakeNoLabel) {
    std::string const none = "finding the stream holds no printable label\n";
    EXPECT_EQ(Printed("^XA^RS8^RW20^RB64,32,32^RZ12^XZ"), none);
    EXPECT_EQ(Printed("^XA^RFW^FDxyz^FS^RFW^FS^RZ1f^RLM^XZ"),
              "finding tag data are not what the command's format says; nothing is written\n" + none);
}

TEST(TagCommands, WriteWhatIsPrinted) {
    EXPECT_EQ(Printed("^XA^PQ2^FO9,9^A0,20^FN7^FS^RFW,H^FN7^FS^FN7^FDABCD^FS^XZ"),
              WriteE + "ABCD\npage ABCD\n" + WriteE + "ABCD\npage ABCD\n");
}

TEST(TagCommands, FillFieldNumbersWithWhatIsRead) {
    std::string const read = "read Bank=E Start=0 Bytes=2\n";
    EXPECT_EQ(Printed("^XA^PQ2^FO9,9^FN1^FS^RFR,H,0,2^FN1^FS^XZ", "epc=3034F1"),
              read + "page 3034\n" + read + "page 3034\n");
    EXPECT_EQ(Printed("^XA^FO9,9^FN1^FS^RFR,A,1,2^FN1^FS^XZ", "epc=30344142"),
              "read Bank=E Start=1 Bytes=2\npage AB\n");
    EXPECT_EQ(Printed("^XA^FO9,9^FN1^FS^FO9,50^FN2^FS^RI1,1^RA2,1^XZ", "tid=E2,afi=7F"),
              "read Bank=2 Start=0\nread Bank=AFI Start=0\npage E2\n");
    // The number before the read, for a text and a barcode.
    EXPECT_EQ(Printed("^XA^FO9,9^FN1^FS^FO30,50^BCN,50^FN1^FS^FN1^RFR,H,0,2^FS^HV1,9,<,>,L^XZ", "epc=3034F1"),
              read + "page 3034\nhost <3034>\n");
    // Without a template the data are kept for questions of the host, and draw nothing.
    EXPECT_EQ(Printed("^XA^RFR,H,0,2^FN1^FS^HV1,9,<,>,L^XZ", "epc=3034"), read + "page \nhost <3034>\n");
}

TEST(TagCommands, ReportAndLogWhatWasDone) {
    std::string const lines = "write,E,0,AA00\r\nread,2,0,E2\r\n";
    std::string const done = WriteE + "AA00\nread Bank=2 Start=0\npage \n";
    std::string const label = "^XA^RFW^FDAA^FS^RI1^XZ";
    std::string const framed = "host \x02" + lines + "\x03\r\n\n";
    EXPECT_EQ(Printed("~RVE" + label + "~RVD" + label, "tid=E2"), done + framed + done);
    // Passwords stand in no log, however they were written, nor does the set-up.
    EXPECT_NE(Printed("~RVE^XA^RS8^RFW,H,2,4,0^FD0000001F^FS^RFP,H,2,4,0^FD0000001F^FS^RFW,H,2,2,3^FDAB^FS^XZ")
                  .find("host \x02write,0,2,\r\npassword,0,2,\r\nwrite,3,2,AB00\r\n\x03"),
              std::string::npos);
    EXPECT_EQ(Printed("^XA^HL^RFW^FDAA^FS^RI1^XZ~HL", "tid=E2"), done + framed + "host \x02\x03\r\n\n");
}

TEST(TagCommands, ALongLogBeginsWithAWholeLine) {
    std::string const log = Printed("^XA^PQ30" + Repeated(200, "^RI1") + "^XZ~HL", "tid=E2");
    auto const start = log.find("host \x02");
    EXPECT_EQ(log.substr(start, 19), "host \x02read,2,0,E2\r\n");
    EXPECT_NEAR(static_cast<double>(log.find('\x03') - start), 64 << 10, 20);
}

TEST(TagCommands, OfEachCopyAreItsOwn) {
    EXPECT_EQ(Printed("^XA^PQ2^RFW^FN1^FS^FN1^SNA0,1,Y^FS^XZ"), WriteE + "A000\npage \n" + WriteE + "A100\npage \n");
}

TEST(TagCommands, KeepALimitedNumberOfOperations) {
    // The data of such a write are 8192 digits.
    std::string const large = "^RFW,H,0,4096^FD0^FS";
    for (auto const& [stream, taken, isAll] : {std::tuple(Repeated(200, "^RI1"), 200U, true),
                                               {Repeated(201, "^RI1"), 200U, false},
                                               {Repeated(7, large), 7U, true},
                                               {Repeated(8, large), 7U, false}}) {
        std::string const log = Printed("^XA" + stream + "^XZ");
        EXPECT_EQ(CountOf(" Bank=", log), taken);
        EXPECT_EQ(log.find("more tag operations than") == log.npos, isAll);
    }
}

// Templates hold no copy of what the label has collected: this would take gigabytes.
TEST(TagCommands, AreNotKeptByTemplates) {
    std::string stream = "^XA^FN1^FS^FN1^FD" + std::string(100'000, 'x') + "^FS" + Repeated(8, "^RFW,H,0,4096^FD0^FS");
    for (int i = 2; i < 9000; ++i) stream += "^FN" + std::to_string(i) + "^FS";
    EXPECT_NE(Printed(stream + "^RFW^FN9999^FS^FN9999^FDAA^FS^XZ").find("Data=AA00"), std::string::npos);
}

TEST(VirtualTag, PerformsWritesBeforeTheReadsBehindThem) {
    auto tag = VirtualTag::Parse("epc=1122334455667788,user=AABB");
    auto const operation = [](unsigned type, char const* bank, char const* start, char const* bytes, char const* data) {
        return RfidOperation{type,
                             {{"Sequence", "4"}, {"Bank", bank}, {"Start", start}, {"Bytes", bytes}, {"Data", data}}};
    };
    auto const responses = tag.Perform(
        {operation(RfidOperation::Write, "1", "3", "2", "FFFF"), operation(RfidOperation::Read, "E", "0", "0", ""),
         operation(RfidOperation::Read, "3", "9", "2", ""), operation(RfidOperation::Write, "3", "99999", "2", "FFFF"),
         operation(RfidOperation::Read, "7", "0", "0", "")});
    EXPECT_EQ(responses, (std::vector<RfidReadResponse>{{4, "1122FFFF55667788"}, {4, "0000"}}));
    EXPECT_EQ(tag.Bank("user"), "AABB");
    for (char const* const bad : {"epc", "epc=", "epc=1", "epc=xx", "bank=11", "epc=11,,", "", "epc=11,epc=22"})
        EXPECT_THROW(VirtualTag::Parse(bad), std::invalid_argument) << bad;
}

TEST(VirtualTag, KeepsWhatIsLocked) {
    auto const after = [](std::string const& commands) {
        DeskSettings options;
        options.tag = VirtualTag::Parse("blank");
        Desk desk{options};
        auto const session = desk.MakeSession();
        auto result = session->Consume("^XA" + commands + "^XZ", false, true);
        auto tag = VirtualTag::Parse("epc=00,user=00,tid=E2,reserved=0000000000000000");
        auto& label = std::get<1>(*result.label);
        label.ProcessLabel(0, false);
        tag.Perform(label.GetRfidOperations());
        return tag.Bank("epc") + " " + tag.Bank("user") + " " + tag.Bank("tid") + " " + tag.Bank("reserved");
    };
    std::string const write = "^RFW^FD1111^FS^RFW,H,0,,3^FD2222^FS";
    std::string const password = "^RFP,H,2,,0^FD0000001F^FS";
    for (auto const& [commands, expected] : std::vector<std::pair<std::string, std::string>>{
             {write, "1111 2222 E2 0000000000000000"},
             {password, "00 00 E2 000000000000001F"},
             {"^RFW,H,0,,2^FD3333^FS", "00 00 E2 0000000000000000"},
             {"^RLM,,,L" + write, "00 2222 E2 0000000000000000"},
             {"^RLM,,,L,P^RLM,,,U,U" + write, "00 00 E2 0000000000000000"},
             {"^RLM,,L" + password, "00 00 E2 0000000000000000"},
             {password + "^RZ1F^RLM,,,L,P" + write, "1111 00 E2 000000000000001F"},
             {"^RFL^FD5555^FS" + write, "5555 2222 E2 0000000000000000"},
             {"^RLB,0,1" + write + "^RFW,H,4,,3^FD4444^FS", "1111 00000000000000004444 E2 0000000000000000"},
         }) {
        EXPECT_EQ(after(commands), expected) << commands;
    }
}

}  // namespace
