#include <libdeflate.h>
#include <zlib.h>

#include <functional>
#include <random>

#include "printengine/src/page/PageDeflater.h"
#include "printengine/src/page/PbmWriter.h"
#include "tests/printengine/Picture.h"

using namespace PrintEngine;

namespace {

using Bytes = std::vector<std::uint8_t>;

/// The rows of a picture as a PNG holds them, put together dot by dot.
Bytes PngRows(Picture const& picture) {
    Bytes rows;
    for (int y = 0; y < picture.height; ++y) {
        rows.push_back(0);
        for (int left = 0; left < picture.width; left += 8) {
            unsigned byte = 0;
            for (int x = left; x < left + 8; ++x) byte = byte << 1 | (picture.At(x, y) ? 0 : 1);
            rows.push_back(static_cast<std::uint8_t>(byte));
        }
    }
    return rows;
}

std::string Deflated(Picture const& picture) {
    Drawing::Raster raster;
    auto const packed = picture.Packed();
    raster.Reset(picture.width, picture.height);
    raster.Blit({packed.data(), Pages::PackedRowBytes(picture.width), picture.width, picture.height}, 0, 0, 0,
                Drawing::Ink::Black);
    Pages::PageDeflater deflater;
    std::string stream;
    deflater.Append(raster, {.width = picture.width, .height = picture.height}, stream);
    return stream;
}

/// Whatever the stream holds, with room for a byte too many.
Bytes Inflated(std::string const& stream, std::size_t expected) {
    Bytes rows(expected + 1);
    uLongf size = rows.size();
    EXPECT_EQ(uncompress(rows.data(), &size, reinterpret_cast<Bytef const*>(stream.data()), stream.size()), Z_OK);
    rows.resize(size);
    return rows;
}

std::size_t SizeByLibrary(Bytes const& rows) {
    std::unique_ptr<libdeflate_compressor, void (*)(libdeflate_compressor*)> const compressor(
        libdeflate_alloc_compressor(1), libdeflate_free_compressor);
    Bytes stream(libdeflate_zlib_compress_bound(compressor.get(), rows.size()));
    return libdeflate_zlib_compress(compressor.get(), rows.data(), rows.size(), stream.data(), stream.size());
}

using IsBlack = std::function<bool(int x, int y)>;

}  // namespace

TEST(PageWriterTest, EveryPageIsFoundAgainAndIsAboutAsSmallAsByTheLibrary) {
    std::mt19937 random(7);
    struct Kind {
        char const* name;
        IsBlack isBlack;
    };
    for (auto const& [name, isBlack] : std::vector<Kind>{
             {"white", [](int, int) { return false; }},
             {"black", [](int, int) { return true; }},
             {"noise", [&](int, int) { return random() % 2 == 0; }},
             {"a photograph", [&](int x, int y) { return static_cast<int>(random() % 400) < x + y; }},
             {"a screen", [](int x, int y) { return (x * 13 + y * 29) % 37 < (x + y) % 500 / 14; }},
             {"a screened corner", [](int x, int y) { return x < 200 && (x * 13 + y * 29) % 37 < (x * y) % 500 / 14; }},
             {"an ordered screen",
              [](int x, int y) { return (x * 5 + y * 3 + (x ^ y) * 9) % 64 < (x + 2 * y) % 640 / 10; }},
             {"columns", [](int x, int) { return x * x / 7 % 3 == 0; }},
             {"rows", [](int, int y) { return y % 2 == 0; }},
             {"a slope", [](int x, int y) { return x > y && x < y + 40; }},
             {"dots far apart", [&](int, int) { return random() % 2000 == 0; }},
             {"noise at the right edge", [&](int x, int) { return x % 97 > 80 && random() % 2 == 0; }},
             {"noise in some rows", [&](int, int y) { return y % 50 == 9 && random() % 2 == 0; }},
         }) {
        for (auto const& [width, height] :
             {std::pair{1, 1}, {8, 1}, {8, 700}, {60, 5}, {64, 64}, {101, 333}, {812, 700}, {1999, 90}, {40000, 3}}) {
            SCOPED_TRACE(std::string(name) + " " + std::to_string(width) + " x " + std::to_string(height));
            Picture picture(width, height);
            for (int y = 0; y < height; ++y)
                for (int x = 0; x < width; ++x) picture.At(x, y) = isBlack(x, y);
            auto const rows = PngRows(picture);
            auto const stream = Deflated(picture);
            EXPECT_TRUE(Inflated(stream, rows.size()) == rows);
            // Half a kilobyte counts for nothing in a file.
            EXPECT_LE(stream.size(), SizeByLibrary(rows) * 115 / 100 + 512);
            EXPECT_LE(stream.size(), rows.size() + rows.size() / 5000 + 20);
        }
    }
}

TEST(PageWriterTest, PiecesOfABitmapAreTheWholeOfIt) {
    std::mt19937 random(11);
    // Widths at which a piece ends in the header's row, between rows and amid one; and shaped rows.
    for (Pages::PageLayout const& layout : std::vector<Pages::PageLayout>{
             {.width = 8, .height = 3},
             {.width = 1000, .height = 2500},
             {.width = 65536, .height = 17},
             {.width = 4096, .height = 128 * 3},
             {.width = 812, .height = 1700, .turned = true, .shiftDown = 9},
             {.width = 900, .height = 1700, .mirrored = true, .enlargement = 3},
         }) {
        Picture picture(layout.width, layout.height);
        for (int i = 0; i < layout.height; ++i)
            picture.At(static_cast<int>(random() % static_cast<unsigned>(layout.width)), i / 4 * 3) = 1;
        Drawing::Raster raster;
        auto const packed = picture.Packed();
        raster.Blit({packed.data(), Pages::PackedRowBytes(picture.width), picture.width, picture.height}, 0, 0, 0,
                    Drawing::Ink::Black);
        std::string whole, room, joined;
        Pages::EncodePbm(raster, layout, whole);
        Pages::EncodePbm(raster, layout, room, [&](std::string_view piece) { joined += piece; });
        EXPECT_EQ(joined, whole) << layout.width;
    }
}
