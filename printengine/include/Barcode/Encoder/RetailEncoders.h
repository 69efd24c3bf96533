#pragma once

#include "Barcode/Encoder/LinearEncoders.h"

/// EAN and UPC symbols (ISO/IEC 15420), a narrow block for each module, without quiet zones. Texts are digits without
/// their check digit, which Encode computes and the model tells.
namespace Barcode::Encoder {

/// 12 digits.
struct PRINTENGINE_API EAN13Encoder {
    static ValidationStatus Validate(std::string_view text);
    static LinearModel Encode(std::string const& text);
};

/// 7 digits.
struct PRINTENGINE_API EAN8Encoder {
    static ValidationStatus Validate(std::string_view text);
    static LinearModel Encode(std::string const& text);
};

/// 11 digits.
struct PRINTENGINE_API UPCAEncoder {
    static ValidationStatus Validate(std::string_view text);
    static LinearModel Encode(std::string const& text);
};

/// 6 digits with system digit 0, or the system digit (0 or 1) and 6 digits.
struct PRINTENGINE_API UPCEEncoder {
    static ValidationStatus Validate(std::string_view text);
    static LinearModel Encode(std::string_view text);
    /// The check digit of the UPC-A number that 6 or 7 digits stand for.
    static char CalculateUPCECheckDigit(std::string_view text);
    /// The 11 digits of that number.
    static std::string Expand(std::string_view text);
};

/// The supplement of two digits.
struct PRINTENGINE_API Ext2Encoder {
    static ValidationStatus Validate(std::string_view text);
    static LinearModel Encode(std::string const& text);
};

/// The supplement of five digits.
struct PRINTENGINE_API Ext5Encoder {
    static ValidationStatus Validate(std::string_view text);
    static LinearModel Encode(std::string const& text);
};

}  // namespace Barcode::Encoder
