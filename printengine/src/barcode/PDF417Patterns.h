#pragma once

#include <array>
#include <cstdint>

namespace Barcode::Encoder {

/// ISO/IEC 15438, annex A: codewords 0 to 928 in the clusters 0, 3 and 6. 17 modules from a bar on; the first one,
/// which is always dark, is left out, a set bit is dark.
extern std::array<std::array<std::uint16_t, 929>, 3> const PDF417Patterns;

}  // namespace Barcode::Encoder
