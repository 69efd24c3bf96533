#include "barcodes/frame/BitmapPainter.h"

#include <algorithm>
#include <cmath>
#include <cstring>
#include <stdexcept>

namespace Scripting {

namespace {

std::size_t Stride(SketchedBitmap const& bitmap) { return (bitmap.bitmapWidth + 7) / 8; }

/// Bits that fill a row from its left.
class BitStream {
public:
    explicit BitStream(BitmapRow row) : row_(row) {}

    /// `count`, 1 to 64 of them, the last in the lowest of `bits`.
    void Add(std::uint64_t bits, std::uint64_t count) {
        if (count < room_) {
            room_ -= count;
            word_ |= bits << room_;
            return;
        }
        // What the word has no room for begins the next one.
        std::uint64_t const left = count - room_;
        Put(word_ | bits >> left);
        room_ = 64 - left;
        word_ = left == 0 ? 0 : bits << room_;
    }
    void End() {
        if (room_ != 64) Put(word_);
    }

private:
    void Put(std::uint64_t word) {
        std::array<std::uint8_t, sizeof word> bytes{};
        for (std::size_t i = 0; i < bytes.size(); ++i) bytes[i] = static_cast<std::uint8_t>(word >> (56 - 8 * i));
        std::size_t const size = std::min(bytes.size(), row_.size());
        std::memcpy(row_.data(), bytes.data(), size);
        row_ = row_.subspan(size);
    }

    BitmapRow row_;
    std::uint64_t word_ = 0;
    std::uint64_t room_ = 64;  ///< bits left in it
};

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

CellPainter::CellPainter(std::uint64_t pixels) : pixels_(pixels) {
    if (pixels > MostPixels) return;
    std::uint64_t const cell = (std::uint64_t{1} << pixels) - 1;
    for (std::size_t group = 0; group < groups_.size(); ++group) {
        for (std::size_t i = 0; i < Group; ++i) groups_[group] |= (group >> i & 1) * (cell << i * pixels);
    }
}

void CellPainter::Paint(BitmapRow row, std::vector<bool> const& cells) const {
    return pixels_ > MostPixels ? PaintRuns(row, cells) : PaintGroups(row, cells);
}

void CellPainter::PaintGroups(BitmapRow row, std::vector<bool> const& cells) const {
    BitStream stream(row);
    auto cell = cells.begin();
    std::size_t const whole = cells.size() / Group * Group;
    for (std::size_t i = 0; i < whole; i += Group) {
        std::size_t group = 0;
        for (std::size_t k = 0; k < Group; ++k, ++cell) group = group * 2 + (*cell ? 1 : 0);
        stream.Add(groups_[group], Group * pixels_);
    }
    for (; cell != cells.end(); ++cell) stream.Add(groups_[*cell ? 1 : 0], pixels_);
    stream.End();
}

void CellPainter::PaintRuns(BitmapRow row, std::vector<bool> const& cells) const {
    for (std::size_t c = 0; c < cells.size(); ++c) {
        std::size_t const first = c;
        while (c < cells.size() && cells[c]) ++c;
        if (c != first) PaintRun(row, first * pixels_, c * pixels_);
    }
}

void RepeatRow(SketchedBitmap& bitmap, std::size_t first, std::size_t count) {
    BitmapRow const source = RowAt(bitmap, first);
    for (std::size_t y = 1; y < count; ++y) std::copy(source.begin(), source.end(), RowAt(bitmap, first + y).begin());
}

}  // namespace Scripting
