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
    std::vector<Drawing::Word> words_;
    std::span<Drawing::Word const> written_;  ///< the drawn row of what was written last
};

/// Packs all rows of a page into `out`, PackedRowBytes each; a set bit is black.
void PackPage(Drawing::Raster const& raster, PageLayout const& layout, std::uint8_t* out);

}  // namespace PrintEngine::Pages
