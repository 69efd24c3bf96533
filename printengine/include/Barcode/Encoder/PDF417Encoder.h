#pragma once

#include <string>

#include "Barcode/Encoder/ValidationStatus.h"
#include "Barcode/Model/BarcodeModels.h"
#include "Scripting/Api.h"

namespace Barcode::Encoder {

/// PDF417 (ISO/IEC 15438). Texts are bytes.
struct PRINTENGINE_API PDF417Encoder {
    /// `security` is a level from 0 to 8, `columns` 1 to 30, `rows` 3 to 90 with fewer than 929 codewords in all; 0
    /// leaves a side to the encoder, which makes about twice as many rows as columns.
    static ValidationStatus Validate(std::string const& text, unsigned security, unsigned columns, unsigned rows);
    /// A narrow block for each module. No rows if the text does not fit. `truncated` leaves out the right row
    /// indicators and all but one bar of the stop pattern.
    static Model::StackedBarcodeModel Encode(std::string const& text, unsigned security, unsigned columns,
                                             unsigned rows, bool truncated);
};

}  // namespace Barcode::Encoder
