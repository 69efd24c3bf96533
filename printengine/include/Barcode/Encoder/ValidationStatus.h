#pragma once

namespace Barcode::Encoder {

/// What an encoder says about data before it is encoded.
enum class ValidationStatus {
    Valid = 0,
    InvalidCharacter = 1,   ///< a character outside the symbology's set
    InvalidCheckDigit = 2,  ///< a supplied check digit does not match
    TooLong = 3,
    TooShort = 4,
    InvalidParameter = 5,  ///< a parameter makes the symbol impossible
};

}  // namespace Barcode::Encoder
