#include "plugin/surfaces/PrintDoor.h"

#include <gtest/gtest.h>

#include <QtCore/QCoreApplication>
#include <cstdio>
#include <map>

#include "plugin/surfaces/BatchPrinter.h"
#include "plugin/surfaces/TemplateList.h"
#include "propertybus/PICLIF.h"
#include "propertybus/PropertyIdentifiers.h"
#include "propertybus/PublishingPropertyManager.h"
#include "propertybus/ThreadFactory.h"
#include "tests/support/Sanitizers.h"
#include "tests/support/VirtualPrinterProcess.h"

// The door by which surfaces print, at a printer with its processes.
namespace {

/// A process with surfaces, as far as the bus can tell.
class Screen {
public:
    explicit Screen(std::filesystem::path const& socket)
        : properties(std::make_shared<PublishingPropertyManager>(threads_, 0, 0, "screen", "")),
          link_(threads_, properties, "screen") {
        properties->StartThread();
        link_.Connect(socket);
        door = std::make_unique<PrintDoor>(properties, link_.GetServerAgent());
    }
    ~Screen() {
        door.reset();
        link_.Disconnect();
        properties->StopThread();
    }
    void Print(std::string const& stream) {
        door->Print(QByteArray::fromStdString(stream),
                    [this](QString const& error) { said += error.toStdString() + ';'; });
    }

    std::string said;  ///< of each stream, in order

private:
    ThreadFactory threads_{4};

public:
    std::shared_ptr<PublishingPropertyManager> properties;

private:
    PICLIF link_;

public:
    std::unique_ptr<PrintDoor> door;
};

class PrintDoorTest : public testing::Test {
protected:
    testing::AssertionResult Until(std::function<bool()> const& holds) {
        return VirtualPrinterProcess::Until([&] {
            QCoreApplication::processEvents();
            return holds();
        });
    }
    /// Pages by the texts of their labels, as the printer lists them.
    static std::map<std::string, int> Printed(VirtualPrinterProcess const& printer) {
        std::map<std::string, int> pages;
        for (auto const& file : printer.Kept()) {
            std::string const name = file.filename().string();
            ++pages[name.substr(0, name.find('-'))];
        }
        return pages;
    }

    int argc_ = 0;
    QCoreApplication application_{argc_, nullptr};
};

TEST_F(PrintDoorTest, EachStreamOfSeveralWritersPrintsOnceWhateverIsKilled) {
    constexpr std::size_t Streams = 30;
    VirtualPrinterProcess printer({"--speed", "0", "--pause-on-start"});
    Screen first(printer.Runtime() / "properties");
    Screen second(printer.Runtime() / "properties");
    ASSERT_TRUE(Until([&] { return first.door->IsOpen() && second.door->IsOpen(); }));
    for (std::size_t i = 0; i < Streams; ++i) {
        first.Print(Label("a" + std::to_string(i)));
        second.Print(Label("b" + std::to_string(i)));
    }
    ASSERT_TRUE(Until([&] { return first.said.size() + second.said.size() >= 16; }));
    EXPECT_EQ(first.said.size() + second.said.size(), 16U) << "a paused printer takes no more than it can hold";
    EXPECT_EQ(Printed(printer).size(), 0U);
    printer.Print(Label("client"));
    printer.KillChild("zplhost");
    printer.Type("resume");
    ASSERT_TRUE(Until([&] { return first.said.size() >= Streams / 2; }));
    printer.KillChild("propertyserver");
    ASSERT_TRUE(Until([&] { return first.said.size() >= Streams - 5; }));
    printer.KillChild("zplhost");
    ASSERT_TRUE(Until([&] { return Printed(printer).size() == 2 * Streams + 1; })) << printer.Log();
    ASSERT_TRUE(Until([&] { return first.said.size() == Streams && second.said.size() == Streams; }));
    for (auto const& [label, pages] : Printed(printer)) EXPECT_EQ(pages, 1) << label;
    EXPECT_EQ(first.said + second.said, std::string(2 * Streams, ';'));
}

TEST_F(PrintDoorTest, TellsWhatDoesNotPrint) {
    VirtualPrinterProcess printer({"--speed", "0", "--pause-on-start"});
    Screen screen(printer.Runtime() / "properties");
    ASSERT_TRUE(Until([&] { return screen.door->IsOpen(); }));
    struct Row {
        std::string stream;
        std::string says;
    };
    Row const rows[] = {
        {"", "There is nothing to print.;"},
        {std::string(PrintDoor::LongestStream + 1, 'x'), "The label is too large to be printed from here.;"},
        {"no label", "The label does not print: the stream holds no command.;"},
        {"^XA^FDhalf", "The label does not print: the stream ends amid a label.;"},
        {"^XA^FD~HSquestion^XZ", ";"},
    };
    for (auto const& row : rows) {
        screen.said.clear();
        screen.Print(row.stream);
        ASSERT_TRUE(Until([&] { return !screen.said.empty(); })) << row.says;
        EXPECT_EQ(screen.said, row.says);
    }
    screen.properties->Find(PropertyNames::StreamToPrint)->SetValueText("e30=");
    EXPECT_TRUE(printer.Says("what a surface has sent to be printed is no stream"));

    screen.said.clear();
    for (int i = 0; i < 20; ++i) screen.Print(Label("waits"));
    ASSERT_TRUE(Until([&] { return printer.Jobs().size() == 16; }));
    for (int i = 0; i < 100; ++i) {
        QCoreApplication::processEvents();
        ::usleep(2000);
    }
    EXPECT_EQ(screen.said, std::string(16, ';')) << "the next one waits at the printer";
    printer.Type("cancel-all");
    std::string const cancelled = "The label does not print: the stream is cancelled.;";
    EXPECT_TRUE(Until([&] { return screen.said.find(cancelled) != std::string::npos; })) << screen.said;

    // Nobody is left to tell the screen.
    printer.KillChild("propertyserver");
    EXPECT_EQ(printer.End(SIGKILL), SIGKILL);
    screen.said.clear();
    screen.Print(Label("late"));
    EXPECT_TRUE(Until([&] { return !screen.said.empty(); }));
    EXPECT_NE(screen.said, ";");
}

/// Of this process, in MiB.
long Memory() {
    std::ifstream status("/proc/self/status");
    long kilobytes = 0;
    for (std::string word; status >> word;) {
        if (word == "VmRSS:" && status >> kilobytes) break;
    }
    return kilobytes / 1024;
}

TEST_F(PrintDoorTest, ABatchPrintsEachRowOnceInFlatMemoryThoughTheHostIsKilled) {
    char const* const asked = std::getenv("ZPL_TEST_ROWS");
    std::size_t const rows = asked ? std::strtoul(asked, nullptr, 10) : 200;
    VirtualPrinterProcess printer({"--speed", "0"});
    auto const store = printer.Folder() / "state/zplhost";
    auto const formats = store / "SavedZPLFormats";
    printer.Print("^XA^DFE:ROW.ZPL^FO20,20^A0N,40^FN1\"Number\"^FS^XZ");
    ASSERT_TRUE(Until([&] { return std::filesystem::exists(formats / "E/ROW.ZPL"); }));
    std::filesystem::create_directories(store / "values");
    std::ofstream list(store / "values/rows.csv");
    list << "number\n";
    for (std::size_t i = 0; i < rows; ++i) list << "row" << i << '\n';
    list.close();

    Screen screen(printer.Runtime() / "properties");
    ASSERT_TRUE(Until([&] { return screen.door->IsOpen(); }));
    DeskSettings settings;
    settings.machine.formatsFolder = formats;
    TemplateList templates(settings, [&](QByteArray stream, auto done) { screen.door->Print(stream, done); });
    auto* const batch = qobject_cast<BatchPrinter*>(templates.batch());
    batch->check(QStringLiteral("rows.csv"), {QStringLiteral("E:ROW.ZPL")});
    ASSERT_TRUE(Until([&] { return batch->state() == u"ready"; }));
    batch->start();
    ASSERT_TRUE(Until([&] { return batch->taken() >= 100; }));
    printer.KillChild("zplhost");
    long const early = Memory();
    auto const patience = std::chrono::seconds(20 + rows / 20);
    ASSERT_TRUE(VirtualPrinterProcess::UntilFor(patience,
                                                [&] {
                                                    QCoreApplication::processEvents();
                                                    return printer.Kept().size() >= rows;
                                                }))
        << batch->notice().toStdString() << printer.Log();
    EXPECT_TRUE(Until([&] { return batch->state() == u"done"; }));
    EXPECT_EQ(printer.Kept().size(), rows);
    // A checker of addresses keeps what is freed.
    if (SanitizerFactor == 1) {
        EXPECT_LE(Memory() - early, 8);
    }
    if (asked) std::printf("%zu rows: %ld MiB behind the first hundred, %ld at the end\n", rows, early, Memory());
}

}  // namespace
