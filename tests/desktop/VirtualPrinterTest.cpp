#include <gtest/gtest.h>
#include <rapidjson/document.h>
#include <cstring>

#include <algorithm>
#include <map>
#include <random>
#include <sstream>

#include "foundation/Json.h"
#include "propertybus/PropertyIdentifiers.h"
#include "tests/support/Texts.h"
#include "tests/support/VirtualPrinterProcess.h"

// The printer with its three processes, as a user runs it.
namespace {

TEST(VirtualPrinter, FollowsAJobOf300Pages) {
    VirtualPrinterProcess printer({"--speed", "400", "--pause-on-start"});
    printer.Print(Label("long", 300));
    ASSERT_TRUE(printer.Until([&] { return printer.Pages() == 25; }));
    std::this_thread::sleep_for(std::chrono::milliseconds(50));
    EXPECT_EQ(printer.Pages(), 25U) << "nothing more is rendered before printing begins";
    printer.Type("resume");
    std::size_t most = 0;
    ASSERT_TRUE(printer.Until([&] {
        most = std::max(most, printer.Pages());
        return printer.Kept().size() >= 150;
    }));
    EXPECT_LE(most, 102U);
    EXPECT_GE(most, 90U);

    printer.Type("pause");
    ASSERT_TRUE(printer.Says("paused before page"));
    EXPECT_TRUE(printer.Until([&] { return printer.Pages() <= 2; })) << "only the preview's pages are left";
    std::size_t const kept = printer.Kept().size();
    printer.Type("resume");
    ASSERT_TRUE(printer.Until([&] { return printer.Kept().size() == 300 && printer.Jobs().empty(); }));
    EXPECT_LT(kept, 300U);

    printer.Print(Label("again"));
    EXPECT_TRUE(printer.Until([&] { return printer.Kept().size() == 301; }));
    EXPECT_EQ(printer.End(SIGTERM), 0);
}

TEST(VirtualPrinter, CancelsJobs) {
    VirtualPrinterProcess printer({"--speed", "10"});
    for (int i = 0; i < 3; ++i) printer.Print(Label("job", 1000));
    ASSERT_TRUE(printer.Until([&] { return printer.Jobs().size() == 3 && printer.Kept().size() >= 2; }));
    printer.Type("cancel");
    ASSERT_TRUE(printer.Until([&] { return printer.Jobs().size() == 2; }));
    std::size_t const kept = printer.Kept().size();
    ASSERT_TRUE(printer.Until([&] { return printer.Kept().size() > kept + 2; })) << "the next job prints";
    // More than the host is given at a time.
    for (int i = 0; i < 40; ++i) printer.Print(Label("waits"));
    ASSERT_TRUE(printer.Until([&] { return printer.Jobs().size() == 16; }));
    printer.Type("cancel-all");
    ASSERT_TRUE(printer.Until([&] { return printer.Jobs().empty(); }));
    printer.Print(Label("after"));
    EXPECT_TRUE(printer.Says("/after-"));
    EXPECT_EQ(printer.Log().find("/waits-"), std::string::npos) << printer.Log();
    EXPECT_EQ(printer.Log().find("Error"), std::string::npos) << printer.Log();
}

TEST(VirtualPrinter, CancelsAJobThatIsDrawnAheadInSilence) {
    VirtualPrinterProcess printer({"--speed", "0"});
    printer.Print(Label("fast", 5000));
    ASSERT_TRUE(printer.Until([&] { return printer.Kept().size() >= 300; }));
    printer.Type("cancel");
    EXPECT_TRUE(printer.Until([&] { return printer.Jobs().empty(); }));
    printer.Type("cancel");
    EXPECT_TRUE(printer.Says("\nidle\n"));
    EXPECT_NE(printer.Log().find("\ncancelled\n"), std::string::npos);
    EXPECT_EQ(printer.Log().find("Warning"), std::string::npos) << "pages have nowhere to be written to";
}

TEST(VirtualPrinter, AStreamCancelsOnlyWhatCameBeforeIt) {
    VirtualPrinterProcess printer({"--speed", "0"});
    // The first stream may be there before the host is.
    constexpr std::size_t Copies = 5;
    for (std::size_t round = 1; round <= 40; ++round) {
        printer.Print("~JA" + Label("mark", Copies));
        ASSERT_TRUE(printer.Until([&] { return printer.Kept().size() == round * Copies; })) << printer.Log();
    }
    printer.Type("pause");
    printer.Print(Label("gone", 3));
    ASSERT_TRUE(printer.Until([&] { return printer.Jobs().size() == 1; }));
    printer.Print("~JA" + Label("stays"));
    ASSERT_TRUE(printer.Until([&] {
        auto const jobs = printer.Jobs();
        return jobs.size() == 1 && jobs.front().filename().string().starts_with("stays");
    }));
    printer.Type("resume");
    EXPECT_TRUE(printer.Says("/stays-1-1.png"));
}

TEST(VirtualPrinter, TakesStreamsHoweverTheyAreSent) {
    VirtualPrinterProcess printer({"--speed", "0"});
    int const slow = printer.Connect();
    int const silent = printer.Connect();
    printer.Write(slow, "^XA^FO20,20^FDsl");
    printer.Print(Label("quick"));
    EXPECT_TRUE(printer.Until([&] { return printer.Kept().size() == 1; })) << "a slow sender holds up nobody";
    std::this_thread::sleep_for(std::chrono::milliseconds(150));
    for (char const letter : std::string("ow^FS^X")) {
        printer.Write(slow, std::string(1, letter));
        std::this_thread::sleep_for(std::chrono::milliseconds(5));
    }
    std::this_thread::sleep_for(std::chrono::milliseconds(150));
    printer.Write(slow, "Z");
    EXPECT_TRUE(printer.Until([&] { return printer.Kept().size() == 2; })) << "it prints without hanging up";
    EXPECT_NE(printer.Log().find("/slow-"), std::string::npos);
    printer.Write(slow, Label("more"));
    EXPECT_TRUE(printer.Until([&] { return printer.Kept().size() == 3; }));

    std::vector<int> clients;
    for (int i = 0; i < 200; ++i) clients.push_back(printer.Connect());
    for (int const client : clients) printer.Write(client, Label("c"));
    for (int const client : clients) ::close(client);
    EXPECT_TRUE(printer.Until([&] { return printer.Kept().size() == 203; }));
    printer.Print(std::string(3'000'000, '\xFF').append("^XA^FB2147483648^XZ"));
    printer.Print(Label("last"));
    EXPECT_TRUE(printer.Until([&] { return printer.Kept().size() == 204; }));
    ::close(slow);
    ::close(silent);
}

/// The number of labels ever taken in, as the archive has it.
unsigned LifetimeCount(std::filesystem::path const& folder) {
    unsigned count = 0;
    std::string const text = ReadRegularFile(folder / "state/zplhost/ZplHostArchive.json");
    bool const whole = ReadJsonSettings(text, [&](std::string_view name, std::string_view value) {
        if (name == PropertyNames::ZPLLifetimeScriptCount)
            count = static_cast<unsigned>(std::stoul(std::string(value)));
    });
    EXPECT_TRUE(whole || text.empty()) << text;
    return count;
}

// tests/soak/run does many more rounds, with other clients beside it.
TEST(VirtualPrinter, GoesOnWhenProcessesAreKilled) {
    constexpr unsigned Rounds = 6;
    std::mt19937 random(1);
    TemporaryDirectory const folder;
    auto printer = std::make_unique<VirtualPrinterProcess>(std::vector<std::string>{"--speed", "0"}, folder.Path());
    unsigned count = 0;
    for (unsigned round = 0; round < Rounds; ++round) {
        printer->Print(Label("load", 200));
        std::this_thread::sleep_for(std::chrono::milliseconds(random() % 120));
        unsigned const victim = random() % 3;
        SCOPED_TRACE("round " + std::to_string(round) + ", victim " + std::to_string(victim));
        if (victim == 0) printer->KillChild("propertyserver");
        if (victim == 1) printer->KillChild("zplhost");
        if (victim == 2) {
            auto const children = printer->Children();
            printer->End(SIGKILL);
            ASSERT_TRUE(printer->Until([&] {
                return std::none_of(children.begin(), children.end(),
                                    [](pid_t child) { return ::kill(child, 0) == 0; });
            })) << "the others end in order";
            printer = std::make_unique<VirtualPrinterProcess>(std::vector<std::string>{"--speed", "0"}, folder.Path());
            EXPECT_EQ(std::ranges::count_if(
                          std::filesystem::directory_iterator(folder.Path()),
                          [](auto const& entry) { return entry.path().filename().string().starts_with("zpl-serve-"); }),
                      1)
                << "what the killed one has left is removed";
        }
        std::string const name = "mark" + std::to_string(round);
        ASSERT_TRUE(printer->Until([&] {
            // What was on its way to a killed process may be lost; what is sent later never is.
            printer->Print(Label(name));
            return printer->UntilFor(std::chrono::seconds(3),
                                     [&] { return printer->Log().find('/' + name + '-') != std::string::npos; });
        })) << printer->Log();
        unsigned const now = LifetimeCount(folder.Path());
        EXPECT_GE(now, count);
        count = now;
    }
    EXPECT_EQ(printer->End(SIGTERM), 0);
}

TEST(VirtualPrinter, AJobGoesOnWhereTheHostLeftIt) {
    VirtualPrinterProcess printer({"--speed", "30", "--pause-on-start"});
    printer.Print(Label("long", 60) + "^XA^PQ3,2^FO20,20^A0N,40^FDpauses^FS^XZ");
    printer.Print(Label("waits"));
    ASSERT_TRUE(printer.Until([&] { return printer.Jobs().size() == 2; }));
    printer.KillChild("zplhost");
    printer.Type("resume");
    for (std::size_t const pages : {3, 40}) {
        ASSERT_TRUE(printer.Until([&] { return printer.Kept().size() >= pages; }));
        printer.KillChild("zplhost");
    }
    ASSERT_TRUE(printer.Until([&] { return printer.Kept().size() == 62; })) << printer.Log();
    printer.KillChild("zplhost");
    ASSERT_TRUE(printer.Until([&] { return CountOf("paused before page 63", printer.Log()) == 2; })) << printer.Log();
    printer.Type("resume");
    EXPECT_TRUE(printer.Says("/waits-"));
    EXPECT_TRUE(printer.Until([&] { return printer.Jobs().empty(); }));
    EXPECT_EQ(printer.Kept().size(), 64U) << "each page once";
}

/// Each finding in a JSON object, as `zpl check` and the printer tell it, without what is the printer's own.
std::string FindingText(rapidjson::Value const& finding) {
    std::string text;
    for (auto const& name : {"kind", "text", "label", "offset", "line", "column"}) {
        if (!finding.HasMember(name)) continue;
        auto const& value = finding[name];
        text += (value.IsString() ? value.GetString() : std::to_string(value.GetInt())) + std::string(" ");
    }
    return text;
}

TEST(VirtualPrinter, TellsProgramsWhatHappensAndWhatCheckTells) {
    std::string const stream =
        "^XA\n^MNY^FO20,20^A0N,40^FDone^FS\n^FO20,90^BEN,80^FD12AB^FS^XZ\n"
        "^XA^PQ2\n^QQ^FO150,20^A0N,80^FDis cut^FS^XZ\n^XA^FDz^FB99999999999^FS^XZ\n~HS";
    VirtualPrinterProcess printer({"--speed", "0", "--json"});
    printer.Print(stream);
    ASSERT_TRUE(printer.Says("\"done\""));

    std::map<std::string, std::vector<std::string>> events;
    std::istringstream log(printer.Log());
    for (std::string line; std::getline(log, line);) {
        rapidjson::Document event;
        event.Parse(line.c_str());
        ASSERT_FALSE(event.HasParseError()) << line;
        bool const isFinding = event["event"] == "finding";
        // The packet is told as soon as it is known, which may be behind the beginning of a job.
        if (auto const at = line.find(R"(,"packet":1)"); at != line.npos) line.erase(at, std::strlen(R"(,"packet":1)"));
        events[event["event"].GetString()].push_back(isFinding ? FindingText(event) : line);
    }
    EXPECT_EQ(events["job"], (std::vector<std::string>{R"({"event":"job","job":"one-1","name":"one","pages":3})"}));
    EXPECT_EQ(events["page"].size(), 3U);
    EXPECT_NE(events["page"][0].find(R"("job":"one-1","page":1,"path":")"), std::string::npos);
    EXPECT_EQ(events["done"], (std::vector<std::string>{R"({"event":"done","job":"one-1","printed":3,"pages":3})"}));
    EXPECT_EQ(events["answer"].size(), 1U);

    std::string const input = printer.Folder() / "in.zpl";
    std::string const output = printer.Folder() / "check.json";
    WriteFileAtomically(input, stream);
    std::system(("'" ZPL_PROGRAM "' check --json --size 1x1in '" + input + "' >'" + output + "'").c_str());
    rapidjson::Document check;
    check.Parse(ReadRegularFile(output).c_str());
    ASSERT_FALSE(check.HasParseError());
    std::vector<std::string> told;
    for (auto const& finding : check["inputs"][0]["findings"].GetArray()) told.push_back(FindingText(finding));
    EXPECT_EQ(events["finding"], told);
    EXPECT_EQ(told.size(), 5U);
}

/// A field of the first line of the answer to `~HS`.
std::string HostStatus(VirtualPrinterProcess const& printer, unsigned field) {
    int const client = printer.Connect();
    printer.Write(client, "~HS");
    char answer[256];
    ssize_t const size = ::recv(client, answer, sizeof answer, 0);
    ::close(client);
    std::string text(answer, size > 0 ? static_cast<std::size_t>(size) : 0);
    for (; field > 0; --field) text.erase(0, text.find(',') + 1);
    return text.substr(0, text.find(','));
}

TEST(VirtualPrinter, PagesCarryWhereBarcodesStandThatDoNotScan) {
    VirtualPrinterProcess printer({"--speed", "0", "--pause-on-start"});
    std::string const barcode = "^FO50,40^BY2^BCN,90,N^FD1^FS";
    printer.Print("^XA" + barcode + "^XZ^XA^PQ2" + barcode + "^FO90,40^GB40,90,40^FS^XZ");
    printer.Type("resume");
    ASSERT_TRUE(printer.Until([&] { return printer.Kept().size() == 3; }));
    std::vector<std::string> notes;
    for (auto const& file : printer.Kept()) {
        std::string const page = ReadRegularFile(file);
        auto const at = page.find(std::string("tEXtBarcodes\0", 13));
        notes.push_back(at == page.npos ? "none" : page.substr(at + 13, 11));
    }
    std::ranges::sort(notes);
    EXPECT_EQ(notes, (std::vector<std::string>{"fault 50 40", "fault 50 40", "none"})) << "also on a second copy";
}

TEST(VirtualPrinter, NoJobStaysWhenTheServerDiesAtItsEnd) {
    constexpr unsigned FormatsInBuffer = 4;
    constexpr std::size_t Jobs = 3;
    VirtualPrinterProcess printer({"--speed", "40"});
    for (std::size_t round = 0; round < 6; ++round) {
        for (std::size_t i = 0; i < Jobs; ++i) printer.Print(Label("end"));
        ASSERT_TRUE(printer.Until([&] { return printer.Kept().size() > round * Jobs; }));
        // The page has its time, and then the end is told.
        std::this_thread::sleep_for(std::chrono::milliseconds(21 + 2 * round));
        printer.KillChild("propertyserver");
        ASSERT_TRUE(printer.Until([&] { return printer.Kept().size() == (round + 1) * Jobs; })) << printer.Log();
        EXPECT_TRUE(printer.Until([&] { return printer.Jobs().empty(); })) << printer.Log();
        EXPECT_EQ(HostStatus(printer, FormatsInBuffer), "000");
    }
}

TEST(VirtualPrinter, TellsHostsHowManyFormatsWait) {
    constexpr unsigned FormatsInBuffer = 4;
    VirtualPrinterProcess printer({"--speed", "10", "--pause-on-start"});
    for (unsigned const copies : {1000U, 1U, 1U}) printer.Print(Label("waits", copies));
    ASSERT_TRUE(printer.Until([&] { return printer.Jobs().size() == 3; }));
    EXPECT_EQ(HostStatus(printer, FormatsInBuffer), "003");
    printer.Print("~PS");
    ASSERT_TRUE(printer.Until([&] { return !printer.Kept().empty(); }));
    EXPECT_TRUE(printer.Until([&] { return HostStatus(printer, FormatsInBuffer) == "002"; })) << "one prints";
    printer.Type("cancel-all");
    EXPECT_TRUE(printer.Until([&] { return printer.Jobs().empty() && HostStatus(printer, FormatsInBuffer) == "000"; }));
}

TEST(VirtualPrinter, DrawsInTheResolutionThatItsArchiveHas) {
    TemporaryDirectory const folder;
    std::filesystem::create_directories(folder / "state/zplhost");
    WriteFileAtomically(folder / "state/zplhost/ZplHostArchive.json",
                        "{\"" + std::string(PropertyNames::ZPLEmulatedDpi) + "\":\"600\"}");
    VirtualPrinterProcess printer({"--speed", "0", "--dpi", "300"}, folder.Path());
    printer.Print("^XA^PW100^LL60^FDx^FS^XZ");
    ASSERT_TRUE(printer.Until([&] { return printer.Kept().size() == 1; }));
    EXPECT_EQ(ReadRegularFile(printer.Kept().front()).substr(16, 8), std::string("\0\0\0\62\0\0\0\36", 8)) << "50 x 30";
}

// Every page waits for its tag, also the one that printing goes on from.
TEST(VirtualPrinter, PlaysATagForEveryPage) {
    VirtualPrinterProcess printer({"--speed", "0", "--tag", "epc=30AB"});
    printer.Print("^XA^PQ4,2^FO9,9^A0N,40^FN1^FS^RFR,H,0,2^FN1^FS^FO9,80^A0N,40^FDtag^FS^XZ");
    ASSERT_TRUE(printer.Says("type resume"));
    EXPECT_EQ(printer.Kept().size(), 2U);
    printer.Type("resume");
    EXPECT_TRUE(printer.Until([&] { return CountOf("tag read,E,0,30AB", printer.Log()) == 4; }));
    EXPECT_EQ(printer.Kept().size(), 4U);
}

}  // namespace
