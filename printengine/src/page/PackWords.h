#pragma once

#include <cstddef>
#include <cstdint>

#include "printengine/src/raster/Raster.h"

namespace PrintEngine::Pages {

/// Turns words of a row into bytes, the leftmost pixel first; `flip` has the bits to invert.
void PackWords(Drawing::Word const* from, std::size_t count, Drawing::Word flip, std::uint8_t* out);

}  // namespace PrintEngine::Pages
