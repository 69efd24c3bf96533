#include <cstdint>
#include <string>

#include "barcodes/Code128Text.h"

/// The notations of Code 128 with any bytes, up to the symbol.
extern "C" int LLVMFuzzerTestOneInput(std::uint8_t const* data, std::size_t size) {
    using namespace ZplCore::Code128;
    using Barcode::Encoder::Code128EncodeMode;
    using Barcode::Encoder::Code128Encoder;
    if (size == 0) return 0;
    std::string const text(reinterpret_cast<char const*>(data) + 1, size - 1);
    bool const ucc = (data[0] & 1) != 0;
    Code128Encoder::Encode(ModeNEncoderInputTransform(text, ucc), Code128EncodeMode::Manual);
    ModeNTransformHRText(text, ucc);
    Code128Encoder::Encode(ModeAEncoderInputTransform(text), Code128EncodeMode::Automatic);
    ModeAHRTextTransform(text);
    Code128Encoder::Encode(ModeUEncoderInputTransformWithPadding(text), Code128EncodeMode::Ucc);
    auto const gs1 = ModeD::TransformInput(text);
    if (ModeD::Validate(gs1) == Barcode::Encoder::ValidationStatus::Valid) ModeD::Encode(gs1);
    ModeD::TransformInterpretationLine(text);
    return 0;
}
