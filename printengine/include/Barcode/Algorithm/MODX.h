#pragma once

#include <string_view>

namespace Barcode::Algorithm::MODX {

/// The modulus 10 check digit of a run of digits (GS1 General Specifications, 7.9): weights 3 and 1 from the right.
constexpr char GenerateUPCCheckDigit(std::string_view digits) {
    unsigned sum = 0;
    bool isThreefold = true;
    for (std::size_t i = digits.size(); i-- > 0; isThreefold = !isThreefold)
        sum = (sum + static_cast<unsigned>(digits[i] - '0') * (isThreefold ? 3 : 1)) % 10;
    return static_cast<char>('0' + (10 - sum) % 10);
}

}  // namespace Barcode::Algorithm::MODX
