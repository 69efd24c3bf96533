#pragma once

#include <string>
#include <string_view>

#include "Barcode/Encoder/Code128Encoder.h"

/// From the language's own notation for Code 128 (ISO/IEC 15417) to what the encoder takes, and to the line that people
/// read. All texts are bytes.
namespace ZplCore::Code128 {

/// The encoder's control bytes.
enum ControlByte : unsigned char {
    Fnc3 = 224,
    Fnc2 = 225,
    Shift = 226,
    CodeC = 227,
    CodeB = 228,
    CodeA = 229,
    Fnc1 = 230,
    StartA = 231,
    StartB = 232,
    StartC = 233,
};

namespace ModeN {

/// In mode N the host chooses the subsets by invocations: `>` and one character. Data that a subset cannot carry are
/// dropped. `ucc` completes an odd group of digits by its check digit.
std::string ConvertZplInvocations(std::string_view text, bool ucc);

}  // namespace ModeN

std::string ModeNEncoderInputTransform(std::string const& data, bool ucc);
std::string ModeNTransformHRText(std::string const& data, bool ucc);

/// In mode A the encoder chooses the subsets. A backslash that follows none is an escape and not part of the text.
std::string ModeAEncoderInputTransform(std::string const& data);
std::string ModeAHRTextTransform(std::string const& data);

/// Mode U is a serial shipping container code: 19 digits and their check digit. Data are too short, too long or have
/// another character than digits.
Barcode::Encoder::ValidationStatus ModeUValidation(std::string_view data);
/// Up to 19 digits of the data, filled up from the left with 0 to 19, and the check digit.
std::string ModeUEncoderInputTransformWithPadding(std::string_view data);
/// Up to 19 digits of the data and the check digit.
std::string ModeUEncoderInputTransformWithoutPadding(std::string_view data);
/// The digits of the symbol.
std::string ModeUTransformHRText(std::string_view data, bool isPadded);

/// GS1 data with application identifiers. Brackets and blanks are for people; the check digits of the identifiers 00,
/// 01 and 02 are computed anew, whatever the data say.
namespace ModeD {

std::string TransformInput(std::string const& data);
std::string TransformInterpretationLine(std::string const& data);
Barcode::Encoder::ValidationStatus Validate(std::string const& input);
std::unique_ptr<Barcode::Model::LinearBarcodeModel> Encode(std::string const& input);

}  // namespace ModeD

}  // namespace ZplCore::Code128
