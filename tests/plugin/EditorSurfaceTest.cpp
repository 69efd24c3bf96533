#include <gtest/gtest.h>

#include <QtTest/QTest>
#include <cstdlib>

#include "foundation/AppSettings.h"
#include "foundation/Files.h"
#include "jobhost/model/StreamToPrint.h"
#include "plugin/surfaces/LabelEditor.h"
#include "plugin/surfaces/PageView.h"
#include "propertybus/PropertyIdentifiers.h"
#include "tests/plugin/Surface.h"
#include "tests/support/TemporaryDirectory.h"

// The editor at work on formats of a store, by touches and keys. ZPL_PICTURES=DIR keeps what it shows.
namespace {

namespace fs = std::filesystem;

std::string const Order =
    "^FO40,40^A0N,50,50^FDNorth Harbour^FS\n^FO40,120^GB500,4,4^FS^XQ1,2\n^FO40,160^BY3^BCN,100,Y,N^FD123456^FS"
    "^FO40,320^ADN,36,20^FN1\"Customer\"^FS^FO700,300^A0N,30,30^FDa^FS";

class EditorSurfaceTest : public testing::Test {
protected:
    EditorSurfaceTest() {
        TheHost();
        storageBefore_ = AppSettings::GetInstance().StorageDir();
        AppSettings::GetInstance().SetStorageDir(folder_.Path());
        Store("E/ORDER.ZPL", Order);
        messages.clear();
    }
    ~EditorSurfaceTest() override {
        Editor().close();
        Wait();
        AppSettings::GetInstance().SetStorageDir(storageBefore_);
        EXPECT_EQ(messages.join(u'\n').toStdString(), "");
    }

    fs::path Path(std::string const& object) const { return AppSettings::GetInstance().FormatsDir() / object; }
    std::string Stored(std::string const& object) const { return ReadRegularFile(Path(object)); }
    void Store(std::string const& object, std::string_view bytes) const {
        fs::create_directories(Path(object).parent_path());
        EXPECT_FALSE(WriteFileAtomically(Path(object), bytes));
    }

    static LabelEditor& Editor() {
        int const type = qmlTypeId("TCPrintEngine", 1, 0, "TQTWSProcessorInterface");
        auto* const tws = TheHost().engine->singletonInstance<QObject*>(type);
        return *qobject_cast<LabelEditor*>(qvariant_cast<QObject*>(tws->property("editor")));
    }
    /// Until all that was asked for is done and shown.
    static void Wait() {
        EXPECT_TRUE(QTest::qWaitFor([] { return !Editor().isBusy(); }, 60'000));
        Surface::Settle();
    }

    TemporaryDirectory folder_;
    fs::path storageBefore_;
};

/// A surface with a finger on it.
class Touched {
public:
    explicit Touched(QString const& name, QSize size = {800, 420}) : surface_(name, size) {}

    /// What is seen under that name, also in a dialog.
    QQuickItem* Find(char const* name) {
        // What is shown is laid out with the next frame.
        Surface::Settle();
        surface_.Window().grabWindow();
        Surface::Settle();
        return FindSeen(*surface_.Window().contentItem(), QString::fromLatin1(name));
    }
    void Click(char const* name) {
        auto* const item = Find(name);
        ASSERT_TRUE(item && item->isEnabled()) << name;
        ScrollTo(*item);
        auto const at = item->mapToScene({item->width() / 2, item->height() / 2}).toPoint();
        QTest::mouseClick(&surface_.Window(), Qt::LeftButton, {}, at);
        Surface::Settle();
    }
    std::string TextOf(char const* name) {
        auto* const item = Find(name);
        return item ? item->property("text").toString().toStdString() : "(not seen)";
    }
    void Tap(QPointF dot) { QTest::mouseClick(&surface_.Window(), Qt::LeftButton, {}, PointOf(dot)); }
    void Drag(QPointF from, QPointF to) {
        QTest::mousePress(&surface_.Window(), Qt::LeftButton, {}, PointOf(from));
        for (int step = 1; step <= 4; ++step) {
            QTest::mouseMove(&surface_.Window(), PointOf(from + (to - from) * step / 4));
            Surface::Settle();
        }
        QTest::mouseRelease(&surface_.Window(), Qt::LeftButton, {}, PointOf(to));
    }
    void Type(char const* name, QString const& text) {
        Click(name);
        QTest::keySequence(&surface_.Window(), QKeySequence::SelectAll);
        for (QChar const c : text) QTest::keyClick(&surface_.Window(), c.toLatin1());
        Surface::Settle();
    }
    QImage Grab() { return surface_.Grab(); }
    void Keep(char const* name) {
        char const* const folder = std::getenv("ZPL_PICTURES");
        Surface::Settle();
        QTest::qWait(folder ? 300 : 0);
        if (folder) surface_.Window().grabWindow().save(QString::fromLatin1(folder) + u'/' + QString::fromLatin1(name));
    }
    QQuickWindow& Window() { return surface_.Window(); }

private:
    static void ScrollTo(QQuickItem const& item) {
        for (auto* parent = item.parentItem(); parent; parent = parent->parentItem()) {
            if (parent->objectName() != QStringLiteral("panel")) continue;
            double const below = item.mapToItem(parent, {0, item.height()}).y() - parent->height();
            if (below > 0) parent->setProperty("contentY", parent->property("contentY").toDouble() + below);
        }
        Surface::Settle();
    }
    QPoint PointOf(QPointF dot) {
        auto* const page = qobject_cast<PageView*>(Find("page"));
        auto const place = page->itemRect(QRectF(dot, QSizeF(0, 0)));
        return page->mapToScene(place.topLeft()).toPoint();
    }
    static QQuickItem* FindSeen(QQuickItem const& parent, QString const& name) {
        for (auto* child : parent.childItems()) {
            if (!child->isVisible()) continue;
            if (child->objectName() == name) return child;
            if (auto* const found = FindSeen(*child, name)) return found;
        }
        return nullptr;
    }

    Surface surface_;
};

TEST_F(EditorSurfaceTest, MovesAFieldByDragAndBySteps) {
    Touched editor(QStringLiteral("EditorControl"));
    editor.Click("E:ORDER.ZPL");
    Wait();
    EXPECT_EQ(editor.TextOf("name"), "E:ORDER.ZPL");
    EXPECT_EQ(editor.TextOf("kind"), "(not seen)");
    editor.Tap({100, 60});
    EXPECT_EQ(editor.TextOf("kind"), "Text");
    editor.Drag({100, 60}, {200, 100});
    Wait();
    auto const box = Editor().boxes().at(0).toRectF();
    EXPECT_NEAR(box.left(), 140, 8);
    for (int i = 0; i < 3; ++i) editor.Click("nudgeRight");
    Wait();
    EXPECT_EQ(Editor().boxes().at(0).toRectF(), box.translated(3, 0));
    editor.Click("undo");
    Wait();
    EXPECT_EQ(Editor().boxes().at(0).toRectF(), box);
    EXPECT_EQ(editor.TextOf("name"), "E:ORDER.ZPL \u2013 changed");
    editor.Click("save");
    Wait();
    EXPECT_EQ(editor.TextOf("name"), "E:ORDER.ZPL");
    auto const stored = Stored("E/ORDER.ZPL");
    EXPECT_EQ(stored.substr(stored.find("^A0")), Order.substr(Order.find("^A0"))) << "only the origin is another";
    EXPECT_NE(stored, Order);
}

TEST_F(EditorSurfaceTest, TypesTextAndSetsAFont) {
    Touched editor(QStringLiteral("EditorControl"));
    editor.Click("E:ORDER.ZPL");
    Wait();
    editor.Tap({100, 60});
    editor.Type("text", QStringLiteral("^XA,b"));
    Wait();
    EXPECT_EQ(editor.TextOf("text"), "^XA,b");
    auto const typed = Editor().picture();
    QMetaObject::invokeMethod(editor.Find("text"), "insert", Q_ARG(int, 0), Q_ARG(QString, QStringLiteral("\u4E2D")));
    Wait();
    EXPECT_EQ(editor.TextOf("notice"),
              "This label cannot show \u201C\u4E2D\u201D: its character set does not have it.");
    EXPECT_EQ(Editor().picture(), typed);
    QTest::keyClick(&editor.Window(), Qt::Key_Home);
    QTest::keyClick(&editor.Window(), Qt::Key_Delete);
    Wait();
    EXPECT_EQ(editor.TextOf("notice"), "");
    editor.Type("fontHeightValue", QStringLiteral("80"));
    QTest::keyClick(&editor.Window(), Qt::Key_Return);
    editor.Click("fontWidthMore");
    Wait();
    editor.Click("save");
    Wait();
    EXPECT_EQ(Stored("E/ORDER.ZPL").substr(0, 46), "^FO40,40^A0N,80,51^FH^FD_5EXA,b^FS\n^FO40,120^G");
    // What was typed in one go is undone in one step.
    for (int i = 0; i < 3; ++i) editor.Click("undo");
    Wait();
    EXPECT_FALSE(Editor().canUndo());
    editor.Click("save");
    Wait();
    EXPECT_EQ(Stored("E/ORDER.ZPL"), Order);
}

TEST_F(EditorSurfaceTest, SetsWhatBarcodesAndLinesHave) {
    Touched editor(QStringLiteral("EditorControl"));
    editor.Click("E:ORDER.ZPL");
    Wait();
    editor.Tap({60, 200});
    EXPECT_EQ(editor.TextOf("kind"), "Code 128");
    editor.Click("heightMore");
    editor.Click("moduleLess");
    editor.Click("above");
    Wait();
    editor.Tap({400, 122});
    EXPECT_EQ(editor.TextOf("kind"), "Line");
    editor.Click("thicknessMore");
    editor.Click("behind");
    EXPECT_EQ(editor.TextOf("kind"), "Code 128");
    editor.Click("behind");
    editor.Click("behind");
    EXPECT_EQ(editor.TextOf("waiting"), "Filled in when it prints: Customer") << "it is drawn when it has been filled";
    editor.Click("save");
    Wait();
    EXPECT_EQ(
        Stored("E/ORDER.ZPL"),
        "^FO40,40^A0N,50,50^FDNorth Harbour^FS\n^FO40,120^GB500,5,5^FS^XQ1,2\n^FO40,160^BY2^BCN,101,Y,Y^FD123456^FS"
        "^FO40,320^ADN,36,20^FN1\"Customer\"^FS^FO700,300^A0N,30,30^FDa^FS");
}

TEST_F(EditorSurfaceTest, ChangesSeveralFieldsTogether) {
    Touched editor(QStringLiteral("EditorControl"));
    editor.Click("E:ORDER.ZPL");
    Wait();
    editor.Click("several");
    for (QPointF const dot : {QPointF(100, 60), {60, 200}, {705, 310}}) editor.Tap(dot);
    EXPECT_EQ(editor.TextOf("count"), "3 fields");
    editor.Tap({60, 200});
    EXPECT_EQ(editor.TextOf("count"), "2 fields") << "a second touch leaves a field out";
    editor.Click("left");
    editor.Click("fontHeightMore");
    Wait();
    auto const boxes = Editor().boxes();
    EXPECT_EQ(boxes.at(0).toRectF().left(), boxes.at(1).toRectF().left());
    editor.Click("remove");
    Wait();
    EXPECT_EQ(Editor().fieldCount(), 3);
    EXPECT_EQ(editor.TextOf("count"), "Touch the fields to change together");
    editor.Click("undo");
    Wait();
    EXPECT_EQ(Editor().fieldCount(), 5);
    editor.Click("all");
    EXPECT_EQ(editor.TextOf("count"), "5 fields");
    editor.Click("nudgeDown");
    Wait();
    editor.Click("save");
    Wait();
    auto const stored = Stored("E/ORDER.ZPL");
    for (char const* const moved : {"41^A0N,51,50^FDNorth", "121^GB", "161^BY3", "321^ADN", "301^A0N,51,30^FDa"})
        EXPECT_NE(stored.find(moved), stored.npos) << moved << " in " << stored;
}

TEST_F(EditorSurfaceTest, TellsWhatIsInTheWayOfSaving) {
    Store("E/OTHER.ZPL", "^FO1,1^FDother^FS");
    Store("R/FULL.GRF", "");
    fs::resize_file(Path("R/FULL.GRF"), 64UL << 20);
    Touched editor(QStringLiteral("EditorControl"));
    editor.Click("E:ORDER.ZPL");
    Wait();
    editor.Tap({100, 60});
    editor.Click("nudgeRight");
    Wait();
    fs::remove(Path("E/ORDER.ZPL"));
    editor.Click("save");
    Wait();
    EXPECT_EQ(editor.TextOf("words"), "E:ORDER.ZPL has been removed from the printer meanwhile. Store it again?");
    editor.Click("reject");
    EXPECT_EQ(Stored("E/ORDER.ZPL"), "");
    Store("E/ORDER.ZPL", "^FO1,1^FDnew^FS");
    editor.Click("save");
    Wait();
    EXPECT_EQ(editor.TextOf("words"), "E:ORDER.ZPL has been stored anew meanwhile. Replace what is there now?");
    editor.Click("accept");
    Wait();
    EXPECT_EQ(Stored("E/ORDER.ZPL").substr(0, 9), "^FO41,40^");

    editor.Click("saveAs");
    editor.Type("newName", QStringLiteral("other"));
    editor.Click("accept");
    Wait();
    EXPECT_EQ(editor.TextOf("words"), "E:OTHER.ZPL is there already. Replace it?");
    editor.Click("reject");
    editor.Click("saveAs");
    editor.Type("newName", QStringLiteral("a b"));
    EXPECT_FALSE(editor.Find("accept")->isEnabled()) << "no name for a format";
    editor.Type("newName", QStringLiteral("third"));
    editor.Click("accept");
    Wait();
    EXPECT_EQ(editor.TextOf("name"), "E:THIRD.ZPL");
    EXPECT_EQ(Stored("E/THIRD.ZPL"), Stored("E/ORDER.ZPL"));
    editor.Click("nudgeRight");
    Wait();

    // A device without room for another byte.
    editor.Click("saveAs");
    editor.Click("R");
    editor.Click("accept");
    Wait();
    EXPECT_EQ(editor.TextOf("words"), "object R:THIRD.ZPL is not stored: its device is full");
    editor.Click("accept");
    EXPECT_EQ(editor.TextOf("name"), "E:THIRD.ZPL \u2013 changed") << "nothing is lost";
}

TEST_F(EditorSurfaceTest, ChangesTheReceiverOfAParcel) {
    auto const stream = ReadRegularFile("examples/shipping-label.zpl");
    auto const start = stream.find("^XA") + 3;
    std::string const format = stream.substr(start, stream.rfind("^XZ") - start);
    Store("E/PARCEL.ZPL", format);
    Touched editor(QStringLiteral("EditorControl"));
    editor.Click("E:PARCEL.ZPL");
    Wait();
    editor.Tap({200, 285});
    editor.Type("text", QStringLiteral("Ann Berg"));
    Wait();
    editor.Keep("editor.png");
    editor.Click("save");
    Wait();
    std::string expected = format;
    std::string const before = "Marta Lindqvist";
    EXPECT_EQ(Stored("E/PARCEL.ZPL"), expected.replace(expected.find(before), before.size(), "Ann Berg"));
    editor.Click("several");
    for (QPointF const dot : {QPointF(100, 340), {100, 380}, {100, 430}}) editor.Tap(dot);
    editor.Keep("editor-several.png");
    EXPECT_EQ(editor.TextOf("count"), "4 fields");
}

TEST_F(EditorSurfaceTest, OpensWhateverIsStored) {
    Store("E/EMPTY.ZPL", "");
    Store("E/NONE.ZPL", "^PW400^XQ1");
    Store("E/BAD.ZPL", "^FO1,1^FDx^FS^PQ99999999999");
    std::string many;
    for (int i = 0; i < 200; ++i)
        many += "^FO" + std::to_string(i % 10 * 80) + "," + std::to_string(i / 10 * 60) + "^A0N,30^FD" +
                std::to_string(i) + "^FS";
    Store("E/MANY.ZPL", many);
    {
        Touched small(QStringLiteral("EditorControl"), {480, 220});
        small.Click("E:BAD.ZPL");
        Wait();
        EXPECT_EQ(small.TextOf("notice"), "This label has no fields that can be changed.");
        auto const* const last = small.Find("several");
        EXPECT_LE(last->x() + last->width(), last->parentItem()->width()) << "over what stands beside it";
        Editor().close();
    }
    Touched editor(QStringLiteral("EditorControl"));
    for (char const* const name : {"E:EMPTY.ZPL", "E:NONE.ZPL", "E:BAD.ZPL"}) {
        editor.Click(name);
        Wait();
        EXPECT_EQ(Editor().fieldCount(), 0) << name;
        EXPECT_EQ(editor.TextOf("notice"), "This label has no fields that can be changed.");
        editor.Tap({100, 100});
        editor.Click("labels");
    }
    fs::remove(Path("E/BAD.ZPL"));
    editor.Click("E:BAD.ZPL");
    Wait();
    EXPECT_EQ(editor.TextOf("words"), "E:BAD.ZPL is not in the printer any more");
    editor.Click("accept");
    editor.Click("labels");
    editor.Click("E:MANY.ZPL");
    Wait();
    EXPECT_EQ(Editor().fieldCount(), 200);
    editor.Tap({730, 1155});
    EXPECT_EQ(editor.TextOf("text"), "199");
    editor.Drag({730, 1155}, {700, 1100});
    Wait();
    editor.Click("labels");
    EXPECT_EQ(editor.TextOf("words"), "The changes of this label are not saved. Leave them?");
    editor.Click("reject");
    EXPECT_EQ(editor.TextOf("name"), "E:MANY.ZPL \u2013 changed");
    editor.Click("labels");
    editor.Click("accept");
    Wait();
    EXPECT_FALSE(Editor().isOpen());
    EXPECT_EQ(Stored("E/MANY.ZPL"), many);
}

TEST_F(EditorSurfaceTest, GoesOnToTheFieldBeneath) {
    Store("E/STACK.ZPL", "^FO40,40^GB400,400,4^FS^FO60,60^GB200,200,4^FS^FO80,80^A0N,60^FDHHHH^FS");
    Touched editor(QStringLiteral("EditorControl"));
    editor.Click("E:STACK.ZPL");
    Wait();
    for (int const field : {2, 1, 0, 2}) {
        editor.Tap({100, 100});
        Surface::Settle();
        EXPECT_EQ(Editor().selection(), QList<int>{field});
    }
    editor.Tap({700, 900});
    EXPECT_EQ(Editor().selection(), QList<int>());
    editor.Tap({100, 100});
    editor.Click("duplicate");
    Wait();
    EXPECT_EQ(Editor().selection(), QList<int>{3});
    EXPECT_EQ(Editor().fieldCount(), 4);
}

TEST_F(EditorSurfaceTest, TwoFingersZoomAndMoveNothing) {
    static auto* const screen = QTest::createTouchDevice();  // stays, as devices of a machine do
    Touched editor(QStringLiteral("EditorControl"));
    editor.Click("E:ORDER.ZPL");
    Wait();
    double const before = editor.Find("page")->property("zoom").toDouble();
    QPoint const middle(230, 150);
    auto& window = editor.Window();
    QTest::touchEvent(&window, screen).press(0, middle - QPoint(0, 20)).press(1, middle + QPoint(0, 20));
    for (int apart = 20; apart <= 80; apart += 5) {
        QTest::touchEvent(&window, screen).move(0, middle - QPoint(0, apart)).move(1, middle + QPoint(0, apart));
        Surface::Settle();
    }
    QTest::touchEvent(&window, screen).release(0, middle - QPoint(0, 80)).release(1, middle + QPoint(0, 80));
    Wait();
    EXPECT_GT(editor.Find("page")->property("zoom").toDouble(), 1.1 * before);
    EXPECT_FALSE(Editor().isChanged());
    editor.Click("fit");
    EXPECT_EQ(editor.Find("page")->property("zoom").toDouble(), before);
    // One finger, dot for dot: the field stands where it was dragged to.
    editor.Click("zoomIn");
    editor.Drag({100, 60}, {140, 90});
    Wait();
    EXPECT_TRUE(Editor().isChanged());
    EXPECT_NEAR(Editor().boxes().at(0).toRectF().left(), 82, 4);
    editor.Tap({100, 500});
    EXPECT_EQ(Editor().selection(), QList<int>()) << "beside the label's fields";
}

TEST_F(EditorSurfaceTest, PrintsByTheDoorOfAllSurfaces) {
    using Zpl::Host::StreamTaken;
    using Zpl::Host::StreamToPrint;
    Touched editor(QStringLiteral("EditorControl"));
    editor.Click("E:ORDER.ZPL");
    Wait();
    auto const printed = [&] {
        editor.Click("print");
        Wait();
        auto const stream = StreamToPrint::Parse(TheHost().properties->Find(PropertyNames::StreamToPrint)->ValueText());
        if (!stream) return std::string("nothing");
        TheHost().Set<StringProperty>(PropertyNames::StreamTaken,
                                      StreamTaken{stream->sender, stream->number, {}}.Text());
        EXPECT_TRUE(QTest::qWaitFor([&] {
            return editor.TextOf("words") ==
                   "The label is on its way to the printer. "
                   "What is filled in when it prints stays empty.";
        }));
        editor.Click("accept");
        return stream->bytes;
    };
    EXPECT_EQ(printed(), "^XA^PW812^LL1218^XFE:ORDER.ZPL^FS^PQ1^XZ");
    editor.Tap({100, 60});
    editor.Click("nudgeRight");
    Wait();
    EXPECT_EQ(printed().substr(0, 26), "^XA^PW812^LL1218^FO41,40^A");
}

}  // namespace
