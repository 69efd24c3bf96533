#pragma once

#include <string>
#include <string_view>
#include <vector>

#include "Barcode/Encoder/RetailEncoders.h"

/// Checking and repair of the data of EAN and UPC symbols, and the groups in which people read them. In each symbology
/// Encode repairs first, so its data may bring their check digit along.
namespace ZplCore {

namespace EAN13 {

std::string TransformInvalidInput(std::string const& text);
Barcode::Encoder::ValidationStatus Validate(std::string_view text);
Barcode::Encoder::LinearModel Encode(std::string const& text);
/// The first digit, the six of the left half, the six of the right half.
std::vector<std::string> SplitUpText(std::string const& data, std::string const& checkDigit);

}  // namespace EAN13

namespace EAN8 {

std::string TransformInvalidInput(std::string const& text);
Barcode::Encoder::ValidationStatus Validate(std::string_view text);
Barcode::Encoder::LinearModel Encode(std::string const& text);
/// Why digits are refused, where their number or what they begin with is the reason.
std::string_view Reason(std::string_view text);
/// Four digits and four.
std::vector<std::string> SplitUpText(std::string const& data, std::string const& checkDigit);

}  // namespace EAN8

namespace UPCA {

std::string TransformInvalidInput(std::string const& text);
Barcode::Encoder::ValidationStatus Validate(std::string_view text);
Barcode::Encoder::LinearModel Encode(std::string const& text);
/// The system digit, five digits, five digits, the check digit.
std::vector<std::string> SplitUpText(std::string const& data, std::string const& checkDigit);

}  // namespace UPCA

namespace UPCE {

/// Six digits, or the system digit and six; ten digits are a maker's number and a product's number to be compressed.
std::string TransformInvalidInput(std::string const& text);
Barcode::Encoder::ValidationStatus Validate(std::string_view text);
Barcode::Encoder::LinearModel Encode(std::string const& text);
/// Why digits are refused, where their number or what they begin with is the reason.
std::string_view Reason(std::string_view text);
/// The system digit, six digits, the check digit.
std::vector<std::string> SplitUpText(std::string const& data, std::string const& checkDigit);

/// Whether a maker's and a product's number of five digits each can be told in six (zero suppression).
bool IsValidInput(std::string_view tenDigits);

}  // namespace UPCE

}  // namespace ZplCore
