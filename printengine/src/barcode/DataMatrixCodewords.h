#pragma once

#include <cstdint>
#include <vector>

#include "printengine/src/barcode/DataMatrixTokens.h"
#include "printengine/src/barcode/DataMatrixWays.h"

namespace Barcode::Encoder {

/// The codewords of tokens that go their way through the modes of ISO/IEC 16022, at most `capacity` of them. The pads
/// behind them are left out.
std::vector<std::uint8_t> DataMatrixCodewords(std::vector<DataMatrixToken> const& tokens,
                                              std::vector<DataMatrixWays::Step> const& way, std::size_t capacity);

}  // namespace Barcode::Encoder
