#pragma once

#include <cstdint>
#include <vector>

namespace Barcode::Encoder {

/// The data modules of an ECC 200 symbol without its frames, row by row; true is dark (ISO/IEC 16022, annex F).
std::vector<std::vector<bool>> PlaceDataMatrix(std::vector<std::uint8_t> const& codewords, unsigned rows,
                                               unsigned columns);

}  // namespace Barcode::Encoder
