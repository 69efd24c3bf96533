#include "printengine/src/raster/ScaledPicture.h"

#include <algorithm>

#include "printengine/src/raster/BitRuns.h"
#include "printengine/src/raster/Bits.h"

namespace PrintEngine::Drawing {

ScaledPicture::ScaledPicture(BitRows const& source, int width, int height) : width_(width), height_(height) {
    auto const stride = static_cast<std::size_t>(width + WordBits - 1) / WordBits;
    words_.assign(stride * static_cast<std::size_t>(height), 0);
    std::vector<Word> line(static_cast<std::size_t>(source.width + WordBits - 1) / WordBits);
    auto const sourceWidth = static_cast<std::size_t>(source.width);
    auto const targetWidth = static_cast<std::size_t>(width);
    // Pixel i of the target shows what lies under its middle: the source pixel (2 i + 1) * source / (2 * target).
    auto const firstShowing = [&](std::size_t x) {
        std::size_t const doubled = 2 * x * targetWidth;
        return doubled <= sourceWidth ? 0 : (doubled - sourceWidth + 2 * sourceWidth - 1) / (2 * sourceWidth);
    };
    int shown = -1;
    for (int y = 0; y < height; ++y) {
        Word* const row = words_.data() + stride * static_cast<std::size_t>(y);
        auto const from = static_cast<int>((2 * std::int64_t{y} + 1) * source.height / (2 * std::int64_t{height}));
        if (from == shown) {
            std::copy_n(row - stride, stride, row);
            continue;
        }
        shown = from;
        for (std::size_t i = 0; i < line.size(); ++i) line[i] = source.Fetch(from, static_cast<int>(i));
        ForRuns(line, [&](std::size_t left, std::size_t right) {
            SetRun({row, stride}, firstShowing(left), firstShowing(right));
        });
        for (std::size_t i = 0; i < stride; ++i) row[i] = BigEndian(row[i]);
    }
}

BitRows ScaledPicture::Rows() const {
    auto const stride = static_cast<std::size_t>(width_ + WordBits - 1) / WordBits;
    return {reinterpret_cast<std::uint8_t const*>(words_.data()), stride * sizeof(Word), width_, height_};
}

}  // namespace PrintEngine::Drawing
