#pragma once

#include <cstdint>
#include <string_view>
#include <vector>

namespace Barcode::Encoder {

/// One thing to encode in a Data Matrix symbol.
struct DataMatrixToken {
    static constexpr unsigned Fnc1 = 256;

    unsigned value = 0;                   ///< a byte, or Fnc1
    std::vector<std::uint8_t> codewords;  ///< if there are any, these stand in the symbol, encoded in ASCII mode

    bool IsByte() const { return codewords.empty() && value < 256; }
    bool IsDigit() const { return codewords.empty() && value >= '0' && value <= '9'; }
};

/// Reads a text with escapes; a sequence that means nothing is plain text.
std::vector<DataMatrixToken> ReadDataMatrixTokens(std::string_view text, char escape);

}  // namespace Barcode::Encoder
