#pragma once

#include <string>

#include "barcodes/frame/BarcodeFunctions.h"
#include "barcodes/matrix/MaxiCodeModel.h"

namespace ZplCore {

/// MaxiCode (ISO/IEC 16023). In modes 2 and 3 the data begin with the class of service and the country, three digits
/// each, and the postal code: nine digits (mode 2) or six characters (mode 3).
struct MaxiCodeEncoder {
    static BarcodeStatus Validate(std::string const& data, unsigned mode);
    /// No cells if the data do not fit.
    static Barcode::Model::MaxiCodeBarcodeModel Encode(std::string const& data, unsigned mode, unsigned index,
                                                       unsigned count);
};

}  // namespace ZplCore
