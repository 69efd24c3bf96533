#pragma once

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <cstring>
#include <memory>
#include <span>
#include <vector>

#include "printengine/src/raster/Bits.h"

namespace PrintEngine::Drawing {

/// 64 pixels of a row, the leftmost in the most significant bit; a set bit is black.
using Word = std::uint64_t;
inline constexpr int WordBits = 64;

/// What a drawn dot does to the pixel beneath it.
enum class Ink { Black, White, Invert };

/// A borrowed 1-bit picture: rows packed most significant bit first, `stride` bytes apart, a set bit is drawn.
struct BitRows {
    std::uint8_t const* bytes = nullptr;
    std::size_t stride = 0;
    int width = 0;   ///< pixels
    int height = 0;  ///< pixels

    /// Pixels 64 * index and following of a row; what lies right of the picture reads as 0.
    Word Fetch(int row, int index) const {
        std::uint8_t const* const source =
            bytes + static_cast<std::size_t>(row) * stride + static_cast<std::size_t>(index) * 8;
        int const bits = std::min(width - index * WordBits, WordBits);
        Word word = 0;
        // Rows that are padded to whole words are read at once.
        if (static_cast<std::size_t>(index) * 8 + 8 <= stride) {
            std::memcpy(&word, source, sizeof word);
        } else {
            std::memcpy(&word, source, static_cast<std::size_t>(bits + 7) / 8);
        }
        word = BigEndian(word);
        return bits < WordBits ? word & ~(~Word{0} >> bits) : word;
    }
    /// The same of a word that has no pixel right of the picture.
    Word FetchWhole(int row, int index) const {
        Word word = 0;
        std::memcpy(&word, bytes + static_cast<std::size_t>(row) * stride + static_cast<std::size_t>(index) * 8,
                    sizeof word);
        return BigEndian(word);
    }
};

/// The 1-bit raster of a page. It has no fixed size, because a label is drawn before its size is known: a row begins to
/// exist when ink reaches it, and is as long as its ink. Ink is kept wherever a page of at most MaxDots can show it,
/// that is at all (x, y) with (x + 1) * (y + 1) <= MaxDots; the rest, and all that lies left of 0 or above 0, is
/// clipped.
///
/// Coordinates are pixels, at most 2^28 in magnitude. Rectangles are half open.
class Raster {
public:
    static constexpr std::int64_t MaxDots = std::int64_t{64} << 20;
    static constexpr int MaxWidth = 1 << 16;
    static constexpr int MaxHeight = 1 << 18;

    /// How many pixels of row `y` are kept at most; no row further down keeps more.
    static int WidthLimit(int y) {
        return static_cast<int>(std::min<std::int64_t>(MaxWidth, MaxDots / (std::int64_t{y} + 1)));
    }

    Raster() = default;
    Raster(Raster const&) = delete;
    Raster& operator=(Raster const&) = delete;

    /// Wipes the raster. It will probably be drawn on as far as width x height: room for that much is made at once.
    void Reset(int width, int height);
    void Swap(Raster& other) noexcept;
    /// Memory that it takes, about.
    std::size_t Bytes() const;

    void Fill(int left, int top, int right, int bottom, Ink ink);
    /// Draws the set bits of a picture that is turned clockwise by 0, 90, 180 or 270 degrees; (x, y) is the upper left
    /// corner of the turned picture.
    void Blit(BitRows const& picture, int x, int y, int degrees, Ink ink);
    /// Draws all black pixels of another raster at their own places.
    void Draw(Raster const& other, Ink ink);

    /// The words of a row from the left, as far as there may be ink; empty for an untouched row.
    std::span<Word const> Row(int y) const {
        if (y < top_ || y >= bottom_) return {};
        Line const& line = lines_[static_cast<std::size_t>(y)];
        return {line.words, line.used};
    }
    /// The rows outside [Top, Bottom) are untouched.
    int Top() const { return top_; }
    int Bottom() const { return bottom_; }

private:
    struct Line {
        Word* words = nullptr;
        std::uint32_t room = 0;  ///< words; those from `used` on are 0
        std::uint32_t used = 0;  ///< words
    };

    void Wipe();
    template <Ink Mode>
    void FillRow(int y, int left, int right);
    template <Ink Mode>
    void FillRows(int left, int top, int right, int bottom);
    template <Ink Mode>
    void FillInside(int left, int top, int right, int bottom);
    template <Ink Mode>
    void Put(int x, int y, Word bits);
    template <Ink Mode>
    void BlitLevel(BitRows const& picture, int x, int y, bool upsideDown);
    template <Ink Mode>
    void BlitWord(BitRows const& picture, int x, int y);
    template <Ink Mode>
    void BlitInside(BitRows const& picture, int x, int y);
    template <Ink Mode>
    void BlitTurned(BitRows const& picture, int x, int y, bool clockwise);

    template <Ink Mode>
    Line* Reach(int y, int lastWord);
    /// Whether rows [top, bottom) have room for their words up to `lastWord`, so that they can be drawn in directly.
    bool HasRoom(int top, int bottom, int lastWord) const;
    /// Ink reaches rows [top, bottom), as far as their lines say.
    void Grow(int top, int bottom);
    bool Extend(int y, int lastWord);
    Word* Allocate(std::size_t count);

    std::vector<Line> lines_;
    std::vector<Word> block_;  ///< backs the rows of the expected size
    std::size_t blockStride_ = 0;
    std::size_t blockRows_ = 0;
    std::vector<std::unique_ptr<Word[]>> chunks_;  ///< back the rows that grew beyond it
    std::size_t chunkLeft_ = 0;                    ///< words left in the last chunk
    int top_ = 0;
    int bottom_ = 0;
};

}  // namespace PrintEngine::Drawing
