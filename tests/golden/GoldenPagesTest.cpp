#include <gtest/gtest.h>
#include <png.h>

#include <cstdlib>

#include "foundation/Files.h"
#include "tests/support/PagePictures.h"
#include "tests/support/PngPicture.h"
#include "tests/support/TemporaryDirectory.h"

// Each tests/golden/AREA/NAME.zpl has its pages beside it as NAME.png, dot for dot. tools/update-goldens writes the
// pictures; a page that differs is left in build/golden with the difference: grey what is in both, red what is missing,
// blue what is too much.

namespace {

namespace fs = std::filesystem;

std::vector<fs::path> Streams() {
    std::vector<fs::path> streams;
    for (auto const& entry : fs::recursive_directory_iterator("tests/golden")) {
        if (entry.path().extension() == ".zpl") streams.push_back(entry.path());
    }
    std::sort(streams.begin(), streams.end());
    return streams;
}

/// NAME@300.zpl is drawn at 300 dots per inch, others at 203.
unsigned ResolutionOf(fs::path const& stream) {
    std::string const name = stream.stem().string();
    auto const at = name.rfind('@');
    return at == name.npos ? 203 : static_cast<unsigned>(std::atoi(name.c_str() + at + 1));
}

void WritePng(fs::path const& file, std::vector<std::uint8_t> const& pixels, int width, int height, bool isColor) {
    png_image image{};
    image.version = PNG_IMAGE_VERSION;
    image.width = static_cast<png_uint_32>(width);
    image.height = static_cast<png_uint_32>(height);
    image.format = isColor ? PNG_FORMAT_RGB : PNG_FORMAT_GRAY;
    ASSERT_TRUE(png_image_write_to_file(&image, file.c_str(), 0, pixels.data(), 0, nullptr)) << file;
}

void WritePage(fs::path const& file, Picture const& page) {
    std::vector<std::uint8_t> pixels(page.dots.size());
    std::transform(page.dots.begin(), page.dots.end(), pixels.begin(), [](char dot) { return dot ? 0 : 255; });
    WritePng(file, pixels, page.width, page.height, false);
}

/// Every copy of every label as the print driver gets it, one below the other.
Picture DrawStream(fs::path const& stream) {
    TemporaryDirectory const folder;
    auto const desk = MakeStillDesk(ResolutionOf(stream));
    std::string bytes;
    EXPECT_FALSE(ReadFile(stream, bytes)) << stream;
    std::vector<Picture> pages;
    RunStream(*desk, bytes, [&](Zpl::Label& label, auto&) {
        for (unsigned copy = 0; copy < label.Quantity(); ++copy) {
            label.RenderLabel(folder.Path(), copy, 0, false);
            pages.push_back(ReadPng(folder / "0"));
        }
    });
    Picture all;
    for (auto const& page : pages) all.width = std::max(all.width, page.width);
    for (auto const& page : pages) {
        for (int y = 0; y < page.height; ++y, ++all.height) {
            for (int x = 0; x < all.width; ++x) all.dots.push_back(page.At(x, y));
        }
    }
    return all;
}

void WriteDifference(fs::path const& file, Picture const& expected, Picture const& actual) {
    int const width = std::max(expected.width, actual.width);
    int const height = std::max(expected.height, actual.height);
    std::vector<std::uint8_t> pixels;
    for (int y = 0; y < height; ++y) {
        for (int x = 0; x < width; ++x) {
            bool const isWanted = expected.At(x, y);
            bool const isThere = actual.At(x, y);
            std::uint8_t const both = isWanted && isThere ? 170 : 255;
            bool const differs = isWanted != isThere;
            pixels.push_back(differs && !isWanted ? 0 : both);
            pixels.push_back(differs ? 0 : both);
            pixels.push_back(differs && isWanted ? 0 : both);
        }
    }
    WritePng(file, pixels, width, height, true);
}

TEST(GoldenPages, AreDrawnDotForDot) {
    bool const isUpdate = std::getenv("ZPL_UPDATE_GOLDENS") != nullptr;
    auto const streams = Streams();
    ASSERT_GE(streams.size(), 20U);
    for (fs::path const& stream : streams) {
        Picture const actual = DrawStream(stream);
        ASSERT_GT(actual.CountBlack(), 0) << stream;
        fs::path picture = stream;
        picture.replace_extension(".png");
        if (isUpdate) {
            if (ReadPng(picture) != actual) WritePage(picture, actual);
            continue;
        }
        Picture const expected = ReadPng(picture);
        if (actual == expected) continue;
        fs::path const left = fs::path(ZPL_GOLDEN_OUTPUT) / stream.stem();
        fs::create_directories(ZPL_GOLDEN_OUTPUT);
        WritePage(left.string() + ".png", actual);
        WriteDifference(left.string() + "-difference.png", expected, actual);
        ADD_FAILURE() << stream << " differs, see " << left.string() << "-difference.png";
    }
}

}  // namespace
