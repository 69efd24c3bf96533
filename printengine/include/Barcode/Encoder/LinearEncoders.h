#pragma once

#include <memory>
#include <string>
#include <string_view>

#include "Barcode/Encoder/ValidationStatus.h"
#include "Barcode/Model/BarcodeModels.h"
#include "Scripting/Api.h"

/// Symbologies of one row of bars. Validate tells whether Encode can take a text. What Encode cannot take it leaves
/// out. Symbols of two element widths are made of narrow and wide blocks, others of one narrow block for each module.
namespace Barcode::Encoder {

using LinearModel = std::unique_ptr<Model::LinearBarcodeModel>;

/// Code 39 (ISO/IEC 16388): upper case letters, digits and `-. $/+%`. Start and stop are added.
struct PRINTENGINE_API Code39Encoder {
    static ValidationStatus Validate(std::string_view text);
    /// `withCheckDigit` ends the data with the check character of modulo 43.
    static LinearModel Encode(std::string const& text, bool withCheckDigit);
};

/// Code 93 (AIM BC5): the set of Code 39, and the four shift characters as `&` ($), `'` (%), `(` (/) and `)` (+). The
/// two check characters are always part of the symbol. Modules.
struct PRINTENGINE_API Code93Encoder {
    static ValidationStatus Validate(std::string_view text);
    static LinearModel Encode(std::string const& text);
};

/// Code 11 (AIM USD-8): digits and `-`, with one check digit (C) or two (C and K).
struct PRINTENGINE_API Code11Encoder {
    static ValidationStatus Validate(std::string_view text);
    static LinearModel Encode(std::string const& text, unsigned checkDigits);
};

/// Codabar (ANSI/AIM BC3): digits and `-$:/.+` between two of the letters A to D.
struct PRINTENGINE_API CodabarEncoder {
    static ValidationStatus Validate(std::string_view text);
    static LinearModel Encode(std::string const& text, char start, char stop);
};

/// Interleaved 2 of 5 (ISO/IEC 16390): digits in pairs; an odd count is led by 0.
struct PRINTENGINE_API Interleaved2of5Encoder {
    static ValidationStatus Validate(std::string_view text);
    static LinearModel Encode(std::string const& text, bool withCheckDigit);
};

/// 2 of 5 with the data in the bars alone, between the start and stop patterns of IATA.
struct PRINTENGINE_API Standard2of5Encoder {
    static ValidationStatus Validate(std::string_view text);
    static LinearModel Encode(std::string const& text);
};

/// 2 of 5 with the data in the bars alone, between the three-bar start and stop patterns of industry.
struct PRINTENGINE_API Industrial2of5Encoder {
    static ValidationStatus Validate(std::string_view text);
    static LinearModel Encode(std::string const& text);
};

/// Which check digits an MSI symbol ends with.
enum class MSICheckDigit { None, Mod10, TwoMod10, Mod11Mod10 };

/// MSI: up to 14 digits, 13 with check digits.
struct PRINTENGINE_API MSIEncoder {
    static ValidationStatus Validate(std::string_view text, MSICheckDigit checkDigits);
    static LinearModel Encode(std::string const& text, MSICheckDigit checkDigits);
};

/// Plessey: hexadecimal digits, followed by a cyclic check of eight bits (two digits).
struct PRINTENGINE_API PlesseyEncoder {
    static ValidationStatus Validate(std::string_view text);
    static LinearModel Encode(std::string const& text);
};

}  // namespace Barcode::Encoder
