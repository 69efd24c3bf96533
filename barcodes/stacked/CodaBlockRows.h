#pragma once

#include <array>
#include <cstdint>
#include <string>
#include <vector>

#include "Barcode/Encoder/Code128Utils.h"

namespace ZplCore {

using CodaBlockSubset = Barcode::Encoder::Code128Utils::ControlCharacter;

/// Something to encode in rows of Code 128.
struct CodaBlockToken {
    std::array<int, 3> values{-1, -1, -1};  ///< symbol character in the subsets A, B and C; -1 where there is none
    bool isExtended = false;                ///< stands behind FNC4
    char digit = 0;                         ///< '0' to '9' of a digit, which makes a pair in subset C

    std::size_t Width() const { return isExtended ? 2 : 1; }
};

/// Data characters of one row; what is left of it is padding.
struct CodaBlockRow {
    CodaBlockSubset first;  ///< in force at its start
    CodaBlockSubset last;   ///< and at its end
    std::vector<int> values;
};

/// Breaks the tokens into rows of `columns` characters, in the subsets that take the fewest of them. Each row may begin
/// in any subset. Nothing is broken that belongs together.
std::vector<CodaBlockRow> BreakCodaBlockRows(std::vector<CodaBlockToken> const& tokens, std::size_t columns);

}  // namespace ZplCore
