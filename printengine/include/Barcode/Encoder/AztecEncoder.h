#pragma once

#include <string>

#include "Barcode/Encoder/ValidationStatus.h"
#include "Barcode/Model/BarcodeModels.h"
#include "Scripting/Api.h"

namespace Barcode::Encoder {

/// Aztec Code (ISO/IEC 24778). Texts are bytes.
struct PRINTENGINE_API AztecEncoder {
    /// `size`: 0 for the usual error correction, 1 to 99 for at least that many per cent, 101 to 104 for compact
    /// symbols of 1 to 4 layers, 201 to 232 for full ones of 1 to 32, 300 for a rune (a number up to 255).
    static ValidationStatus Validate(std::string const& text, unsigned size, unsigned symbols);
    /// The first of `symbols` symbols (1 to 26) that the reader appends, under the name `id`. No cells if the text does
    /// not fit.
    static Model::MatrixBarcodeModel Encode(std::string const& text, unsigned size, bool readerSetUp, unsigned symbols,
                                            std::string const& id);
};

}  // namespace Barcode::Encoder
