#include "printengine/src/raster/ScaledPicture.h"

#include <algorithm>

#include "printengine/src/raster/BitRuns.h"
#include "printengine/src/raster/Bits.h"

namespace PrintEngine::Drawing {

ScaledPicture::ScaledPicture(BitRows const& source, int width, int height, PixelBox const& part)
    : width_(part.right - part.left), height_(part.bottom - part.top) {
    auto const stride = static_cast<std::size_t>(width_ + WordBits - 1) / WordBits;
    words_.assign(stride * static_cast<std::size_t>(height_), 0);
    auto const sourceWidth = static_cast<std::size_t>(source.width);
    auto const targetWidth = static_cast<std::size_t>(width);
    auto const left = static_cast<std::size_t>(part.left);
    // Pixel i of the target shows what lies under its middle: the source pixel (2 i + 1) * source / (2 * target).
    auto const shownAt = [](std::int64_t i, int from, int to) { return (2 * i + 1) * from / (2 * std::int64_t{to}); };
    // The other way round: the first pixel of the target that shows source pixel x or one behind it, the least i with
    // (2 i + 1) * source >= 2 x * target.
    auto const firstShowing = [&](std::size_t x) {
        std::size_t const doubled = 2 * x * targetWidth;
        std::size_t const first =
            doubled <= sourceWidth ? 0 : (doubled - sourceWidth + 2 * sourceWidth - 1) / (2 * sourceWidth);
        return first - std::min(first, left);
    };
    auto const firstWord = static_cast<int>(shownAt(part.left, source.width, width) / WordBits);
    auto const lastWord = static_cast<int>(shownAt(part.right - 1, source.width, width) / WordBits);
    std::size_t const skipped = static_cast<std::size_t>(firstWord) * WordBits;
    std::vector<Word> line(static_cast<std::size_t>(lastWord - firstWord + 1));
    std::int64_t shown = -1;
    for (int y = 0; y < height_; ++y) {
        Word* const row = words_.data() + stride * static_cast<std::size_t>(y);
        std::int64_t const from = shownAt(std::int64_t{part.top} + y, source.height, height);
        if (from == shown) {
            std::copy_n(row - stride, stride, row);
            continue;
        }
        shown = from;
        for (int i = firstWord; i <= lastWord; ++i)
            line[static_cast<std::size_t>(i - firstWord)] = source.Fetch(static_cast<int>(from), i);
        ForRuns(line, [&](std::size_t start, std::size_t end) {
            SetRun({row, stride}, firstShowing(skipped + start), firstShowing(skipped + end));
        });
        for (std::size_t i = 0; i < stride; ++i) row[i] = BigEndian(row[i]);
    }
}

BitRows ScaledPicture::Rows() const {
    auto const stride = static_cast<std::size_t>(width_ + WordBits - 1) / WordBits;
    return {reinterpret_cast<std::uint8_t const*>(words_.data()), stride * sizeof(Word), width_, height_};
}

}  // namespace PrintEngine::Drawing
