#pragma once

#include <string>

#include "barcodes/frame/BarcodeFunctions.h"

namespace ZplCore {

/// Code 49 (AIM BC6) of ASCII, two to eight rows of start, four words and stop. The starting mode follows from the
/// data.
struct Code49Encoder {
    static BarcodeStatus Validate(std::string const& data);
    /// No rows if the data do not fit.
    static Barcode::Model::StackedBarcodeModel Encode(std::string const& data);
};

}  // namespace ZplCore
