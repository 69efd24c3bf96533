#pragma once

#include <string>

#include "Barcode/Encoder/ValidationStatus.h"
#include "Barcode/Model/BarcodeModels.h"
#include "Scripting/Api.h"

namespace Barcode::Encoder {

/// How a QR Code symbol is made.
struct QROptions {
    char level = 'M';     ///< error correction: L, M, Q or H
    unsigned mask = 7;    ///< 0 to 7
    bool kanji = false;   ///< two-byte characters of Shift JIS are packed as such
    unsigned index = 0;   ///< place in a structured append, from 1
    unsigned count = 0;   ///< symbols in the structured append; below 2 there is none
    unsigned parity = 0;  ///< of the whole message of a structured append, one byte

    friend bool operator==(QROptions const&, QROptions const&) = default;
};

/// QR Code, model 2 (ISO/IEC 18004), in the smallest version that holds the text. Texts are bytes.
struct PRINTENGINE_API QREncoder {
    static ValidationStatus Validate(std::string const& text, QROptions const& options);
    /// No cells if the text does not fit.
    static Model::MatrixBarcodeModel Encode(std::string const& text, QROptions const& options);
};

}  // namespace Barcode::Encoder
