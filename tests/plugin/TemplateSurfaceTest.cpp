#include <gtest/gtest.h>

#include <fstream>

#include "foundation/Files.h"
#include "jobhost/model/StreamToPrint.h"
#include "plugin/surfaces/BatchPrinter.h"
#include "plugin/surfaces/TemplateList.h"
#include "propertybus/PropertyIdentifiers.h"
#include "tests/plugin/Surface.h"

namespace {

using Zpl::Host::StreamTaken;
using Zpl::Host::StreamToPrint;

char const Order[] =
    "^FO20,20^A0N,60^FN1\"Customer\"^FS^FO20,120^BY3^BEN,100^FN2\"Article\"^FS^FO20,300^A0N,60^FDOrder^FS";
char const Box[] = "^FO20,20^A0N,90^FN1\"Customer\"^FS";

/// Templates in the printer's store, and who takes what is printed.
class TemplateSurfaceTest : public testing::Test {
protected:
    TemplateSurfaceTest() {
        TheHost();
        std::filesystem::create_directories(Formats() / "E");
        Store("ORDER", Order);
        Store("BOX", Box);
        messages.clear();
    }
    ~TemplateSurfaceTest() override {
        EXPECT_EQ(messages.join(u'\n').toStdString(), "");
        for (auto const& entry : std::filesystem::directory_iterator(TheHost().storage.Path()))
            if (entry.path() != Formats()) std::filesystem::remove_all(entry.path());
    }
    static std::filesystem::path Formats() { return TheHost().storage / "SavedZPLFormats"; }
    static std::filesystem::path FileOf(std::string const& name) { return Formats() / "E" / (name + ".ZPL"); }
    static void Store(std::string const& name, std::string const& bytes) {
        EXPECT_FALSE(WriteFileAtomically(FileOf(name), bytes));
    }
    /// Streams that surfaces have printed since the last call.
    std::string Printed(std::size_t streams) {
        std::string all;
        auto const take = [&] {
            auto const property =
                std::dynamic_pointer_cast<StringProperty>(TheHost().properties->Find(PropertyNames::StreamToPrint));
            auto const stream = property ? StreamToPrint::Parse(property->Get()) : std::nullopt;
            if (!stream || streams == 0) return streams == 0;
            // Who has waited for long asks.
            bool const isAsked = stream->bytes.empty();
            all += stream->bytes;
            streams -= isAsked ? 0 : 1;
            TheHost().Set<StringProperty>(PropertyNames::StreamTaken,
                                          StreamTaken{stream->sender, stream->number, {}, isAsked}.Text());
            Surface::Settle();
            return streams == 0;
        };
        EXPECT_TRUE(Surface::Until(take));
        return all;
    }
    static int Ink(QVariant const& picture) {
        auto const image = picture.value<QImage>().convertToFormat(QImage::Format_Grayscale8);
        int ink = 0;
        for (int y = 0; y < image.height(); ++y) {
            for (int x = 0; x < image.width(); ++x) ink += qGray(image.pixel(x, y)) < 128;
        }
        return ink;
    }
};

constexpr QSize Screen(800, 424);

TEST_F(TemplateSurfaceTest, PrintsWhatIsFilledIn) {
    Surface surface(QStringLiteral("TemplateLabelSurface"), Screen);
    ASSERT_TRUE(Surface::Until([&] { return surface.Has("card E:ORDER.ZPL"); }));
    surface.Click("card E:ORDER.ZPL");
    ASSERT_TRUE(Surface::Until([&] { return surface.Has("field 2"); }));
    auto const ink = [&] { return Ink(surface.Item("page").property("picture")); };
    ASSERT_TRUE(Surface::Until([&] { return ink() > 0; }));
    int const empty = ink();
    surface.Click("field 1");
    surface.Type("Ann ^XZ");
    ASSERT_TRUE(Surface::Until([&] { return ink() > empty; })) << "the page shows what is typed";

    auto const hints = [&](char const* field) { return surface.Item(field).property("inputMethodHints").toInt(); };
    EXPECT_TRUE(hints("field 2") & Qt::ImhDigitsOnly);
    EXPECT_FALSE(hints("field 1") & Qt::ImhDigitsOnly);
    surface.Click("field 2");
    surface.Type("12a");
    EXPECT_EQ(surface.TextOf("fault 2"), "Only digits may stand here.");
    surface.Click("print");
    EXPECT_EQ(surface.TextOf("notice"), "Some fields are not filled in as they should be.");
    surface.Click("field 2");
    surface.Type("123456789012");
    EXPECT_EQ(surface.TextOf("fault 2"), "");
    surface.Click("more");
    surface.Click("more");
    surface.Click("print");
    EXPECT_EQ(
        Printed(1),
        "\xEF\xBB\xBF^XA^PW812^LL1218^XFE:ORDER.ZPL^FS^FN1^FH_^FDAnn _5EXZ^FS^FN2^FH_^FD123456789012^FS^PQ3^XZ\n");
    ASSERT_TRUE(Surface::Until([&] { return surface.TextOf("notice") == "3 labels are on their way."; }));
    surface.Click("clear");
    EXPECT_EQ(surface.TextOf("field 1"), "");
    EXPECT_EQ(surface.TextOf("quantity"), "1");
}

TEST_F(TemplateSurfaceTest, TellsByThePageWhatIsFoundOfIt) {
    Store("TIGHT",
          "^PW400^LL300^FO20,20^A0N,60^FN1\"Customer\"^FS^FO20,100^BY3^BCN,60^FN3\"Code\"^FS^FO350,200^A0N,40^FDfixed^"
          "FS");
    Surface surface(QStringLiteral("TemplateLabelSurface"), Screen);
    surface.Set("format", QStringLiteral("E:TIGHT.ZPL"));
    auto const tells = [&](char const* words) {
        return Surface::Until([&] { return surface.TextOf("finding").find(words) != std::string::npos; });
    };
    auto const isMarked = [&](char const* field) { return surface.Item(field).property("isDoubtful").toBool(); };
    EXPECT_TRUE(tells("The text \"fixed\" is cut: "));
    ASSERT_TRUE(surface.Has("field 3"));
    EXPECT_FALSE(isMarked("field 1") || isMarked("field 3")) << "it is none of the fields";
    surface.Click("field 3");
    surface.Type("A long code of many letters");
    EXPECT_TRUE(tells("The barcode \"A long code of many letters\" is cut: "));
    EXPECT_TRUE(isMarked("field 3"));
    EXPECT_FALSE(isMarked("field 1"));
    surface.Click("field 1");
    surface.Type("A customer whose name is long");
    EXPECT_TRUE(tells("The text \"A customer whose name is long\" is cut: ")) << "of what is typed into";
    surface.Click("finding");
    EXPECT_NE(surface.TextOf("finding").find("The barcode \"A long"), std::string::npos) << "a touch unfolds all";
    surface.Click("finding");
    surface.Click("field 1");
    surface.Type("Ann");
    EXPECT_TRUE(Surface::Until([&] { return !isMarked("field 1"); }));
    EXPECT_TRUE(isMarked("field 3"));
    std::filesystem::remove(FileOf("TIGHT"));
}

TEST_F(TemplateSurfaceTest, LosesNothingWhenItsTemplateGoes) {
    Surface surface(QStringLiteral("TemplateLabelSurface"), Screen);
    surface.Set("format", QStringLiteral("E:BOX.ZPL"));
    ASSERT_TRUE(Surface::Until([&] { return surface.Has("field 1"); }));
    surface.Click("field 1");
    surface.Type("Ann");
    std::filesystem::remove(FileOf("BOX"));
    ASSERT_TRUE(
        Surface::Until([&] { return surface.TextOf("notice") == "E:BOX.ZPL is not in the printer any more."; }));
    EXPECT_FALSE(surface.Item("print").isEnabled());
    surface.Click("storeAgain");
    EXPECT_EQ(ReadRegularFile(FileOf("BOX")), Box);
    auto const isFilled = [&] { return surface.Has("field 1") && surface.TextOf("field 1") == "Ann"; };
    EXPECT_TRUE(Surface::Until([&] { return surface.Item("print").isEnabled() && isFilled(); }));
    Store("BOX", std::string(Box) + "^FO20,200^A0N,60^FN5\"Weight\"^FS");
    ASSERT_TRUE(Surface::Until([&] { return surface.Has("field 5"); })) << "a changed template has its new fields";
    EXPECT_TRUE(Surface::Until(isFilled));
}

TEST_F(TemplateSurfaceTest, SettlesFieldsForAllWhoFillThemIn) {
    Surface surface(QStringLiteral("TemplateLabelSurface"), Screen);
    surface.Set("format", QStringLiteral("E:ORDER.ZPL"));
    ASSERT_TRUE(Surface::Until([&] { return surface.Has("field 2"); }));
    surface.Click("fields");
    ASSERT_TRUE(Surface::Until([&] { return surface.Has("name 1"); }));
    surface.Click("down 1");
    surface.Click("required 2");
    surface.Click("name 2");
    surface.Type("Item");
    surface.Click("value 1");
    surface.Type("Shop");
    surface.Click("most 1");
    surface.Type("3");
    surface.Click("save");
    EXPECT_EQ(surface.TextOf("notice"), "Field 1: at most 3 characters, and there are 4.");
    surface.Click("most 1");
    surface.Type("5");
    surface.Click("save");
    surface.Click("leave");
    ASSERT_TRUE(Surface::Until([&] { return surface.Has("field 1") && surface.TextOf("field 1") == "Shop"; }));
    auto const place = [&](char const* field) { return surface.Item(field).mapToScene({}).y(); };
    EXPECT_TRUE(Surface::Until([&] { return place("field 2") < place("field 1"); }));
    surface.Click("print");
    EXPECT_EQ(surface.TextOf("fault 2"), "A value is needed here.");
}

TEST_F(TemplateSurfaceTest, PrintsSeveralTogetherOrFromAList) {
    std::filesystem::create_directories(TheHost().storage / "values");
    std::string rows = "Customer;Article;Copies\n";
    for (int i = 1; i <= 60; ++i) rows += "c" + std::to_string(i) + (i == 7 ? ";x;1\n" : ";123456789012;2\n");
    std::ofstream(TheHost().storage / "values/orders.csv") << rows;

    Surface surface(QStringLiteral("MultiTemplateLabelSurface"), Screen);
    ASSERT_TRUE(Surface::Until([&] { return surface.Has("card E:BOX.ZPL"); }));
    surface.Click("card E:BOX.ZPL");
    surface.Click("card E:ORDER.ZPL");
    surface.Click("fill");
    ASSERT_TRUE(Surface::Until([&] { return surface.Has("field 2"); }));
    surface.Click("field 2");
    surface.Type("x");
    surface.Click("printAll");
    surface.Click("field 2");
    surface.Type("1234567");
    surface.Click("printAll");
    surface.Type("123456789012");
    surface.Click("printAll");
    EXPECT_EQ(Printed(2),
              "\xEF\xBB\xBF^XA^PW812^LL1218^XFE:BOX.ZPL^FS^PQ1^XZ\n"
              "\xEF\xBB\xBF^XA^PW812^LL1218^XFE:ORDER.ZPL^FS^FN2^FH_^FD123456789012^FS^PQ1^XZ\n")
        << "all or none";

    surface.Click("back");
    surface.Click("fromList");
    ASSERT_TRUE(Surface::Until([&] { return surface.Has("list orders.csv"); }));
    surface.Click("list orders.csv");
    ASSERT_TRUE(Surface::Until([&] { return surface.Item("start").isVisible(); }));
    EXPECT_EQ(surface.TextOf("summary"), "60 rows, 236 labels. 1 row cannot print and will be left out:");
    surface.Click("start");
    Printed(1);
    EXPECT_EQ(surface.TextOf("taken"), "25 rows of 60 handed to the printer");
    auto const rest = Printed(2);
    ASSERT_TRUE(Surface::Until([&] { return surface.TextOf("notice") == "All labels are on their way."; }));
    EXPECT_NE(rest.find("^XFE:ORDER.ZPL^FS^FN1^FH_^FDc60^FS^FN2^FH_^FD123456789012^FS^PQ2"), rest.npos);
    EXPECT_FALSE(std::filesystem::exists(TheHost().storage / "batch.json"));
}

/// Draws the pictures of docs/screen.md into the folder that ZPL_PICTURES names.
TEST_F(TemplateSurfaceTest, Pictures) {
    char const* const folder = std::getenv("ZPL_PICTURES");
    if (!folder) GTEST_SKIP() << "ZPL_PICTURES names no folder";
    auto const keep = [&](Surface& surface, char const* name) {
        QTest::qWait(1500);  // for what is still drawn
        EXPECT_TRUE(surface.Grab(QImage::Format_RGB32).save(QString::fromStdString(std::string(folder) + '/' + name)));
    };
    Store("ORDER",
          "^PW812^LL609^FO30,30^GB752,549,4^FS^FO60,60^A0N,50^FDHarbour Trading^FS^FO60,150^A0N,34^FDCustomer^FS"
          "^FO60,190^A0N,64^FN1\"Customer\"^FS^FO60,290^A0N,34^FDLot^FS^FO60,330^A0N,64^FN3\"Lot\"^FS"
          "^FO400,290^BY3^BEN,170^FN2\"Article\"^FS");
    Store("BOX",
          "^PW812^LL406^FO20,20^GB772,366,8^FS^FO60,70^A0N,140^FN1\"Customer\"^FS^FO60,250^A0N,80^FN4\"Box\"^FS");
    Store("SHELF", "^PW609^LL203^FO20,20^A0N,100^FN1\"Shelf\"^FS^FO20,120^BY2^BCN,60,N^FN1^FS");
    {
        Surface surface(QStringLiteral("PrinterScreen"), {800, 480});
        surface.Click("Templates");
        ASSERT_TRUE(Surface::Until([&] { return surface.Has("card E:SHELF.ZPL"); }));
        keep(surface, "screen-templates.png");
        surface.Click("card E:ORDER.ZPL");
        ASSERT_TRUE(Surface::Until([&] { return surface.Has("field 3"); }));
        surface.Click("field 1");
        surface.Type("Ingrid Olsen");
        surface.Click("field 3");
        surface.Type("L-2204");
        surface.Click("field 2");
        surface.Type("401234512345");
        keep(surface, "screen-template.png");
        surface.Click("fields");
        ASSERT_TRUE(Surface::Until([&] { return surface.Has("name 1"); }));
        surface.Click("required 1");
        surface.Click("up 2");
        surface.Click("name 3");
        surface.Type("Lot number");
        surface.Click("save");
        keep(surface, "screen-fields.png");
        surface.Click("leave");
        surface.Click("field 1");
        surface.Type("Rhine Harbour Forwarding Company");
        keep(surface, "screen-findings.png");
    }
    std::filesystem::create_directories(TheHost().storage / "values");
    std::ofstream list(TheHost().storage / "values/orders.csv");
    list << "Customer,Article,Lot number,Colour\n";
    for (int i = 1; i <= 1000; ++i)
        list << "Customer " << i << ',' << (i == 17 ? "40123x512345" : "401234512345") << ",L-" << i << ",red\n";
    list.close();
    std::ofstream(TheHost().storage / "values/shelves.csv") << "Shelf\nA-1\n";
    Surface surface(QStringLiteral("PrinterScreen"), {800, 480});
    surface.Click("Templates");
    surface.Click("Several");
    ASSERT_TRUE(Surface::Until([&] { return surface.Has("card E:BOX.ZPL"); }));
    surface.Click("card E:BOX.ZPL");
    surface.Click("card E:ORDER.ZPL");
    surface.Click("fill");
    ASSERT_TRUE(Surface::Until([&] { return surface.Has("field 4") && surface.Has("field 2"); }));
    surface.Click("field 4");
    surface.Type("7 of 12");
    keep(surface, "screen-several.png");
    surface.Click("back");
    surface.Click("card E:BOX.ZPL");
    surface.Click("fromList");
    surface.Click("list orders.csv");
    ASSERT_TRUE(Surface::Until([&] { return surface.Item("start").isVisible(); }));
    keep(surface, "screen-list.png");
    surface.Click("start");
    Printed(8);
    keep(surface, "screen-batch.png");
    surface.Click("stop");
    Printed(1);
    surface.Click("giveUp");
}

/// A batch without a surface, at a printer that answers when it is told to.
class BatchPrinterTest : public TemplateSurfaceTest {
protected:
    BatchPrinterTest() {
        std::filesystem::create_directories(folder_ / "values");
        std::filesystem::create_directories(folder_ / "formats/E");
        std::ofstream(folder_ / "formats/E/BOX.ZPL") << Box;
        std::ofstream list(folder_ / "values/list.csv");
        list << "customer\n";
        for (int i = 1; i <= 100; ++i) list << "c" << i << "\n";
        Start();
    }
    /// Also after the process has been killed.
    void Start() {
        templates_.reset();
        DeskSettings settings;
        settings.machine.formatsFolder = folder_ / "formats";
        templates_ = std::make_unique<TemplateList>(settings, [this](QByteArray stream, auto done) {
            streams_.push_back(stream.toStdString());
            answer_ = std::move(done);
        });
        batch_ = qobject_cast<BatchPrinter*>(templates_->batch());
    }
    bool Is(char const* state) {
        return bool(Surface::Until([&] { return batch_->state() == QString::fromLatin1(state); }));
    }
    bool HandsOver(std::size_t streams) {
        return bool(Surface::Until([&] { return streams_.size() == streams; }));
    }
    void Answer(QString const& error = {}) { std::exchange(answer_, {})(error); }
    static std::string FirstOf(std::string const& stream) {
        auto const data = stream.find("^FD") + 3;
        return stream.substr(data, stream.find('^', data) - data);
    }

    TemporaryDirectory folder_;
    std::vector<std::string> streams_;
    std::function<void(QString const&)> answer_;
    std::unique_ptr<TemplateList> templates_;
    BatchPrinter* batch_ = nullptr;
};

TEST_F(BatchPrinterTest, GoesOnWhereItWasWhateverEndsIt) {
    batch_->check(QStringLiteral("list.csv"), {QStringLiteral("E:BOX.ZPL")});
    ASSERT_TRUE(Is("ready"));
    batch_->start();
    ASSERT_TRUE(HandsOver(1));
    Answer();
    ASSERT_TRUE(HandsOver(2));
    Start();
    ASSERT_TRUE(Is("stopped"));
    EXPECT_EQ(batch_->taken(), 25);
    EXPECT_EQ(batch_->doubtful(), 25) << "nobody knows of the rows that were being handed over";
    batch_->goOn(true);
    ASSERT_TRUE(HandsOver(3));
    EXPECT_EQ(FirstOf(streams_[2]), "c26");
    Answer(QStringLiteral("It has gone."));
    ASSERT_TRUE(Is("stopped"));
    EXPECT_EQ(batch_->notice().toStdString(), "It has gone.");

    std::filesystem::rename(folder_ / "formats/E/BOX.ZPL", folder_ / "BOX");
    batch_->goOn(false);
    ASSERT_TRUE(Surface::Until([&] { return batch_->notice() == u"E:BOX.ZPL is not in the printer any more."; }));
    std::filesystem::rename(folder_ / "BOX", folder_ / "formats/E/BOX.ZPL");
    batch_->goOn(false);
    ASSERT_TRUE(HandsOver(4));
    EXPECT_EQ(FirstOf(streams_[3]), "c51");
    batch_->stop();
    Answer();
    Start();
    EXPECT_EQ(batch_->taken(), 75);
    EXPECT_EQ(batch_->doubtful(), 0);
    batch_->goOn(false);
    ASSERT_TRUE(HandsOver(5));
    EXPECT_EQ(FirstOf(streams_[4]), "c76");
    Answer();
    ASSERT_TRUE(Is("done"));
    Start();
    EXPECT_TRUE(Is(""));
}

TEST_F(BatchPrinterTest, StopsWhereItCannotSayHowFarItHasCome) {
    batch_->check(QStringLiteral("list.csv"), {QStringLiteral("E:BOX.ZPL")});
    ASSERT_TRUE(Is("ready"));
    std::filesystem::create_directory(folder_ / "batch.json");
    batch_->start();
    ASSERT_TRUE(Is("stopped"));
    EXPECT_TRUE(streams_.empty());
    EXPECT_TRUE(batch_->notice().startsWith(u"How far the batch has come cannot be kept: ")) << "in words";
    std::filesystem::remove(folder_ / "batch.json");
    std::ofstream(folder_ / "values/list.csv", std::ios::app) << "more\n";
    batch_->goOn(false);
    ASSERT_TRUE(Surface::Until([&] { return !batch_->notice().isEmpty() && batch_->state() == u"stopped"; }));
    EXPECT_EQ(batch_->notice().toStdString(), "The list has changed since it was looked through.");
    EXPECT_TRUE(streams_.empty());
}

}  // namespace
