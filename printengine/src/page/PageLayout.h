#pragma once

#include <cstdint>
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
    int shiftDown = 0;      ///< of the page when it is turned and mirrored; negative is up
};

/// Bytes of a row of packed pixels.
inline std::size_t PackedRowBytes(int width) { return static_cast<std::size_t>(width + 7) / 8; }

/// Writes one row of the finished page, counted from the top, into `out` (PackedRowBytes): packed most significant bit
/// first, a set bit is black, bits right of the page are 0. `scratch` is reused from row to row.
void ComposeRow(Drawing::Raster const& raster, PageLayout const& layout, int row, std::vector<Drawing::Word>& scratch,
                std::uint8_t* out);

}  // namespace PrintEngine::Pages
