#include <string>

#include "Barcode/Encoder/PlanetEncoder.h"
#include "barcodes/linear/Code128Text.h"
#include "barcodes/postal/PostalEncoders.h"
#include "barcodes/retail/RetailText.h"
#include "fuzz/Fuzz.h"

// The symbols of one row of bars: which, a byte of options, and any text. What is found valid has bars; what is not
// must at least be survived, since with validation off it is encoded all the same.

using namespace Barcode::Encoder;
using namespace ZplCore;

namespace {

/// Encoders give nothing for data of which they can take nothing.
bool IsSymbol(LinearModel const& model) {
    return model && !model->GetBlocks().empty() && model->GetBlocks().front().black;
}

void Check128(std::string const& text, unsigned options) {
    using namespace Code128;
    bool const ucc = (options & 1) != 0;
    Code128Encoder::Encode(ModeNEncoderInputTransform(text, ucc), Code128EncodeMode::Manual);
    ModeNTransformHRText(text, ucc);
    Code128Encoder::Encode(ModeAEncoderInputTransform(text), Code128EncodeMode::Automatic);
    ModeAHRTextTransform(text);
    Code128Encoder::Encode(ModeUEncoderInputTransformWithPadding(text), Code128EncodeMode::Ucc);
    auto const gs1 = ModeD::TransformInput(text);
    if (ModeD::Validate(gs1) == ValidationStatus::Valid) ModeD::Encode(gs1);
    ModeD::TransformInterpretationLine(text);
}

/// These are only given what they find valid.
void CheckPostal(std::string const& text, unsigned) {
    if (PostnetEncoder::Validate(text) == ValidationStatus::Valid)
        Require(!PostnetEncoder::Encode(text).GetBars().empty());
    if (PlanetEncoder::Validate(text) == ValidationStatus::Valid)
        Require(!PlanetEncoder::Encode(text).GetBars().empty());
    IntelligentMailEncoder::Reason(text);
    if (IntelligentMailEncoder::Validate(text) == ValidationStatus::Valid)
        Require(!IntelligentMailEncoder::Encode(text).GetBars().empty());
}

/// Encoders that take any text, with or without their options.
template <typename Encoder, typename... Options>
void CheckBars(std::string const& text, Options... options) {
    bool const isSymbol = IsSymbol(Encoder::Encode(text, options...));
    Require(isSymbol || Encoder::Validate(text) != ValidationStatus::Valid);
}

void CheckMsi(std::string const& text, unsigned options) {
    auto const digits = static_cast<MSICheckDigit>(options % 4);
    bool const isSymbol = IsSymbol(MSIEncoder::Encode(text, digits));
    Require(isSymbol || MSIEncoder::Validate(text, digits) != ValidationStatus::Valid);
}

void CheckCodabar(std::string const& text, unsigned options) {
    CheckBars<CodabarEncoder>(text, static_cast<char>('A' + options % 4), static_cast<char>('A' + options / 4 % 4));
}

/// Retail numbers are repaired before they are encoded.
template <auto Repair, auto Validate, auto Encode, auto Split>
void CheckRetail(std::string const& text, unsigned) {
    std::string const repaired = Repair(text);
    if (Validate(repaired) != ValidationStatus::Valid) return;
    auto const model = Encode(repaired);
    Require(IsSymbol(model));
    Split(model->GetText(), model->GetCheckDigit());
}

using Kind = void (*)(std::string const& text, unsigned options);

constexpr Kind Kinds[] = {
    Check128,
    CheckPostal,
    CheckMsi,
    CheckCodabar,
    [](std::string const& text, unsigned options) { CheckBars<Code39Encoder>(text, (options & 1) != 0); },
    [](std::string const& text, unsigned) { CheckBars<Code93Encoder>(text); },
    [](std::string const& text, unsigned options) { CheckBars<Code11Encoder>(text, 1 + (options & 1)); },
    [](std::string const& text, unsigned options) { CheckBars<Interleaved2of5Encoder>(text, (options & 1) != 0); },
    [](std::string const& text, unsigned) { CheckBars<Standard2of5Encoder>(text); },
    [](std::string const& text, unsigned) { CheckBars<Industrial2of5Encoder>(text); },
    [](std::string const& text, unsigned) { CheckBars<PlesseyEncoder>(text); },
    [](std::string const& text, unsigned) { CheckBars<Ext2Encoder>(text); },
    [](std::string const& text, unsigned) { CheckBars<Ext5Encoder>(text); },
    CheckRetail<EAN13::TransformInvalidInput, EAN13::Validate, EAN13::Encode, EAN13::SplitUpText>,
    CheckRetail<EAN8::TransformInvalidInput, EAN8::Validate, EAN8::Encode, EAN8::SplitUpText>,
    CheckRetail<UPCA::TransformInvalidInput, UPCA::Validate, UPCA::Encode, UPCA::SplitUpText>,
    CheckRetail<UPCE::TransformInvalidInput, UPCE::Validate, UPCE::Encode, UPCE::SplitUpText>,
};

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(std::uint8_t const* data, std::size_t size) {
    FuzzInput input(data, size);
    auto const kind = Kinds[input.Byte() % std::size(Kinds)];
    unsigned const options = input.Byte();
    kind(std::string(input.Rest()), options);
    return 0;
}
