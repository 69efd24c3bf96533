#include "printengine/src/raster/Raster.h"

#include <algorithm>
#include <utility>

namespace PrintEngine::Drawing {

namespace {

constexpr std::size_t ChunkWords = 16384;

/// Words that row `y` may have: see the class comment.
int WordLimit(int y) { return Raster::WidthLimit(y) / WordBits; }

template <Ink Mode>
void Apply(Word& word, Word mask) {
    if constexpr (Mode == Ink::Black) word |= mask;
    if constexpr (Mode == Ink::White) word &= ~mask;
    if constexpr (Mode == Ink::Invert) word ^= mask;
}

}  // namespace

void Raster::Reset(int width, int height) {
    Wipe();

    width = std::clamp(width, 1, MaxWidth);
    height = std::clamp(height, 1, static_cast<int>(std::min<std::int64_t>(MaxHeight, MaxDots / width)));
    auto const stride = static_cast<std::size_t>(width + WordBits - 1) / WordBits;
    auto const rows = static_cast<std::size_t>(height);
    if (stride == blockStride_ && rows == blockRows_ && chunks_.empty()) return;

    chunks_.clear();
    chunkLeft_ = 0;
    lines_.clear();
    block_.resize(stride * rows);
    lines_.resize(rows);
    for (std::size_t y = 0; y < rows; ++y)
        lines_[y] = {block_.data() + y * stride, static_cast<std::uint32_t>(stride), 0};
    blockStride_ = stride;
    blockRows_ = rows;
}

void Raster::Swap(Raster& other) noexcept {
    // Buffers keep their places, so that the pointers of lines hold.
    std::swap(lines_, other.lines_);
    std::swap(block_, other.block_);
    std::swap(blockStride_, other.blockStride_);
    std::swap(blockRows_, other.blockRows_);
    std::swap(chunks_, other.chunks_);
    std::swap(chunkLeft_, other.chunkLeft_);
    std::swap(top_, other.top_);
    std::swap(bottom_, other.bottom_);
}

std::size_t Raster::Bytes() const {
    // No row is longer than a chunk.
    return lines_.capacity() * sizeof(Line) + (block_.capacity() + chunks_.size() * ChunkWords) * sizeof(Word);
}

void Raster::Wipe() {
    // As long as no row has grown, they lie side by side and are wiped in one go.
    bool const isBlock = chunks_.empty() && top_ != bottom_;
    if (isBlock)
        std::fill_n(lines_[static_cast<std::size_t>(top_)].words,
                    static_cast<std::size_t>(bottom_ - top_) * blockStride_, Word{0});
    for (int y = top_; y < bottom_; ++y) {
        Line& line = lines_[static_cast<std::size_t>(y)];
        if (!isBlock) std::fill_n(line.words, line.used, Word{0});
        line.used = 0;
    }
    top_ = bottom_ = 0;
}

Word* Raster::Allocate(std::size_t count) {
    if (chunkLeft_ < count) {
        chunkLeft_ = std::max(count, ChunkWords);
        chunks_.push_back(std::make_unique<Word[]>(chunkLeft_));
    }
    // A chunk is given out from its end, so that its start need not be known.
    chunkLeft_ -= count;
    return chunks_.back().get() + chunkLeft_;
}

bool Raster::Extend(int y, int lastWord) {
    if (y < 0 || y >= MaxHeight || lastWord >= WordLimit(y)) return false;
    auto const row = static_cast<std::size_t>(y);
    if (row >= lines_.size()) lines_.resize(std::max(row + 1, std::min(lines_.size() * 2, std::size_t{MaxHeight})));
    Line& line = lines_[row];
    if (static_cast<std::uint32_t>(lastWord) < line.room) return true;
    auto const room = std::max({static_cast<std::size_t>(lastWord) + 1, std::size_t{line.room} * 2, blockStride_});
    Word* const words = Allocate(room);
    std::copy_n(line.words, line.used, words);
    // The place it had belongs to the same row of the next page.
    std::fill_n(line.words, line.used, Word{0});
    line.words = words;
    line.room = static_cast<std::uint32_t>(room);
    return true;
}

/// The row that a word is drawn in; null if there is nothing to draw on.
template <Ink Mode>
Raster::Line* Raster::Reach(int y, int lastWord) {
    auto const row = static_cast<std::size_t>(y);
    if (row >= lines_.size() || static_cast<std::uint32_t>(lastWord) >= lines_[row].room) {
        if (!Extend(y, lastWord)) return nullptr;
    }
    Line& line = lines_[row];
    line.used = std::max(line.used, static_cast<std::uint32_t>(lastWord) + 1);
    Grow(y, y + 1);
    return &line;
}

void Raster::Grow(int top, int bottom) {
    bool const untouched = top_ == bottom_;
    top_ = untouched ? top : std::min(top_, top);
    bottom_ = untouched ? bottom : std::max(bottom_, bottom);
}

bool Raster::HasRoom(int top, int bottom, int lastWord) const {
    if (top < 0 || static_cast<std::size_t>(bottom) > lines_.size()) return false;
    auto const last = static_cast<std::uint32_t>(lastWord);
    // As long as no row has grown, all are of one length.
    if (chunks_.empty()) return last < blockStride_;
    return std::all_of(lines_.begin() + top, lines_.begin() + bottom,
                       [last](Line const& line) { return last < line.room; });
}

template <Ink Mode>
void Raster::FillRow(int y, int left, int right) {
    right = std::min(right, WordLimit(y) * WordBits);
    // White on untouched ground changes nothing, so it makes no row.
    if constexpr (Mode == Ink::White) right = std::min(right, static_cast<int>(Row(y).size()) * WordBits);
    if (left >= right) return;
    int const first = left / WordBits;
    int const last = (right - 1) / WordBits;
    Line* const line = Reach<Mode>(y, last);
    if (!line) return;
    // The most significant bit of a word is its leftmost pixel: `head` has the pixels from `left` on, `tail` those in
    // front of `right`.
    Word const head = ~Word{0} >> (left % WordBits);
    Word const tail = ~Word{0} << (WordBits - 1 - (right - 1) % WordBits);
    if (first == last) {
        Apply<Mode>(line->words[first], head & tail);
        return;
    }
    Apply<Mode>(line->words[first], head);
    for (int i = first + 1; i < last; ++i) Apply<Mode>(line->words[i], ~Word{0});
    Apply<Mode>(line->words[last], tail);
}

template <Ink Mode>
void Raster::FillRows(int left, int top, int right, int bottom) {
    left = std::max(left, 0);
    top = std::max(top, 0);
    bottom = std::min(bottom, Mode == Ink::White ? bottom_ : MaxHeight);
    if (left >= right || top >= bottom) return;
    if (HasRoom(top, bottom, (right - 1) / WordBits)) return FillInside<Mode>(left, top, right, bottom);
    for (int y = top; y < bottom; ++y) FillRow<Mode>(y, left, right);
}

/// Fills where all rows have room.
template <Ink Mode>
void Raster::FillInside(int left, int top, int right, int bottom) {
    int const first = left / WordBits;
    int const last = (right - 1) / WordBits;
    Word const head = ~Word{0} >> (left % WordBits);
    Word const tail = ~Word{0} << (WordBits - 1 - (right - 1) % WordBits);
    for (int y = top; y < bottom; ++y) {
        Line& line = lines_[static_cast<std::size_t>(y)];
        // Where there is no ink, white changes nothing.
        if constexpr (Mode != Ink::White) line.used = std::max(line.used, static_cast<std::uint32_t>(last) + 1);
        Apply<Mode>(line.words[first], first == last ? head & tail : head);
        for (int i = first + 1; i < last; ++i) Apply<Mode>(line.words[i], ~Word{0});
        if (first != last) Apply<Mode>(line.words[last], tail);
    }
    if constexpr (Mode != Ink::White) Grow(top, bottom);
}

void Raster::Fill(int left, int top, int right, int bottom, Ink ink) {
    switch (ink) {
        case Ink::Black: return FillRows<Ink::Black>(left, top, right, bottom);
        case Ink::White: return FillRows<Ink::White>(left, top, right, bottom);
        case Ink::Invert: return FillRows<Ink::Invert>(left, top, right, bottom);
    }
}

/// Draws 64 pixels from (x, y) to the right; y is not negative.
template <Ink Mode>
void Raster::Put(int x, int y, Word bits) {
    if (x < 0) {
        if (x <= -WordBits) return;
        bits <<= -x;
        x = 0;
    }
    if (bits == 0 || x >= MaxWidth) return;
    // The pixels lie across two words unless x is the start of one; a shift by a whole word is undefined.
    int const first = x / WordBits;
    int const shift = x % WordBits;
    Word const right = shift ? bits << (WordBits - shift) : 0;
    int const last = first + (right ? 1 : 0);
    if constexpr (Mode == Ink::White) {
        auto const used = static_cast<int>(Row(y).size());
        if (first < used) lines_[static_cast<std::size_t>(y)].words[first] &= ~(bits >> shift);
        if (right && last < used) lines_[static_cast<std::size_t>(y)].words[last] &= ~right;
        return;
    }
    Line* line = Reach<Mode>(y, last);
    if (!line && right) {
        // The right half lies beyond the limit of the row, the left half may not.
        line = Reach<Mode>(y, first);
        if (line) Apply<Mode>(line->words[first], bits >> shift);
        return;
    }
    if (!line) return;
    Apply<Mode>(line->words[first], bits >> shift);
    if (right) Apply<Mode>(line->words[last], right);
}

/// Draws a picture upright where all its rows have room, which is a word wide at most and has rows of whole words: a
/// letter.
template <Ink Mode>
void Raster::BlitWord(BitRows const& picture, int x, int y) {
    auto const first = static_cast<std::uint32_t>(x / WordBits);
    int const shift = x % WordBits;
    bool const reachesFurther = shift + picture.width > WordBits;
    Word const edge = ~Word{0} << (WordBits - picture.width);
    std::uint8_t const* source = picture.bytes;
    for (int row = 0; row < picture.height; ++row, source += picture.stride) {
        Line& line = lines_[static_cast<std::size_t>(y + row)];
        if constexpr (Mode != Ink::White) line.used = std::max(line.used, first + (reachesFurther ? 2 : 1));
        Word bits = 0;
        std::memcpy(&bits, source, sizeof bits);
        bits = BigEndian(bits) & edge;
        Apply<Mode>(line.words[first], bits >> shift);
        if (reachesFurther) Apply<Mode>(line.words[first + 1], bits << (WordBits - shift));
    }
}

/// Draws a picture upright where all its rows have room.
template <Ink Mode>
void Raster::BlitInside(BitRows const& picture, int x, int y) {
    int const first = x / WordBits;
    int const shift = x % WordBits;
    int const last = (x + picture.width - 1) / WordBits;
    int const words = (picture.width + WordBits - 1) / WordBits;
    for (int row = 0; row < picture.height; ++row) {
        Line& line = lines_[static_cast<std::size_t>(y + row)];
        if constexpr (Mode != Ink::White) line.used = std::max(line.used, static_cast<std::uint32_t>(last) + 1);
        Word* const target = line.words + first;
        // What a word of the picture leaves over, it hands on to the right. Shifted twice, as a shift by 64, where the
        // words of both lie one above the other, is undefined.
        Word carried = 0;
        for (int i = 0; i < words; ++i) {
            Word const bits = i + 1 < words ? picture.FetchWhole(row, i) : picture.Fetch(row, i);
            Apply<Mode>(target[i], carried | bits >> shift);
            carried = bits << 1 << (WordBits - 1 - shift);
        }
        if (first + words == last) Apply<Mode>(target[words], carried);
    }
}

template <Ink Mode>
void Raster::BlitLevel(BitRows const& picture, int x, int y, bool upsideDown) {
    bool const isInside = x >= 0 && picture.width > 0 && picture.height > 0 &&
                          HasRoom(y, y + picture.height, (x + picture.width - 1) / WordBits);
    if (isInside && !upsideDown) {
        if constexpr (Mode != Ink::White) Grow(y, y + picture.height);
        bool const isWord = picture.width <= WordBits && picture.stride % sizeof(Word) == 0;
        return isWord ? BlitWord<Mode>(picture, x, y) : BlitInside<Mode>(picture, x, y);
    }
    int const words = (picture.width + WordBits - 1) / WordBits;
    int const firstRow = std::max(0, -y);
    int const lastRow = std::min(picture.height, MaxHeight - y);
    for (int row = firstRow; row < lastRow; ++row) {
        int const source = upsideDown ? picture.height - 1 - row : row;
        for (int i = 0; i < words; ++i) {
            int const column = upsideDown ? x + picture.width - (i + 1) * WordBits : x + i * WordBits;
            if (column <= -WordBits || column >= MaxWidth) continue;
            Word const bits = picture.Fetch(source, i);
            if (bits == 0) continue;
            Put<Mode>(column, y + row, upsideDown ? Reversed(bits) : bits);
        }
    }
}

/// Turns blocks of 64 x 64 pixels: bits are gathered from 64 rows at once, and each word that is drawn goes into one
/// row of the page. Blocks without ink, most of a letter's cell, cost their reading alone.
template <Ink Mode>
void Raster::BlitTurned(BitRows const& picture, int x, int y, bool clockwise) {
    int const columns = (picture.width + WordBits - 1) / WordBits;
    Word block[WordBits];
    for (int top = 0; top < picture.height; top += WordBits) {
        int const rows = std::min(WordBits, picture.height - top);
        int const left = clockwise ? x + picture.height - top - WordBits : x + top;
        if (left <= -WordBits || left >= MaxWidth) continue;
        for (int column = 0; column < columns; ++column) {
            Word any = 0;
            for (int row = 0; row < WordBits; ++row) {
                block[row] = row < rows ? picture.Fetch(top + row, column) : 0;
                any |= block[row];
            }
            if (any == 0) continue;
            Transpose(block);
            // Row j of the block is now column 64 * column + j of the picture, its top pixel leftmost.
            for (int j = 0; j < std::min(WordBits, picture.width - column * WordBits); ++j) {
                if (block[j] == 0) continue;
                int const u = column * WordBits + j;
                int const row = y + (clockwise ? u : picture.width - 1 - u);
                if (row < 0 || row >= MaxHeight) continue;
                Put<Mode>(left, row, clockwise ? Reversed(block[j]) : block[j]);
            }
        }
    }
}

void Raster::Blit(BitRows const& picture, int x, int y, int degrees, Ink ink) {
    bool const isUpended = degrees == 90 || degrees == 270;
    int const width = isUpended ? picture.height : picture.width;
    int const height = isUpended ? picture.width : picture.height;
    if (x >= MaxWidth || y >= MaxHeight || x + width <= 0 || y + height <= 0) return;
    auto const draw = [&]<Ink Mode>() {
        if (isUpended) {
            BlitTurned<Mode>(picture, x, y, degrees == 90);
        } else {
            BlitLevel<Mode>(picture, x, y, degrees == 180);
        }
    };
    switch (ink) {
        case Ink::Black: return draw.operator()<Ink::Black>();
        case Ink::White: return draw.operator()<Ink::White>();
        case Ink::Invert: return draw.operator()<Ink::Invert>();
    }
}

void Raster::Draw(Raster const& other, Ink ink) {
    for (int y = other.Top(); y < other.Bottom(); ++y) {
        auto const row = other.Row(y);
        for (int i = 0; i < static_cast<int>(row.size()); ++i) {
            Word const bits = row[static_cast<std::size_t>(i)];
            if (bits == 0) continue;
            switch (ink) {
                case Ink::Black: Put<Ink::Black>(i * WordBits, y, bits); break;
                case Ink::White: Put<Ink::White>(i * WordBits, y, bits); break;
                case Ink::Invert: Put<Ink::Invert>(i * WordBits, y, bits); break;
            }
        }
    }
}

}  // namespace PrintEngine::Drawing
