#pragma once

#include <string>
#include <string_view>

#include "Barcode/Encoder/ValidationStatus.h"
#include "barcodes/postal/PostalModels.h"

namespace Barcode::Encoder {

/// POSTNET (USPS Publication 25): 5, 9 or 11 digits; frame bars and the check digit are added.
struct PostnetEncoder {
    static ValidationStatus Validate(std::string const& text);
    static Model::USPS2StateBarcodeModel Encode(std::string const& text);
};

/// Intelligent Mail (USPS-B-3200): 20 digits, and 0, 5, 9 or 11 digits of the place of delivery.
struct IntelligentMailEncoder {
    static ValidationStatus Validate(std::string const& text);
    /// Why digits are refused.
    static std::string_view Reason(std::string const& text);
    static Model::IntelligentMailBarcodeModel Encode(std::string const& text);
};

}  // namespace Barcode::Encoder
