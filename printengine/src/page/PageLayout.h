#pragma once

#include <cstdint>
#include <span>
#include <vector>

#include "printengine/src/raster/Raster.h"

namespace PrintEngine::Pages {

/// The shape of a finished page. All sizes are pixels.
struct PageLayout {
    int width = 1;
    int height = 1;
    bool turned = false;    ///< by 180 degrees
    bool mirrored = false;  ///< left to right
    int enlargement = 1;    ///< pixels that each drawn pixel becomes, in both directions
    int shiftDown = 0;      ///< of the turned and mirrored page; negative is up

    /// Whether a row of the page is another than the drawn one that it shows.
    bool IsShaped() const { return enlargement > 1 || mirrored != turned; }
};

/// Bytes of a row of packed pixels.
inline std::size_t PackedRowBytes(int width) { return static_cast<std::size_t>(width + 7) / 8; }

/// Makes the rows of a finished page, counted from the top.
class PageComposer {
public:
    /// `inkBit` is the bit that black pixels get.
    PageComposer(Drawing::Raster const& raster, PageLayout const& layout, bool inkBit);

    /// Writes a row into `out` (PackedRowBytes), most significant bit first; bits right of the page are those of paper.
    void Write(int row, std::uint8_t* out);

    /// Where the rows end that are known to be like `row`, the one that was written last; they need not be written for
    /// that.
    int EndOfLike(int row) const;

private:
    /// The drawn row that a row shows; empty for paper.
    std::span<Drawing::Word const> Source(int row) const;
    void Shape(std::span<Drawing::Word const> source);

    Drawing::Raster const& raster_;
    PageLayout const& layout_;
    bool inkBit_;
    bool isShaped_;
    bool isEnlarged_;
    std::vector<Drawing::Word> words_;
    std::span<Drawing::Word const> written_;  ///< the drawn row of what was written last
};

/// Packs the rows of a page one after the other; a set bit is black.
class PagePacker {
public:
    /// Both outlive it.
    PagePacker(Drawing::Raster const& raster, PageLayout const& layout)
        : layout_(layout), composer_(raster, layout, true), isShaped_(layout.IsShaped()) {}

    /// Writes those that begin before `end`, PackedRowBytes each, the last of them beyond it. Where they end.
    std::uint8_t* Pack(std::uint8_t* out, std::uint8_t const* end);

private:
    PageLayout const& layout_;
    PageComposer composer_;
    bool isShaped_;
    int row_ = 0;
    int endOfLike_ = 0;
    std::vector<std::uint8_t> written_;  ///< that like rows are copied from
};

/// Packs all rows of a page into `out`, PackedRowBytes each; a set bit is black.
void PackPage(Drawing::Raster const& raster, PageLayout const& layout, std::uint8_t* out);

}  // namespace PrintEngine::Pages
