#include "barcodes/frame/BitmapPainter.h"

#include <algorithm>
#include <cmath>
#include <stdexcept>

namespace Scripting {

namespace {

std::size_t Stride(SketchedBitmap const& bitmap) { return (bitmap.bitmapWidth + 7) / 8; }

}  // namespace

std::uint64_t SketchScale::operator()(std::uint64_t dots) const {
    return static_cast<std::uint64_t>(std::lround(static_cast<double>(dots) * scale_));
}

SketchedBitmap MakeBitmap(std::uint64_t width, std::uint64_t height) {
    std::uint64_t const stride = (width + 7) / 8;
    if (height != 0 && stride > GraphicHelper::MaximumBitmapBytes / height)
        throw std::length_error("cannot create std::vector larger than max_size()");
    SketchedBitmap bitmap;
    bitmap.bitmapWidth = width;
    bitmap.bitmapHeight = height;
    bitmap.rows = std::make_unique<std::vector<std::uint8_t>>(stride * height);
    return bitmap;
}

BitmapRow RowAt(SketchedBitmap& bitmap, std::size_t y) {
    return BitmapRow(*bitmap.rows).subspan(y * Stride(bitmap), Stride(bitmap));
}

void PaintRun(BitmapRow row, std::uint64_t begin, std::uint64_t end) {
    end = std::min<std::uint64_t>(end, row.size() * 8);
    if (begin >= end) return;
    std::size_t const firstByte = begin / 8;
    std::size_t const lastByte = (end - 1) / 8;
    // Bits run from the most significant on: of the first byte all from `begin`, of the last all before `end`.
    auto const firstMask = static_cast<std::uint8_t>(0xFF >> begin % 8);
    auto const lastMask = static_cast<std::uint8_t>(0xFF << (7 - (end - 1) % 8));
    if (firstByte == lastByte) {
        row[firstByte] |= firstMask & lastMask;
        return;
    }
    row[firstByte] |= firstMask;
    std::fill(row.begin() + static_cast<std::ptrdiff_t>(firstByte) + 1,
              row.begin() + static_cast<std::ptrdiff_t>(lastByte), std::uint8_t{0xFF});
    row[lastByte] |= lastMask;
}

void PaintBlocks(BitmapRow row, std::vector<Barcode::Model::Block> const& blocks, std::uint64_t narrow,
                 std::uint64_t wide, std::uint64_t x) {
    for (auto const block : blocks) {
        std::uint64_t const width = block.wide ? wide : narrow;
        if (block.black) PaintRun(row, x, x + width);
        x += width;
    }
}

void RepeatRow(SketchedBitmap& bitmap, std::size_t first, std::size_t count) {
    BitmapRow const source = RowAt(bitmap, first);
    for (std::size_t y = 1; y < count; ++y) std::copy(source.begin(), source.end(), RowAt(bitmap, first + y).begin());
}

}  // namespace Scripting
