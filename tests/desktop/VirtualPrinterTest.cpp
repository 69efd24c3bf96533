#include <gtest/gtest.h>

#include "tests/support/VirtualPrinterProcess.h"

// The printer with its three processes, as a user runs it.
namespace {

std::string Label(std::string const& text, unsigned copies = 1) {
    return "^XA^PQ" + std::to_string(copies) + "^FO20,20^A0N,40,40^FD" + text + "^FS^XZ";
}

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
    ASSERT_TRUE(printer.Until([&] { return printer.Log().find("paused before page") != std::string::npos; }));
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
    printer.Type("cancel-all");
    ASSERT_TRUE(printer.Until([&] { return printer.Jobs().empty(); }));
    printer.Print(Label("after"));
    EXPECT_TRUE(printer.Until([&] { return printer.Log().find("/after-") != std::string::npos; }));
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

TEST(VirtualPrinter, GoesOnWhenAProcessIsKilled) {
    VirtualPrinterProcess printer({"--speed", "0"});
    std::size_t kept = 0;
    for (char const* const name : {"propertyserver", "zplhost", "propertyserver", "zplhost"}) {
        printer.Print(Label("before"));
        ASSERT_TRUE(printer.Until([&] { return printer.Kept().size() == kept + 1; })) << printer.Log();
        printer.KillChild(name);
        printer.Print(Label("after"));
        ASSERT_TRUE(printer.Until([&] { return printer.Kept().size() == kept + 2; })) << name << '\n' << printer.Log();
        kept += 2;
    }
}

}  // namespace
