#pragma once

#include <string>

#include "Barcode/Encoder/ValidationStatus.h"
#include "Barcode/Model/BarcodeModels.h"

namespace Barcode::Encoder {

/// Code 49 (AIM BC6) of ASCII, two to eight rows of start, four words and stop. The starting mode follows from the
/// data.
struct Code49Encoder {
    static ValidationStatus Validate(std::string const& data);
    /// No rows if the data do not fit.
    static Model::StackedBarcodeModel Encode(std::string const& data);
};

}  // namespace Barcode::Encoder
