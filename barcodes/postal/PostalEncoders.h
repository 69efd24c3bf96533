#pragma once

#include <string>
#include <string_view>

#include "barcodes/frame/BarcodeFunctions.h"
#include "barcodes/postal/PostalModels.h"

namespace ZplCore {

/// POSTNET (USPS Publication 25): 5, 9 or 11 digits; frame bars and the check digit are added.
struct PostnetEncoder {
    static BarcodeStatus Validate(std::string const& text);
    static Barcode::Model::USPS2StateBarcodeModel Encode(std::string const& text);
};

/// Intelligent Mail (USPS-B-3200): 20 digits, and 0, 5, 9 or 11 digits of the place of delivery.
struct IntelligentMailEncoder {
    static BarcodeStatus Validate(std::string const& text);
    /// Why digits are refused.
    static std::string_view Reason(std::string const& text);
    static Barcode::Model::IntelligentMailBarcodeModel Encode(std::string const& text);
};

}  // namespace ZplCore
