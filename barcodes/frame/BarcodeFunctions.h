#pragma once

#include <functional>
#include <memory>
#include <string>
#include <string_view>

#include "Barcode/Encoder/ValidationStatus.h"
#include "Barcode/Model/BarcodeModels.h"

/// What a symbology hands to the frame that draws it.
namespace ZplCore {

using BarcodeStatus = Barcode::Encoder::ValidationStatus;
using BarcodeValidate = std::function<BarcodeStatus(std::string const&)>;
using BarcodeTransform = std::function<std::string(std::string const&)>;
using LinearEncode = std::function<std::unique_ptr<Barcode::Model::LinearBarcodeModel>(std::string const&)>;
/// The line that people read, from the field data as sent and the check digits of the symbol.
using InterpretationText = std::function<std::string(std::string const& data, std::string const& checkDigit)>;
/// Why a text is refused, where the status tells it wrongly or not at all; otherwise empty.
using BarcodeReason = std::function<std::string_view(std::string const&)>;

}  // namespace ZplCore
