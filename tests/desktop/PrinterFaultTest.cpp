#include <gtest/gtest.h>
#include <sys/resource.h>

#include "desktop/serve/BusComponent.h"
#include "foundation/Base64.h"
#include "tests/support/Sanitizers.h"
#include "tests/support/Texts.h"
#include "tests/support/VirtualPrinterProcess.h"

// What goes wrong around the printer with its three processes, and that the rest goes on.
namespace {

testing::AssertionResult Prints(VirtualPrinterProcess& printer, std::string const& name) {
    printer.Print(Label(name));
    return printer.Says('/' + name + '-');
}

TEST(PrinterFaults, FoldersOfAnyName) {
    TemporaryDirectory const folder;
    auto const deep = folder / (std::string(100, 'd') + "/\xC3\xA9 " + std::string(100, 'e'));
    std::filesystem::create_directories(deep);
    VirtualPrinterProcess printer({"--out", folder / "out-\xFF"}, deep);
    EXPECT_TRUE(Prints(printer, "deep"));

    struct Row {
        std::string temporary;
        std::string state;
        std::string says;
    };
    for (auto const& [temporary, state, says] : std::vector<Row>{
             {"/tmp", folder / "state-\xFF", "state-\xFF is no UTF-8 text; --state DIR names another folder"},
             {folder / "t-\xFF", folder / "state", " is no UTF-8 text; TMPDIR names another folder"},
             {folder / "none", folder / "state", "there is no folder for temporary files; TMPDIR names one"},
         }) {
        if (!temporary.ends_with("none")) std::filesystem::create_directories(temporary);
        std::string const log = folder / "log";
        std::string const command = "TMPDIR='" + temporary +
                                    "' timeout 20 '" ZPL_PROGRAM "' serve --no-web --listen 0 --state '" + state +
                                    "' --out '" + deep.string() + "' </dev/null >'" + log + "' 2>&1";
        EXPECT_EQ(WEXITSTATUS(std::system(command.c_str())), 2) << says;
        EXPECT_NE(ReadRegularFile(log).find(says), std::string::npos) << ReadRegularFile(log);
    }
}

TEST(PrinterFaults, BadPacketsAreClearedAndForgotten) {
    VirtualPrinterProcess printer({"--speed", "0"});
    ThreadFactory threads(4);
    BusComponent peer(threads, "peer", printer.Runtime() / "properties");
    auto const command = peer.Properties().Follow<StringProperty>(
        ComponentIdentifiers::JobHandler, ExternalAppRegistration::EveryWrite,
        {PropertyNames::ZPLCommandToProcess, "", PropertyGroups::PrintOperations}, "");
    std::string const packet =
        Base64::Encode(R"({"SessionId":1,"Command":1})" + std::string((8 << 20) / SanitizerFactor, '\xFF'));
    struct Row {
        char const* name;
        std::string text;
    };
    for (auto const& row : std::vector<Row>{{"no base64", "!!!!"},
                                            {"no multiple of four", "abcde"},
                                            {"no object", Base64::Encode("[1]}")},
                                            {"no JSON", Base64::Encode("{x}^XA^XZ")},
                                            {"no command", Base64::Encode(R"({"SessionId":1}^XA^XZ)")},
                                            {"no session", Base64::Encode(R"({"Command":1}^XA^XZ)")},
                                            {"brackets", Base64::Encode(std::string(1 << 20, '[') + '}')},
                                            {"8 MiB of nothing", packet}}) {
        command->Set(row.text);
        EXPECT_TRUE(printer.Until([&] { return command->Get().empty(); })) << row.name;
    }
    EXPECT_LT(printer.MostMemory("zplhost"), 600);
    // Longer than a line of the bus may be.
    command->Set(std::string(64 << 20, 'A'));
    EXPECT_TRUE(Prints(printer, "after"));
    EXPECT_LT(printer.MostMemory("propertyserver"), 1000);
}

TEST(PrinterFaults, JobsThatCannotBeWrittenHoldUpNobody) {
    VirtualPrinterProcess printer({"--speed", "0"});
    ASSERT_TRUE(Prints(printer, "before"));
    // As on a full disk: no file may have a byte.
    rlimit before{};
    rlimit const none{0, RLIM_INFINITY};
    ASSERT_EQ(::prlimit(printer.Child("zplhost"), RLIMIT_FSIZE, &none, &before), 0);
    for (int i = 0; i < 20; ++i) printer.Print(Label("lost"));
    // More than the jobs that may be under way; the last stream is answered for when all are.
    int const client = printer.Connect();
    printer.Write(client, "~HS");
    char answer[256];
    EXPECT_GT(::recv(client, answer, sizeof answer, 0), 0);
    ::close(client);
    EXPECT_EQ(printer.Kept().size(), 1U);
    ASSERT_EQ(::prlimit(printer.Child("zplhost"), RLIMIT_FSIZE, &before, nullptr), 0);
    EXPECT_TRUE(Prints(printer, "after"));
    EXPECT_TRUE(printer.Until([&] { return printer.Jobs().empty(); }));
}

TEST(PrinterFaults, FoldersThatVanish) {
    VirtualPrinterProcess printer({"--speed", "20"});
    printer.Print(Label("gone", 100));
    ASSERT_TRUE(printer.Until([&] { return !printer.Kept().empty(); }));
    // Pages are still written into them, and the host removes what is lost itself.
    auto const removeJobs = [&] {
        std::error_code error;
        for (auto const& job : printer.Jobs()) std::filesystem::remove_all(job, error);
        return printer.Jobs().empty();
    };
    EXPECT_TRUE(printer.Until(removeJobs));
    EXPECT_TRUE(Prints(printer, "next"));
    EXPECT_TRUE(printer.Says("is gone; the job is given up"));

    // More jobs than may be under way lose their folders, while the printer is paused and idle.
    printer.Type("pause");
    for (int i = 0; i < 16; ++i) printer.Print(Label("lost"));
    ASSERT_TRUE(printer.Until([&] { return printer.Jobs().size() == 16; }));
    EXPECT_TRUE(printer.Until(removeJobs));
    printer.Type("resume");
    EXPECT_TRUE(Prints(printer, "third")) << printer.Log();
    // The host may still be at work in it.
    EXPECT_TRUE(printer.Until([&] {
        std::error_code error;
        std::filesystem::remove_all(printer.Runtime() / "jobs", error);
        return !error;
    }));
    EXPECT_TRUE(Prints(printer, "fourth"));
    EXPECT_TRUE(printer.Says("was removed, and the jobs in it"));

    std::filesystem::remove_all(printer.Folder() / "out");
    printer.Print(Label("kept"));
    ASSERT_TRUE(printer.Says("cannot be kept"));
    std::filesystem::create_directory(printer.Folder() / "out");
    printer.Type("resume");
    EXPECT_TRUE(Prints(printer, "last"));
    EXPECT_NE(printer.Log().find("/kept-"), std::string::npos) << "the page that could not be kept is printed again";
}

TEST(PrinterFaults, ASocketThatVanishes) {
    VirtualPrinterProcess printer({"--speed", "0"});
    ASSERT_TRUE(Prints(printer, "before"));
    auto const socket = printer.Runtime() / "properties";
    for (char const* const victim : {"zplhost", "propertyserver"}) {
        std::filesystem::remove(socket);
        EXPECT_TRUE(printer.Until([&] { return std::filesystem::exists(socket); }));
        printer.KillChild(victim);
        EXPECT_TRUE(Prints(printer, victim)) << printer.Log();
    }
}

TEST(PrinterFaults, AreToldOnce) {
    VirtualPrinterProcess printer({"--speed", "0"});
    ASSERT_TRUE(Prints(printer, "before"));
    printer.KillChild("propertyserver");
    ASSERT_TRUE(Prints(printer, "after"));
    EXPECT_LE(CountOf("the property server is lost", printer.Log()), 2U) << "by each process once";
    EXPECT_EQ(CountOf("propertyserver has ended", printer.Log()), 1U);
    EXPECT_EQ(printer.End(SIGHUP), 0);
    for (auto const& entry : std::filesystem::directory_iterator(printer.Folder()))
        EXPECT_FALSE(entry.path().filename().string().starts_with("zpl-serve-")) << entry.path();
}

TEST(PrinterFaults, OtherPrefixesAreTold) {
    TemporaryDirectory const folder;
    {
        VirtualPrinterProcess printer({"--speed", "0"}, folder.Path());
        printer.Print("^XA^CC*^XZ");
        ASSERT_TRUE(printer.Says("the format prefix is *, not ^"));
        printer.Print("\r\n");
        printer.Print(Label("swallowed"));
        EXPECT_TRUE(printer.Says("holds no command"));
        EXPECT_EQ(CountOf("holds no command", printer.Log()), 1U);
    }
    VirtualPrinterProcess printer({"--speed", "0"}, folder.Path());
    EXPECT_TRUE(printer.Says("the format prefix is *"));
    printer.Print("*CC^");
    EXPECT_TRUE(Prints(printer, "again"));
}

TEST(PrinterFaults, ClientsThatDoNotRead) {
    VirtualPrinterProcess printer({"--speed", "0"});
    int const deaf = printer.Connect();
    int const little = 4096;
    EXPECT_EQ(::setsockopt(deaf, SOL_SOCKET, SO_RCVBUF, &little, sizeof little), 0);
    // Answers of 87 kB each.
    printer.Write(deaf, "~DGR:P,65536,256,!" + std::string(255, ':') + Repeated(200, "^XA^HYR:P^XZ"));
    EXPECT_TRUE(Prints(printer, "meanwhile"));
    EXPECT_TRUE(printer.Says("does not read its answers"));
    EXPECT_LT(printer.MostMemory("zplhost"), 400);
    ::close(deaf);
    EXPECT_TRUE(Prints(printer, "after"));
}

// There may be no session at all: no bus of it, and no folder for such things.
TEST(PrinterFaults, WindowsMayGo) {
    ::setenv("QT_QPA_PLATFORM", "offscreen", 1);
    for (char const* const variable : {"DBUS_SESSION_BUS_ADDRESS", "XDG_RUNTIME_DIR"}) ::unsetenv(variable);
    for (std::string const window : {"preview", "screen"}) {
        TemporaryDirectory const folder;
        ::setenv("ZPL_PREVIEW_PICTURE", (folder / "window.png").c_str(), 1);
        VirtualPrinterProcess printer({"--speed", "1", "--" + window});
        ::unsetenv("ZPL_PREVIEW_PICTURE");
        EXPECT_TRUE(printer.Until([&] { return std::filesystem::exists(folder / "window.png"); })) << printer.Log();
        EXPECT_FALSE(std::filesystem::exists(printer.Runtime() / "bus")) << "desktop libraries would speak to it";
        std::string const before = ReadRegularFile(folder / "window.png");
        printer.Print(Label("shown", 5));
        EXPECT_TRUE(printer.Until([&] { return ReadRegularFile(folder / "window.png") != before; })) << window;
        printer.KillChild("zpl" + window);
        ASSERT_TRUE(printer.Until([&] { return printer.Child("zpl" + window) == 0; }));
        EXPECT_TRUE(printer.Until([&] { return printer.Kept().size() >= 2; })) << "printing goes on";
        printer.Type(window);
        EXPECT_TRUE(printer.Until([&] { return printer.Child("zpl" + window) != 0; }));
        EXPECT_EQ(printer.Log().find("Error"), std::string::npos) << printer.Log();
        EXPECT_EQ(printer.Log().find("zpl: "), std::string::npos) << "nothing is amiss in the window";
    }
}

}  // namespace
