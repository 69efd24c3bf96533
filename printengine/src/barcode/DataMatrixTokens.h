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
};

/// Reads a text with escapes; a sequence that means nothing is plain text.
std::vector<DataMatrixToken> ReadDataMatrixTokens(std::string_view text, char escape);

/// What the high-level encoding of ISO/IEC 16022 makes of a text.
struct DataMatrixCodewords {
    std::vector<std::uint8_t> codewords;
    /// The last codeword returns to ASCII mode, and can be left out where it would not fit.
    bool endsWithUnlatch = false;
};

/// The fewest codewords in the modes ASCII, C40, Text and Base 256.
DataMatrixCodewords EncodeDataMatrixTokens(std::vector<DataMatrixToken> const& tokens);

}  // namespace Barcode::Encoder
