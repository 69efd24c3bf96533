#pragma once

#include <memory>
#include <string>
#include <string_view>

#include "Barcode/Encoder/ValidationStatus.h"
#include "Barcode/Model/BarcodeModels.h"
#include "Scripting/Api.h"

namespace Barcode::Encoder {

/// How Code128Encoder reads its input.
enum class Code128EncodeMode {
    Manual,     ///< subsets change only where the control bytes below say so
    Automatic,  ///< the encoder picks subsets so that the symbol is shortest
    Ucc,        ///< a 20-digit shipping container number, start C and FNC1 lead it
    Gs1,        ///< application identifiers; start C and FNC1 lead it
};

/// Code 128 (ISO/IEC 15417). Besides ASCII the input may hold the control bytes 224 to 233: FNC3, FNC2, shift, code C,
/// code B, code A, FNC1, start A, start B, start C. Without a start byte the encoder implies start B, or start C where
/// the first byte is code C. A switch to the subset in force emits nothing. In subset C two digits make a character.
struct PRINTENGINE_API Code128Encoder {
    static ValidationStatus Validate(std::string_view text, Code128EncodeMode mode);
    /// All elements are narrow blocks, one for each module: bars and spaces of 2 to 4 modules are runs of them.
    static std::unique_ptr<Model::LinearBarcodeModel> Encode(std::string const& text, Code128EncodeMode mode);
};

}  // namespace Barcode::Encoder
