#pragma once

#include <string>

#include "Barcode/Encoder/ValidationStatus.h"
#include "Barcode/Model/BarcodeModels.h"
#include "Scripting/Api.h"

namespace Barcode::Encoder {

/// How an Aztec Code symbol is made.
struct AztecOptions {
    /// 0 for the usual error correction, 1 to 99 for at least that many per cent, 101 to 104 for compact symbols of 1
    /// to 4 layers, 201 to 232 for full ones of 1 to 32, 300 for a rune (a number up to 255).
    unsigned size = 0;
    /// The text switches extended channels: a backslash and six digits; two backslashes stand for one.
    bool hasChannels = false;
    bool readerSetUp = false;
    unsigned symbols = 1;  ///< 1 to 26; several share the text in a structured append
    std::string name;      ///< of the structured append

    friend bool operator==(AztecOptions const&, AztecOptions const&) = default;
};

/// Aztec Code (ISO/IEC 24778). Texts are bytes.
struct PRINTENGINE_API AztecEncoder {
    static ValidationStatus Validate(std::string const& text, AztecOptions const& options);
    /// The symbols of a structured append stand in a row, from left to right. No cells if the text does not fit.
    static Model::MatrixBarcodeModel Encode(std::string const& text, AztecOptions const& options);
};

}  // namespace Barcode::Encoder
