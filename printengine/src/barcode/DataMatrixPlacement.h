#pragma once

#include <cstdint>
#include <vector>

namespace Barcode::Encoder {

/// The data modules of an ECC 200 symbol without its frames, row by row; 1 is dark, 0 is not (ISO/IEC 16022, annex F).
std::vector<std::uint8_t> PlaceDataMatrix(std::vector<std::uint8_t> const& codewords, unsigned rows, unsigned columns);

}  // namespace Barcode::Encoder
