#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <png.h>

#include <array>

#include "desktop/compare/CompareCommand.h"
#include "desktop/compare/PictureFile.h"
#include "foundation/Files.h"
#include "library/OutputError.h"
#include "tests/support/TemporaryDirectory.h"

namespace {

using testing::HasSubstr;

// A frame of 20 x 10 dots at 8, 16, and one that lacks its right side and has a dot too many.
constexpr std::string_view Frame = "^XA^PW80^LL60^FO8,16^GB20,10,1^FS^XZ";
constexpr std::string_view Damaged =
    "^XA^PW80^LL60^FO8,16^GB20,1,1^FS^FO8,25^GB20,1,1^FS^FO8,16^GB1,10,1^FS^FO40,2^GB1,1,1^FS^XZ";

struct Outcome {
    CompareResult result;
    std::string out;
};

class CompareTest : public testing::Test {
protected:
    std::string File(std::string const& name, std::string_view content) {
        std::filesystem::create_directories((folder_ / name).parent_path());
        EXPECT_FALSE(WriteFileAtomically(folder_ / name, content));
        return (folder_ / name).string();
    }

    Outcome Run(std::string const& expected, std::string const& actual, CompareOptions const& options = {}) {
        RenderOptions render;
        render.inputs = {expected, actual};
        testing::internal::CaptureStdout();
        try {
            CompareResult const result = RunCompare(render, options);
            return {result, testing::internal::GetCapturedStdout()};
        } catch (std::exception const& error) {
            return {CompareResult::Trouble, testing::internal::GetCapturedStdout() + error.what()};
        }
    }

    TemporaryDirectory folder_;
};

/// The plain bitmap of a page of 8 x 1 dots.
std::string Bitmap(std::string const& dots) { return "P1 # plain\n8 1\n" + dots; }

/// A PNG of one row in another form of colour, `format` of the library.
template <std::size_t N>
std::string Png(std::uint32_t format, unsigned width, std::array<png_byte, N> const& row) {
    png_image image{};
    image.version = PNG_IMAGE_VERSION;
    image.width = width;
    image.height = 1;
    image.format = format;
    std::string file(PNG_IMAGE_PNG_SIZE_MAX(image), '\0');
    png_alloc_size_t size = file.size();
    EXPECT_TRUE(png_image_write_to_memory(&image, file.data(), &size, 0, row.data(), 0, nullptr));
    file.resize(size);
    return file;
}

std::string DotsOf(std::string_view picture) {
    PackedPage const page = PictureFile::Read(picture);
    std::string dots;
    for (unsigned x = 0; x < page.width; ++x) dots += page.IsBlack(x, 0) ? '1' : '0';
    return dots;
}

TEST_F(CompareTest, TellsHowManyDotsDifferAndWhere) {
    auto const frame = File("frame.zpl", Frame);
    auto const damaged = File("damaged.zpl", Damaged);
    EXPECT_EQ(Run(frame, frame).out, "1 page alike\n");

    auto const told = Run(frame, damaged);
    EXPECT_EQ(told.result, CompareResult::Different);
    EXPECT_EQ(told.out, "page 1: 9 dots differ (8 missing, 1 too many), all within 14 x 23 dots at 27, 2\n");

    EXPECT_EQ(Run(frame, damaged, {.tolerance = 8, .differenceFolder = {}}).result, CompareResult::Different);
    auto const tolerated = Run(frame, damaged, {.tolerance = 9, .differenceFolder = {}});
    EXPECT_EQ(tolerated.result, CompareResult::Alike);
    EXPECT_THAT(tolerated.out, HasSubstr("which is tolerated"));
}

TEST_F(CompareTest, DrawsWhatIsMissingInRedAndWhatIsTooMuchInBlue) {
    auto const difference = folder_ / "differences";
    Run(File("a.pbm", Bitmap("11000000")), File("b.pbm", Bitmap("01100000")), {0, difference.string()});
    std::string const file = ReadRegularFile(difference / "difference-1.png");
    png_image image{};
    image.version = PNG_IMAGE_VERSION;
    ASSERT_TRUE(png_image_begin_read_from_memory(&image, file.data(), file.size()));
    image.format = PNG_FORMAT_RGB;
    std::array<std::array<png_byte, 3>, 8> pixels{};
    ASSERT_TRUE(png_image_finish_read(&image, nullptr, pixels.data(), 0, nullptr));
    EXPECT_GT(pixels[0][0], pixels[0][2]);
    EXPECT_EQ(pixels[1][0], pixels[1][2]);
    EXPECT_GT(pixels[2][2], pixels[2][0]);
    EXPECT_EQ(pixels[3][1], 255);
}

TEST_F(CompareTest, CountsPagesAndSizes) {
    auto const one = File("one.zpl", Frame);
    auto const two = File("two.zpl", std::string(Frame) + std::string(Frame));
    auto const longer = File("longer.zpl", "^XA^PW80^LL61^FO8,16^GB20,10,1^FS^XZ");
    EXPECT_EQ(Run(one, two).out, "2 pages, and not 1 page as expected\n");
    EXPECT_EQ(Run(one, two).result, CompareResult::Different);
    EXPECT_EQ(Run(one, longer).out, "page 1: is 80 x 61 dots and not 80 x 60 dots; no dot differs\n");
    EXPECT_EQ(Run(one, longer, {.tolerance = 1000, .differenceFolder = {}}).result, CompareResult::Different);
}

TEST_F(CompareTest, TakesPicturesOfAFolderInTheOrderOfTheirNumbers) {
    std::string stream;
    for (int i = 1; i <= 11; ++i) {
        std::string const x = std::to_string(i);
        stream += "^XA^PW80^LL60^FO" + x + ",0^GB1,1,1^FS^XZ";
        std::string rows(600, '\0');
        rows[static_cast<std::size_t>(i) / 8] = static_cast<char>(0x80 >> i % 8);
        File("golden/label-" + x + ".pbm", "P4\n80 60\n" + rows);
    }
    auto const told = Run((folder_ / "golden").string(), File("eleven.zpl", stream));
    EXPECT_EQ(told.out, "11 pages alike\n");
}

TEST_F(CompareTest, ReadsPicturesOfEveryKind) {
    EXPECT_EQ(DotsOf(Bitmap("1 0\n1\t0000 1")), "10100001");
    EXPECT_EQ(DotsOf("P4#raw\n12 1\n\xA0\xFF"), "101000001111");
    EXPECT_EQ(DotsOf(Png(PNG_FORMAT_GRAY, 4, std::array<png_byte, 4>{0, 255, 127, 128})), "1010");
    EXPECT_EQ(DotsOf(Png(PNG_FORMAT_RGB, 2, std::array<png_byte, 6>{200, 0, 0, 255, 255, 200})), "10");
    // Transparent black lies on white.
    EXPECT_EQ(DotsOf(Png(PNG_FORMAT_RGBA, 2, std::array<png_byte, 8>{0, 0, 0, 0, 0, 0, 0, 255})), "01");
}

TEST_F(CompareTest, SaysWhatItCannotCompare) {
    auto const frame = File("frame.zpl", Frame);
    std::string const png = Png(PNG_FORMAT_GRAY, 4, std::array<png_byte, 4>{});
    std::filesystem::create_directory(folder_ / "empty");
    for (auto const& [input, sentence] : std::vector<std::pair<std::string, std::string>>{
             {File("cut.png", std::string_view(png).substr(0, png.size() - 20)), "cannot read the picture"},
             {File("cut.pbm", "P4\n80 60\n"), "it ends before its last row"},
             {File("size.pbm", "P4\n80"), "its size is missing"},
             {File("none.pbm", "P1\n0 0\n"), "it has no pixels"},
             {File("huge.pbm", "P4\n99999999999999999999 2\n"), "more than 64 Mi pixels"},
             {File("in.pdf", "%PDF-1.4"), "cannot compare the document"},
             {File("set-up.zpl", "^XA^XZ"), "holds no printable label"},
             {(folder_ / "empty").string(), "no .png or .pbm files"},
             {(folder_ / "absent").string(), "cannot read"}}) {
        auto const told = Run(frame, input);
        EXPECT_EQ(told.result, CompareResult::Trouble) << input;
        EXPECT_THAT(told.out, HasSubstr(sentence)) << input;
    }
}

}  // namespace
