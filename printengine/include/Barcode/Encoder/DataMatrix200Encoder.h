#pragma once

#include <string>

#include "Barcode/Encoder/ValidationStatus.h"
#include "Barcode/Model/BarcodeModels.h"
#include "Scripting/Api.h"

namespace Barcode::Encoder {

/// The size of a symbol in modules; 0 x 0 is the smallest that fits.
struct DMSize {
    unsigned columns = 0;
    unsigned rows = 0;

    friend bool operator==(DMSize, DMSize) = default;
};

/// Data Matrix ECC 200 (ISO/IEC 16022). Texts are bytes. Behind the escape character stand: itself; `1` for FNC1; `2`
/// and nine digits for structured append; `3` for reader programming; `5` and `6` for the macros; `7` and six digits
/// for an extended channel; `d` and three digits for a byte; `@` to `_` for the control characters.
struct PRINTENGINE_API DataMatrix200Encoder {
    /// `aspect` 2 asks for a rectangle where the size is open; any other value for a square.
    static ValidationStatus Validate(std::string const& text, DMSize size, char escape, unsigned aspect);
    /// No cells if the text does not fit.
    static Model::MatrixBarcodeModel Encode(std::string const& text, DMSize size, char escape, unsigned aspect);
};

}  // namespace Barcode::Encoder
