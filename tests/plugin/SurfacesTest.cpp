#include <gtest/gtest.h>

#include <fstream>

#include "PrintEngine/Printing/JobMetaData.h"
#include "propertybus/PropertyIdentifiers.h"
#include "tests/plugin/Surface.h"
#include "tests/support/TemporaryDirectory.h"

// The surfaces as the platform's user interface loads them: by the engine that the plugin was handed.
namespace {

class SurfaceTest : public testing::TestWithParam<char const*> {};

TEST_P(SurfaceTest, LoadsWithoutAWarning) {
    TheHost();
    messages.clear();
    Surface surface(QString::fromLatin1(GetParam()));
    QImage const picture = surface.Grab();
    EXPECT_EQ(messages.join(u'\n').toStdString(), "");
    int drawn = 0;
    for (int y = 0; y < picture.height(); ++y) {
        for (int x = 0; x < picture.width(); ++x) drawn += qGray(picture.pixel(x, y)) < 200;
    }
    // There is no page yet for one of them.
    EXPECT_EQ(drawn > 20, GetParam() != std::string("PrintPreviewLabelSurface"));
}
INSTANTIATE_TEST_SUITE_P(All, SurfaceTest,
                         testing::Values("EditorControl", "EditorSurface", "EditorLabelSurface", "MultiEditControl",
                                         "PrintPreviewControl", "PrintPreviewSurface", "PrintPreviewLabelSurface",
                                         "TemplateLabelSurface", "MultiTemplateLabelSurface",
                                         "TemplateFieldsOrganizer"),
                         [](auto const& row) { return std::string(row.param); });

TEST(Surfaces, ShowTheFieldsOfTheLabelPartReadOnly) {
    TheHost();
    Surface surface(QStringLiteral("EditorControl"));
    EXPECT_EQ(surface.TextOf("Width"), "4 in");
    EXPECT_EQ(surface.TextOf("Height"), "6 in");
    EXPECT_EQ(surface.TextOf("Dots"), "812 x 1218");
    EXPECT_TRUE(surface.Item("Width").property("readOnly").toBool());
}

/// A job folder with pages of 40 x 30 dots, each with as many black rows as its number, from row 10 on.
class PreviewTest : public testing::Test {
protected:
    PreviewTest() {
        TheHost();
        TheHost().Set<StringProperty>(PropertyNames::JobToPrintPathName, "NO PAGE");
        TheHost().Set<UInt32Property>(PropertyNames::CurrentPrintingPageNumber, 0U);
        PrintEngine::Printing::JobMetaData{.jobName = "job", .totalPages = 9}.Write(folder_.Path());
        for (int page = 0; page < 4; ++page) WritePage(page);
        messages.clear();
    }
    ~PreviewTest() override { EXPECT_EQ(messages.join(u'\n').toStdString(), ""); }

    void WritePage(int page) const { WritePage(folder_ / std::to_string(page), page); }
    static void WritePage(std::filesystem::path const& file, int page) {
        QImage picture(40, 30, QImage::Format_Grayscale8);
        picture.fill(Qt::white);
        for (int row = 0; row < page; ++row) std::memset(picture.scanLine(10 + row), 0, 40);
        EXPECT_TRUE(picture.save(QString::fromStdString(file.string()), "png"));
    }
    void Print(unsigned page) {
        TheHost().Set<StringProperty>(PropertyNames::PrintJobStatus, "Printing");
        TheHost().Set<StringProperty>(PropertyNames::JobToPrintPathName, folder_.Path().string());
        TheHost().Set<UInt32Property>(PropertyNames::CurrentPrintingPageNumber, page);
    }
    static QVariantMap Printed(std::filesystem::path const& job, std::filesystem::path const& stem) {
        return {{QStringLiteral("job"), QString::fromStdString(job.string())},
                {QStringLiteral("stem"), QString::fromStdString(stem.string())}};
    }
    /// Black pixels in the column through the middle of the page.
    static int BlackRows(Surface& surface) {
        QImage const picture = surface.Grab();
        int rows = 0;
        for (int y = 0; y < picture.height(); ++y) rows += qGray(picture.pixel(picture.width() / 2, y)) == 0;
        return rows;
    }

    TemporaryDirectory folder_;
};

TEST_F(PreviewTest, FollowsTheJobThatPrints) {
    Surface surface(QStringLiteral("PrintPreviewControl"));
    surface.Set("zoom", 1);
    Print(1);
    EXPECT_EQ(BlackRows(surface), 1);
    EXPECT_EQ(surface.TextOf("number"), "Page 2 of 9");
    Print(3);
    EXPECT_EQ(BlackRows(surface), 3);
    Print(4);
    EXPECT_EQ(BlackRows(surface), 3) << "the page before stays until this one is there";
    EXPECT_EQ(surface.TextOf("number"), "Page 4 of 9") << "and its number with it";
    EXPECT_FALSE(surface.Value("isShown").toBool());
    WritePage(4);
    EXPECT_EQ(BlackRows(surface), 4);
    EXPECT_TRUE(surface.Value("isShown").toBool());
    TemporaryDirectory const next;
    PrintEngine::Printing::JobMetaData{.jobName = "next", .totalPages = 2}.Write(next.Path());
    TheHost().Set<StringProperty>(PropertyNames::JobToPrintPathName, next.Path().string());
    EXPECT_EQ(BlackRows(surface), 4) << "until the next job has a page";
    EXPECT_EQ(surface.TextOf("number"), "Page 5 of 9");
    TheHost().Set<StringProperty>(PropertyNames::JobToPrintPathName, folder_.Path().string());
    std::filesystem::remove_all(folder_.Path());
    TheHost().Set<StringProperty>(PropertyNames::PrintJobStatus, "");
    TheHost().Set<StringProperty>(PropertyNames::JobToPrintPathName, "NO PAGE");
    EXPECT_EQ(BlackRows(surface), 4) << "the last page stays";
    std::filesystem::create_directory(folder_.Path());
}

TEST_F(PreviewTest, TurnsPages) {
    Print(1);
    Surface surface(QStringLiteral("PrintPreviewSurface"));
    surface.Set("zoom", 1);
    surface.Call("turnTo", 3);
    Print(2);
    EXPECT_EQ(BlackRows(surface), 3) << "whoever turns pages is not taken along";
    EXPECT_FALSE(surface.Value("follows").toBool());
    surface.Call("turnTo", 100);
    EXPECT_EQ(surface.Value("page").toInt(), 8);
    surface.Call("turnTo", -1);
    EXPECT_EQ(surface.Value("page").toInt(), 0);
    surface.Call("followAgain");
    EXPECT_EQ(BlackRows(surface), 2);
}

TEST_F(PreviewTest, ShowsPrintedPagesFromWhereTheyAreKept) {
    TemporaryDirectory const kept;
    TemporaryDirectory const next;
    PrintEngine::Printing::JobMetaData{.jobName = "next", .totalPages = 2}.Write(next.Path());
    WritePage(next / "0", 7);
    Print(3);
    Surface surface(QStringLiteral("PrintPreviewControl"));
    surface.Set("zoom", 1);
    for (int page = 0; page < 3; ++page) {
        WritePage(kept / ("job-1-" + std::to_string(page + 1) + ".png"), page);
        std::filesystem::remove(folder_ / std::to_string(page));
    }
    surface.Call("turnTo", 2);
    EXPECT_EQ(BlackRows(surface), 0) << "no other page stands in for it";
    surface.Set("printedPages", Printed(folder_.Path(), kept / "job-1-"));
    EXPECT_EQ(BlackRows(surface), 2);

    // The job ends, and the next one prints.
    std::filesystem::rename(folder_ / "3", kept / "job-1-4.png");
    TheHost().Set<StringProperty>(PropertyNames::JobToPrintPathName, "NO PAGE");
    surface.Set("printedPages", Printed(next.Path(), kept / "next-1-"));
    TheHost().Set<UInt32Property>(PropertyNames::CurrentPrintingPageNumber, 0U);
    TheHost().Set<StringProperty>(PropertyNames::JobToPrintPathName, next.Path().string());
    EXPECT_EQ(BlackRows(surface), 2) << "whoever has turned pages stays with their job";
    surface.Call("turnTo", 3);
    EXPECT_EQ(BlackRows(surface), 3);
    EXPECT_EQ(surface.TextOf("number"), "Page 4 of 9");
    EXPECT_EQ(surface.TextOf("status"), "Printing: page 1 of another job");
    surface.Call("turnTo", 4);
    EXPECT_EQ(BlackRows(surface), 0);
    EXPECT_EQ(surface.TextOf("number"), "Page 5 of 9");
    surface.Call("followAgain");
    EXPECT_EQ(BlackRows(surface), 7);
    EXPECT_EQ(surface.TextOf("number"), "Page 1 of 2");
}

TEST_F(PreviewTest, CountsThePagesOfAJobThatIsOver) {
    TemporaryDirectory const kept;
    for (int page = 0; page < 3; ++page) WritePage(kept / ("quick-1-" + std::to_string(page + 1) + ".png"), page);
    Surface surface(QStringLiteral("PrintPreviewControl"));
    TheHost().Set<StringProperty>(PropertyNames::JobToPrintPathName, (kept / "gone").string());
    surface.Set("printedPages", Printed(kept / "gone", kept / "quick-1-"));
    EXPECT_EQ(surface.TextOf("number"), "Page 1 of 3");
}

TEST_F(PreviewTest, TurnsBackToTheJobsThatWerePrintedBefore) {
    TemporaryDirectory const kept;
    auto hour = std::filesystem::file_time_type::clock::now();
    // The last of them prints, and has printed two of its nine pages.
    for (char const* file : {"b-1-1", "b-1-2", "b-1-3", "a-9-1", "a-10-1", "a-10-2", "job-1-1", "job-1-2"}) {
        WritePage(kept / (std::string(file) + ".png"), file[0] == 'b' ? file[4] - '0' : 6);
        if (file[0] != 'a') hour += std::chrono::hours(1);
        std::filesystem::last_write_time(kept / (std::string(file) + ".png"), hour);
    }
    std::ofstream(kept / "other.png") << "none of a printer";
    std::filesystem::remove(kept / "b-1-2.png");
    // A job has its place by its first page, and no page has the number 0.
    std::filesystem::last_write_time(kept / "b-1-3.png", hour + std::chrono::hours(9));
    WritePage(kept / "c-1-0.png", 1);
    Print(2);
    Surface surface(QStringLiteral("PrintPreviewControl"));
    surface.Set("zoom", 1);
    surface.Set("printedPages", Printed(folder_.Path(), kept / "job-1-"));
    surface.Call("turnTo", 0);
    struct Row {
        int step;
        char const* job;
        char const* number;
        int rows;
    };
    Row const rows[] = {
        {-1, "a-10", "Page 2 of 2", 6}, {-1, "a-10", "Page 1 of 2", 6}, {-1, "a-9", "Page 1 of 1", 6},
        {-1, "b-1", "Page 3 of 3", 3},  {-1, "b-1", "Page 2 of 3", 0},  {-1, "b-1", "Page 1 of 3", 1},
        {-1, "b-1", "Page 1 of 3", 1},  {1, "b-1", "Page 2 of 3", 0},   {1, "b-1", "Page 3 of 3", 3},
        {1, "a-9", "Page 1 of 1", 6},   {1, "a-10", "Page 1 of 2", 6},  {1, "a-10", "Page 2 of 2", 6},
        {1, "job", "Page 1 of 9", 0},   {1, "job", "Page 2 of 9", 1},   {1, "job", "Page 3 of 9", 2},
    };
    for (auto const& row : rows) {
        surface.Call("turnBy", row.step);
        EXPECT_EQ(surface.TextOf("job"), row.job);
        EXPECT_EQ(surface.TextOf("number"), row.number) << row.job;
        EXPECT_EQ(BlackRows(surface), row.rows) << row.job << ' ' << row.number;
    }
}

TEST_F(PreviewTest, TurnsFromJobToJob) {
    TemporaryDirectory const shorter;
    TemporaryDirectory const nothing;
    PrintEngine::Printing::JobMetaData{.jobName = "shorter", .totalPages = 2}.Write(shorter.Path());
    auto const folder = [](auto const& path) { return QString::fromStdString(path.string()); };
    Surface surface(QStringLiteral("PrintPreviewSurface"));
    surface.Set("folder", QString());
    surface.Call("turnTo", 3);
    EXPECT_TRUE(surface.Value("follows").toBool()) << "there was nothing to turn to";
    surface.Set("folder", folder(folder_.Path()));
    surface.Call("turnTo", 8);
    EXPECT_EQ(surface.Value("page").toInt(), 8);
    surface.Set("folder", folder(shorter.Path()));
    EXPECT_EQ(surface.Value("page").toInt(), 1);
    EXPECT_EQ(surface.Value("jobName").toString().toStdString(), "shorter");
    surface.Set("folder", folder(nothing.Path()));
    EXPECT_EQ(surface.Value("pageCount").toInt(), 0);
    EXPECT_EQ(surface.Value("jobName").toString().toStdString(), "");
}

TEST_F(PreviewTest, ZoomsDotForDot) {
    Print(3);
    Surface surface(QStringLiteral("PrintPreviewSurface"));
    EXPECT_EQ(surface.Value("shownZoom").toInt(), 8) << "fits 30 dots into 300 less the margins, in whole pixels";
    EXPECT_EQ(BlackRows(surface), 24);
    surface.Set("zoom", 3);
    QImage const picture = surface.Grab();
    for (int y = 110; y < 190; ++y) {
        for (int x = 145; x < 255; ++x) {
            int const gray = qGray(picture.pixel(x, y));
            ASSERT_TRUE(gray == 0 || gray == 255) << x << ' ' << y;
        }
    }
    EXPECT_EQ(BlackRows(surface), 9);
    surface.Call("zoomOut");
    EXPECT_EQ(surface.Value("shownZoom").toInt(), 2);
    surface.Set("zoom", 0.001);
    EXPECT_DOUBLE_EQ(surface.Value("shownZoom").toDouble(), 0.02);
    surface.Set("zoom", 3);
    for (int i = 0; i < 20; ++i) surface.Call("zoomOut");
    EXPECT_DOUBLE_EQ(surface.Value("shownZoom").toDouble(), 0.1);
    for (int i = 0; i < 20; ++i) surface.Call("zoomIn");
    EXPECT_EQ(surface.Value("shownZoom").toInt(), 8);
    surface.Set("zoom", 0.5);
    QImage const half = surface.Grab();
    EXPECT_EQ(BlackRows(surface), 1) << "two rows of three make one, and the third half of one";
    EXPECT_NEAR(qGray(half.pixel(200, 149)), 128, 2);
    surface.Set("zoom", 0.1);
    QImage const tenth = surface.Grab();
    EXPECT_EQ(tenth.pixel(205, 149), tenth.pixel(50, 50)) << "a page of 4 x 3 pixels ends before";
}

TEST_F(PreviewTest, ALargePageFitsItsWindow) {
    QImage page(2000, 1000, QImage::Format_Grayscale8);
    page.fill(Qt::black);
    EXPECT_TRUE(page.save(QString::fromStdString((folder_ / "3").string()), "png"));
    Print(3);
    Surface surface(QStringLiteral("PrintPreviewSurface"));
    EXPECT_NEAR(surface.Value("shownZoom").toDouble(), (400 - 32) / 2000.0, 0.001);
    EXPECT_EQ(BlackRows(surface), 184);
    surface.Set("zoom", 1);
    for (auto const& [scrolled, rows] : {std::pair(0, 300 - 16), {100, 300}, {1032 - 300, 300 - 16}}) {
        surface.Item("scroll").setProperty("contentY", scrolled);
        EXPECT_EQ(BlackRows(surface), rows) << scrolled;
    }
}

TEST_F(PreviewTest, LeavesOutWhatIsNoPage) {
    std::ofstream(folder_ / "5") << "no picture";
    std::ofstream(folder_ / "6") << std::string("\x89PNG\r\n\x1a\n", 8);
    Print(2);
    Surface surface(QStringLiteral("PrintPreviewControl"));
    Surface::Settle();
    for (unsigned const page : {5U, 6U}) {
        Print(page);
        Surface::Settle();
        EXPECT_FALSE(surface.Value("isShown").toBool()) << page;
    }
    EXPECT_EQ(surface.TextOf("status"), "Printing: page 7 of \u201Cjob\u201D");
    messages.clear();
}

}  // namespace
