#include <gtest/gtest.h>

#include <QtGui/QPointingDevice>

#include "PrintEngine/Printing/JobMetaData.h"
#include "plugin/surfaces/JobList.h"
#include "plugin/surfaces/PageReduction.h"
#include "propertybus/PropertyIdentifiers.h"
#include "tests/plugin/Surface.h"
#include "tests/support/TemporaryDirectory.h"

namespace {

/// 40 x 30 dots, of which one is black.
QImage PageWithDot(int x, int y) {
    QImage page(40, 30, QImage::Format_Grayscale8);
    page.fill(Qt::white);
    page.setPixelColor(x, y, Qt::black);
    return page;
}

TEST(PageInMemory, LiesWhereItsDotsAreSaidToBe) {
    TheHost();
    messages.clear();
    for (bool const turned : {false, true}) {
        for (double const zoom : {1.0, 4.0, 20.0}) {
            Surface view(QStringLiteral("PageView"));
            view.Set("turned", turned);
            view.Set("picture", PageWithDot(7, 11));
            view.Set("zoom", zoom);
            view.Set("origin", QPointF(zoom > 4 ? 60 : 0, zoom > 4 ? 140 : 0));
            QImage const screen = view.Grab();
            QRectF place;
            view.Invoke("itemRect", place, QRectF(7, 11, 1, 1));
            EXPECT_EQ(place.size(), QSizeF(zoom, zoom));
            QRect const dot = place.toRect();
            for (int y = 0; y < screen.height(); ++y) {
                for (int x = 0; x < screen.width(); ++x)
                    ASSERT_EQ(qGray(screen.pixel(x, y)) == 0, dot.contains(x, y)) << zoom << ' ' << x << ' ' << y;
            }
            QPointF back;
            view.Invoke("dotAt", back, place.center());
            EXPECT_EQ(back, QPointF(7.5, 11.5)) << zoom << turned;
        }
    }
    EXPECT_EQ(messages.join(u'\n').toStdString(), "");
}

/// A folder with jobs that wait, and one with pages that have printed. Page n of any job has its black dots in row n.
class PreviewSurfaceTest : public testing::Test {
protected:
    PreviewSurfaceTest() {
        TheHost();
        messages.clear();
    }
    ~PreviewSurfaceTest() override { EXPECT_EQ(messages.join(u'\n').toStdString(), ""); }

    static void WritePage(std::filesystem::path const& file, int page) {
        QImage picture(40, 30, QImage::Format_Grayscale8);
        picture.fill(Qt::white);
        std::memset(picture.scanLine(page), 0, 40);
        EXPECT_TRUE(picture.save(QString::fromStdString(file.string()), "png"));
    }
    std::filesystem::path AddJob(std::string const& name, unsigned pages, std::uint64_t serial, int rendered) const {
        auto const folder = jobs_ / (name + "-x");
        std::filesystem::create_directory(folder);
        PrintEngine::Printing::JobMetaData{.jobName = name, .totalPages = pages, .serial = serial}.Write(folder);
        for (int page = 0; page < rendered; ++page) WritePage(folder / std::to_string(page), page);
        return folder;
    }
    /// The row of the page with black dots, as the item in the middle of which they lie shows it; -1 for none.
    static int Row(Surface& surface, QQuickItem& item) {
        QImage const screen = surface.Grab();
        if (!item.property("isShown").toBool()) return -1;
        QRectF page;
        EXPECT_TRUE(QMetaObject::invokeMethod(&item, "itemRect", Q_RETURN_ARG(QRectF, page),
                                              Q_ARG(QRectF, QRectF(0, 0, 40, 30))));
        QPointF const corner = item.mapToScene(page.topLeft());
        for (int row = 0; row < 30; ++row) {
            QPointF const at = corner + QPointF(page.width() / 2, (row + 0.5) * page.height() / 30);
            if (qGray(screen.pixel(at.toPoint())) < 100) return row;
        }
        return -1;
    }
    static void AwaitSmall(Surface& surface, char const* name) {
        for (int i = 0; i < 500 && !surface.Item(name).property("isShown").toBool(); ++i) QTest::qWait(5);
    }

    TemporaryDirectory jobs_;
    TemporaryDirectory kept_;
};

TEST(ReducedPage, AveragesWhatEachPixelCovers) {
    for (QSize const& size : {QSize(1, 1), {2, 3}, {10, 7}, {16, 12}, {19, 12}}) {
        QImage page(19, 12, QImage::Format_Mono);
        page.setColorTable({qRgb(255, 255, 255), qRgb(0, 0, 0)});
        for (int dot = 0; dot < 19 * 12; ++dot) page.setPixel(dot % 19, dot / 19, dot * dot % 7 < 3 ? 1 : 0);
        QImage const reduced = ReducedPage(page, size);
        ASSERT_EQ(reduced.size(), size);
        EXPECT_EQ(ReducedPage(page.convertToFormat(QImage::Format_RGB32), size), reduced);
        double const width = 19.0 / size.width();
        double const height = 12.0 / size.height();
        auto const overlap = [](double begin, double extent, int dot) {
            return std::max(0.0, std::min(begin + extent, dot + 1.0) - std::max(begin, double(dot)));
        };
        for (int pixel = 0; pixel < size.width() * size.height(); ++pixel) {
            int const x = pixel % size.width();
            int const y = pixel / size.width();
            double white = 0;
            for (int dot = 0; dot < 19 * 12; ++dot)
                white += overlap(x * width, width, dot % 19) * overlap(y * height, height, dot / 19) *
                         qGray(page.pixel(dot % 19, dot / 19));
            EXPECT_NEAR(qGray(reduced.pixel(x, y)), white / width / height, 1) << x << ' ' << y;
        }
    }
}

TEST_F(PreviewSurfaceTest, KeepsReducedPagesOnlyWhileTheyAreTheSame) {
    auto const folder = AddJob("job", 2, 10, 2);
    Surface surface(QStringLiteral("PrintPreviewControl"), {800, 400});
    surface.Set("folder", QString::fromStdString(folder.string()));
    surface.Set("page", 0);
    surface.Set("zoom", 0.9);
    auto const show = [&](int page, bool turned) {
        surface.Set("page", page);
        surface.Set("turned", turned);
        auto const& view = surface.Item("view");
        return surface.Grab().copy(QRectF(view.mapToScene({}), view.size()).toRect());
    };
    QImage const first = show(0, false);
    QImage const second = show(1, false);
    QImage const turned = show(0, true);
    EXPECT_TRUE(first != second && first != turned && second != turned);
    EXPECT_EQ(show(1, false), second);
    EXPECT_EQ(show(0, true), turned);
    EXPECT_EQ(show(0, false), first);
    surface.Set("zoom", 0.8);
    EXPECT_NE(show(0, false), first);
    surface.Set("zoom", 0.9);
    EXPECT_EQ(show(0, false), first);
    // Another page under the same name, as when a job is drawn anew.
    std::filesystem::remove(folder / "0");
    WritePage(folder / "0", 15);
    show(1, false);
    EXPECT_NE(show(0, false), first);
}

TEST_F(PreviewSurfaceTest, ListsJobsThatWaitInTheirOrderAndThoseThatHavePrinted) {
    AddJob("second", 3, 20, 0);
    AddJob("first", 2, 10, 0);
    std::filesystem::create_directory(jobs_ / "comes");
    for (char const* file : {"b-1-1", "b-1-2", "a-9-1"}) WritePage(kept_ / (std::string(file) + ".png"), 1);
    std::filesystem::last_write_time(kept_ / "b-1-1.png",
                                     std::filesystem::file_time_type::clock::now() - std::chrono::hours(1));
    JobList list(jobs_.Path());
    auto const names = [](QVariantList const& jobs) {
        std::string text;
        for (auto const& job : jobs)
            text += job.toMap()[QStringLiteral("name")].toString().toStdString() + ' ' +
                    job.toMap()[QStringLiteral("pages")].toString().toStdString() + ';';
        return text;
    };
    list.lookAtWaiting();
    list.lookAtPrinted(QString::fromStdString((kept_ / "b-1-").string()));
    EXPECT_TRUE(QTest::qWaitFor([&] { return !list.waiting().isEmpty() && !list.printed().isEmpty(); }));
    EXPECT_EQ(names(list.waiting()), "first 2;second 3;");
    EXPECT_EQ(names(list.printed()), "a-9 1;b-1 2;");
    AddJob("third", 1, 30, 0);
    EXPECT_TRUE(QTest::qWaitFor([&] { return list.waiting().size() == 3; })) << "it is told of the next one";
}

TEST_F(PreviewSurfaceTest, GoesFromWhatHasPrintedToWhatWaitsByTouch) {
    auto const first = AddJob("first", 2, 10, 2);
    auto const second = AddJob("second", 3, 20, 1);
    for (int page = 0; page < 2; ++page) WritePage(kept_ / ("old-1-" + std::to_string(page + 1) + ".png"), 20 + page);
    JobList list(jobs_.Path());
    list.lookAtWaiting();
    EXPECT_TRUE(QTest::qWaitFor([&] { return list.waiting().size() == 2; }));

    Surface surface(QStringLiteral("PrintPreviewControl"), {800, 400});
    surface.Set("printedPages",
                QVariantMap{{QStringLiteral("job"), QStringLiteral("/gone")},
                            {QStringLiteral("stem"), QString::fromStdString((kept_ / "old-1-").string())}});
    surface.Set("folder", QString());
    surface.Set("waiting", list.waiting());
    struct Step {
        char const* button;
        char const* number;
        char const* job;
        int row;
    };
    for (auto const& step : std::initializer_list<Step>{{"fit", "Page 1 of 2", "first", 0},
                                                        {"next", "Page 2 of 2", "first", 1},
                                                        {"next", "Page 1 of 3", "second", 0},
                                                        {"next", "Page 2 of 3", "second", -1},
                                                        {"back", "Page 1 of 3", "second", 0},
                                                        {"back", "Page 2 of 2", "first", 1},
                                                        {"back", "Page 1 of 2", "first", 0},
                                                        {"back", "Page 2 of 2", "old-1", 21},
                                                        {"next", "Page 1 of 2", "first", 0}}) {
        surface.Click(step.button);
        EXPECT_EQ(surface.TextOf("number"), step.number);
        EXPECT_EQ(surface.TextOf("job"), step.job);
        EXPECT_EQ(Row(surface, surface.Item("view")), step.row) << step.number << step.job;
    }
    surface.Click("turn");
    EXPECT_EQ(Row(surface, surface.Item("view")), 29) << "upside down";
}

TEST_F(PreviewSurfaceTest, ShowsWhatOtherRunsHavePrintedUntilAJobWaits) {
    for (int page = 0; page < 2; ++page) WritePage(kept_ / ("new-2-" + std::to_string(page + 1) + ".png"), 10 + page);
    WritePage(kept_ / "old-1-1.png", 5);
    std::filesystem::last_write_time(kept_ / "old-1-1.png",
                                     std::filesystem::file_time_type::clock::now() - std::chrono::hours(1));
    Surface surface(QStringLiteral("PrintPreviewControl"), {800, 400});
    EXPECT_EQ(surface.TextOf("number"), "No pages");
    // As the driver says it before its first job.
    TheHost().Set<StringProperty>(PropertyNames::PrintedPages,
                                  R"({"job":"","pages":")" + (kept_ / "").string() + R"("})");
    EXPECT_TRUE(Surface::Until([&] { return surface.TextOf("number") == "Page 2 of 2"; }));
    EXPECT_EQ(surface.TextOf("job"), "new-2");
    EXPECT_EQ(Row(surface, surface.Item("view")), 11);
    surface.Click("back");
    surface.Click("back");
    EXPECT_EQ(surface.TextOf("job"), "old-1");
    EXPECT_EQ(Row(surface, surface.Item("view")), 5);

    AddJob("next", 3, 10, 1);
    JobList list(jobs_.Path());
    list.lookAtWaiting();
    EXPECT_TRUE(QTest::qWaitFor([&] { return !list.waiting().isEmpty(); }));
    surface.Set("waiting", list.waiting());
    EXPECT_EQ(surface.TextOf("job"), "old-1") << "whoever has turned pages stays with their job";
    surface.Call("followAgain");
    EXPECT_EQ(surface.TextOf("number"), "Page 1 of 3");
    EXPECT_EQ(Row(surface, surface.Item("view")), 0);
}

TEST_F(PreviewSurfaceTest, ShowsPagesSmallBesideTheOneAndOnlyThoseInSight) {
    auto const folder = AddJob("long", 100'000, 10, 9);
    Surface surface(QStringLiteral("PrintPreviewControl"), {800, 480});
    surface.Set("folder", QString::fromStdString(folder.string()));
    surface.Set("page", 0);
    for (int page = 0; page < 3; ++page) {
        std::string const name = "small" + std::to_string(page + 1);
        AwaitSmall(surface, name.c_str());
        EXPECT_NEAR(Row(surface, surface.Item(name.c_str())), page, 1) << name;
    }
    surface.Click("page3");
    EXPECT_EQ(surface.TextOf("number"), "Page 3 of 100000");
    EXPECT_EQ(Row(surface, surface.Item("view")), 2);
    surface.Call("turnTo", 99'999);
    EXPECT_FALSE(surface.Item("small100000").property("isShown").toBool()) << "not drawn yet";
    WritePage(folder / "99999", 7);
    AwaitSmall(surface, "small100000");
    EXPECT_NEAR(Row(surface, surface.Item("small100000")), 7, 1) << "it has come";
    QVariant const content = surface.Item("strip").property("contentItem");
    EXPECT_LT(content.value<QQuickItem*>()->childItems().size(), 30);
}

TEST_F(PreviewSurfaceTest, OutlinesBarcodesThatMayNotScanWhereTheyStand) {
    auto const folder = AddJob("bad", 1, 10, 1);
    QImage page(QString::fromStdString((folder / "0").string()));
    page.setText(QStringLiteral("Barcodes"), QStringLiteral("fault 5 6 20 10;none;doubt 30 20 5 5;fault 1 1 0 9;"));
    EXPECT_TRUE(page.save(QString::fromStdString((folder / "0").string()), "png"));
    Surface surface(QStringLiteral("PrintPreviewControl"), {800, 480});
    surface.Set("folder", QString::fromStdString(folder.string()));
    surface.Set("page", 0);
    EXPECT_EQ(surface.TextOf("badBarcodes"), "2 outlined barcodes may not scan");
    for (bool const turned : {false, true}) {
        surface.Set("turned", turned);
        Surface::Settle();
        QImage const screen = surface.Window().grabWindow();
        auto& view = surface.Item("view");
        for (auto const& [box, red] : {std::pair(QRectF(5, 6, 20, 10), 0xd3), {QRectF(30, 20, 5, 5), 0xe6}}) {
            QRectF place;
            QMetaObject::invokeMethod(&view, "itemRect", Q_RETURN_ARG(QRectF, place), Q_ARG(QRectF, box));
            QPointF const edge = view.mapToScene({place.left() - 4, place.center().y()});
            EXPECT_EQ(qRed(screen.pixel(edge.toPoint())), red) << turned;
            EXPECT_LT(qBlue(screen.pixel(edge.toPoint())), 0x40) << turned;
        }
    }
}

TEST_F(PreviewSurfaceTest, TwoFingersZoomWhereTheyLie) {
    Surface surface(QStringLiteral("PrintPreviewLabelSurface"), {150, 120});
    surface.Item("view").setProperty("picture", PageWithDot(7, 11));
    static auto* const screen = QTest::createTouchDevice();  // stays, as devices of a machine do
    surface.Set("zoom", 4);
    QRectF before;
    auto& view = surface.Item("view");
    auto const place = [&](QRectF& result) {
        Surface::Settle();
        QMetaObject::invokeMethod(&view, "itemRect", Q_RETURN_ARG(QRectF, result), Q_ARG(QRectF, QRectF(7, 11, 1, 1)));
    };
    place(before);
    QPoint const middle = before.center().toPoint();
    auto fingers = [&](int apart) { return std::pair(middle - QPoint(apart, 0), middle + QPoint(apart, 0)); };
    QTest::touchEvent(&surface.Window(), screen).press(0, fingers(20).first).press(1, fingers(20).second);
    for (int apart = 20; apart <= 80; apart += 5) {
        QTest::touchEvent(&surface.Window(), screen).move(0, fingers(apart).first).move(1, fingers(apart).second);
        Surface::Settle();
    }
    QTest::touchEvent(&surface.Window(), screen).release(0, fingers(80).first).release(1, fingers(80).second);
    double const zoom = surface.Value("shownZoom").toDouble();
    EXPECT_GT(zoom, 4);
    EXPECT_EQ(zoom, std::round(zoom)) << "dots are whole when the fingers are lifted";
    QRectF now;
    place(now);
    EXPECT_LT((now.center() - QPointF(middle)).manhattanLength(), 3 * zoom);
    surface.Call("zoomAt", 2.0, QPointF(10, 10));
    EXPECT_EQ(surface.Value("shownZoom").toDouble(), 2);
}

}  // namespace
