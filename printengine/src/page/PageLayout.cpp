#include "printengine/src/page/PageLayout.h"

#include <algorithm>
#include <cstring>
#include <span>

#include "printengine/src/page/PackWords.h"
#include "printengine/src/raster/BitRuns.h"
#include "printengine/src/raster/Bits.h"

namespace PrintEngine::Pages {

using Drawing::Word;
using Drawing::WordBits;

namespace {

std::size_t WordsFor(int width) { return static_cast<std::size_t>(width + WordBits - 1) / WordBits; }

/// Makes each pixel of `source` `times` pixels wide.
void Widen(std::span<Word const> source, std::size_t times, std::span<Word> row) {
    Drawing::ForRuns(source,
                     [&](std::size_t left, std::size_t right) { Drawing::SetRun(row, left * times, right * times); });
}

/// Mirrors the first `width` pixels of a row, of which the others are 0.
void MirrorRow(std::span<Word> row, int width) {
    std::reverse(row.begin(), row.end());
    for (Word& word : row) word = Drawing::Reversed(word);
    // What was white behind the page now stands in front of it, and is moved out on the left.
    auto const shift = static_cast<int>(row.size()) * WordBits - width;
    if (shift == 0) return;
    for (std::size_t i = 0; i < row.size(); ++i) {
        row[i] = row[i] << shift | (i + 1 < row.size() ? row[i + 1] >> (WordBits - shift) : 0);
    }
}

/// Writes the first `count` bytes of a word, 1 to 8.
void PackPart(Word word, std::size_t count, std::uint8_t* out) {
    Word const packed = Drawing::BigEndian(word);
    auto const* from = reinterpret_cast<std::uint8_t const*>(&packed);
    // Copies of a fixed length take no call.
    auto const copy = [&]<std::size_t Bytes>() {
        if ((count & Bytes) == 0) return;
        std::memcpy(out, from, Bytes);
        from += Bytes;
        out += Bytes;
    };
    copy.template operator()<8>();
    copy.template operator()<4>();
    copy.template operator()<2>();
    copy.template operator()<1>();
}

}  // namespace

PageComposer::PageComposer(Drawing::Raster const& raster, PageLayout const& layout, bool inkBit)
    : raster_(raster),
      layout_(layout),
      inkBit_(inkBit),
      isShaped_(layout.IsShaped()),
      isEnlarged_(layout.enlargement != 1),
      words_(WordsFor(layout.width)) {}

inline std::span<Word const> PageComposer::Source(int row) const {
    int const shifted = row - layout_.shiftDown;
    if (shifted < 0 || shifted >= layout_.height) return {};
    int const upright = layout_.turned ? layout_.height - 1 - shifted : shifted;
    // Division takes longer than all the rest, and few pages are enlarged.
    auto const source = raster_.Row(isEnlarged_ ? upright / layout_.enlargement : upright);
    return source.first(std::min(source.size(), words_.size()));
}

int PageComposer::EndOfLike(int row) const {
    // Rows of an enlarged page, and white ones, are mostly the same words, which need no looking at.
    auto const isLikeWritten = [&](std::span<Word const> source) {
        if (source.size() != written_.size() || source.empty()) return source.size() == written_.size();
        return source.data() == written_.data() ||
               std::memcmp(source.data(), written_.data(), source.size_bytes()) == 0;
    };
    do ++row;
    while (row < layout_.height && isLikeWritten(Source(row)));
    return row;
}

void PageComposer::Write(int row, std::uint8_t* out) {
    std::size_t const bytes = PackedRowBytes(layout_.width);
    auto source = written_ = Source(row);
    if (source.empty()) {
        std::memset(out, inkBit_ ? 0 : 0xFF, bytes);
        return;
    }
    if (isShaped_) {
        Shape(source);
        source = words_;
    }
    Word const flip = inkBit_ ? 0 : ~Word{0};
    std::size_t const whole = std::min(source.size(), words_.size() - 1);
    PackWords(source.data(), whole, flip, out);
    std::size_t const done = whole * sizeof(Word);
    if (whole == source.size()) {
        std::memset(out + done, inkBit_ ? 0 : 0xFF, bytes - done);
        return;
    }
    // The last word holds more pixels than the page.
    int const beyond = static_cast<int>(words_.size()) * WordBits - layout_.width;
    PackPart((source[whole] & ~Word{0} << beyond) ^ flip, bytes - done, out + done);
}

/// Brings a drawn row into the shape of the page.
void PageComposer::Shape(std::span<Word const> source) {
    if (layout_.enlargement > 1) {
        std::fill(words_.begin(), words_.end(), 0);
        Widen(source, static_cast<std::size_t>(layout_.enlargement), words_);
    } else {
        std::fill(std::copy(source.begin(), source.end(), words_.begin()), words_.end(), 0);
    }
    int const beyond = static_cast<int>(words_.size()) * WordBits - layout_.width;
    words_.back() &= ~Word{0} << beyond;
    if (layout_.mirrored != layout_.turned) MirrorRow(words_, layout_.width);
}

std::uint8_t* PagePacker::Pack(std::uint8_t* out, std::uint8_t const* end) {
    std::size_t const bytes = PackedRowBytes(layout_.width);
    for (; row_ < layout_.height && out < end; ++row_, out += bytes) {
        // To look whether a row is like the one above takes about as long as to write it, but for one that is shaped.
        if (isShaped_ && row_ < endOfLike_) {
            std::memcpy(out, written_.data(), bytes);
            continue;
        }
        composer_.Write(row_, out);
        if (!isShaped_) continue;
        endOfLike_ = composer_.EndOfLike(row_);
        written_.assign(out, out + bytes);
    }
    return out;
}

void PackPage(Drawing::Raster const& raster, PageLayout const& layout, std::uint8_t* out) {
    auto const* const end = out + PackedRowBytes(layout.width) * static_cast<std::size_t>(layout.height);
    PagePacker(raster, layout).Pack(out, end);
}

}  // namespace PrintEngine::Pages
