#pragma once

#include <memory>
#include <string>
#include <string_view>

#include "Barcode/Encoder/ValidationStatus.h"
#include "Barcode/Model/BarcodeModels.h"
#include "Scripting/Api.h"

namespace Barcode::Encoder {

/// PLANET (USPS Publication 25): 11 or 13 digits; frame bars and the check digit are added.
struct PRINTENGINE_API PlanetEncoder {
    static ValidationStatus Validate(std::string_view text);
    static Model::USPS2StateBarcodeModel Encode(std::string const& text);
};

}  // namespace Barcode::Encoder
