#include "barcodes/frame/BitmapPainter.h"

#include <algorithm>
#include <bit>
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
        // Cells that are white may lie behind the row.
        if (row_.empty()) return;
        if constexpr (std::endian::native == std::endian::little) word = __builtin_bswap64(word);
        if (row_.size() < sizeof word) {
            std::memcpy(row_.data(), &word, row_.size());
            row_ = {};
        } else {
            std::memcpy(row_.data(), &word, sizeof word);
            row_ = row_.subspan(sizeof word);
        }
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
    // Black blocks that touch each other are painted as one.
    std::uint64_t bar = x;
    for (auto const block : blocks) {
        if (!block.black) PaintRun(row, bar, x);
        x += block.wide ? wide : narrow;
        if (!block.black) bar = x;
    }
    PaintRun(row, bar, x);
}

CellPainter::CellPainter(std::uint64_t pixels) : pixels_(pixels) {
    if (pixels > MostPixels) return;
    std::uint64_t const cell = (std::uint64_t{1} << pixels) - 1;
    for (std::size_t group = 1; group < groups_.size(); ++group)
        groups_[group] = groups_[group / 2] << pixels | group % 2 * cell;
}

void CellPainter::Paint(BitmapRow row, std::vector<bool> const& cells) const {
    return pixels_ > MostPixels ? PaintRuns(row, cells) : PaintGroups(row, cells);
}

void CellPainter::PaintGroups(BitmapRow row, std::vector<bool> const& cells) const {
    constexpr std::size_t Most = 64;
    static_assert(Most % Group == 0);
    std::uint64_t const width = Group * pixels_;
    BitStream stream(row);
    auto cell = cells.begin();
    for (std::size_t first = 0; first < cells.size(); first += Most) {
        std::size_t const count = std::min(Most, cells.size() - first);
        std::uint64_t dark = 0;
        for (std::size_t i = 0; i < count; ++i, ++cell) dark = dark << 1 | std::uint64_t{*cell};
        // The last group is filled up by white cells, which lie beyond the row.
        std::size_t left = (count + Group - 1) / Group * Group;
        for (dark <<= left - count; left > 0;) {
            left -= Group;
            stream.Add(groups_[dark >> left & (groups_.size() - 1)], width);
        }
    }
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
    for (std::size_t y = 1; y < count; ++y) std::copy(source.begin(), source.end(), source.data() + y * source.size());
}

}  // namespace Scripting
