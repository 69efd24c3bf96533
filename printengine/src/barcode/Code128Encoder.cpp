#include "Barcode/Encoder/Code128Encoder.h"

#include <algorithm>

#include "Barcode/Algorithm/MODX.h"
#include "Barcode/Encoder/Code128Utils.h"
#include "printengine/src/barcode/Code128Characters.h"

namespace Barcode::Encoder {

namespace {

/// Longer data would not fit on the widest page with the narrowest bars, even as pairs of digits.
constexpr std::size_t MaxLength = 6000;

constexpr std::size_t ContainerNumberLength = 20;

bool IsAllowed(unsigned char byte, Code128EncodeMode mode) {
    if (byte < 128) return mode != Code128EncodeMode::Ucc || (byte >= '0' && byte <= '9');
    switch (mode) {
        case Code128EncodeMode::Manual: return byte >= Code128Control::Fnc3 && byte <= Code128Control::StartC;
        case Code128EncodeMode::Automatic:
            return byte == Code128Control::Fnc1 || byte == Code128Control::Fnc2 || byte == Code128Control::Fnc3;
        case Code128EncodeMode::Gs1: return byte == Code128Control::Fnc1;
        case Code128EncodeMode::Ucc: return false;
    }
    return false;
}

}  // namespace

ValidationStatus Code128Encoder::Validate(std::string_view text, Code128EncodeMode mode) {
    bool const isContainerNumber = mode == Code128EncodeMode::Ucc;
    if (text.empty()) return ValidationStatus::TooShort;
    if (!std::all_of(text.begin(), text.end(), [&](char c) { return IsAllowed(static_cast<unsigned char>(c), mode); }))
        return ValidationStatus::InvalidCharacter;
    if (text.size() > (isContainerNumber ? ContainerNumberLength : MaxLength)) return ValidationStatus::TooLong;
    if (!isContainerNumber) return ValidationStatus::Valid;
    if (text.size() < ContainerNumberLength) return ValidationStatus::TooShort;
    char const check = Algorithm::MODX::GenerateUPCCheckDigit(text.substr(0, ContainerNumberLength - 1));
    return text.back() == check ? ValidationStatus::Valid : ValidationStatus::InvalidCheckDigit;
}

std::unique_ptr<Model::LinearBarcodeModel> Code128Encoder::Encode(std::string const& text, Code128EncodeMode mode) {
    bool const startsWithFnc1 = mode == Code128EncodeMode::Ucc || mode == Code128EncodeMode::Gs1;
    std::vector<int> characters = mode == Code128EncodeMode::Manual ? ManualCode128Characters(text)
                                                                    : ShortestCode128Characters(text, startsWithFnc1);
    std::vector<Model::Block> blocks;
    if (!characters.empty()) {
        characters.push_back(Code128Utils::CheckCharacter(characters));
        blocks.reserve(characters.size() * 11 + 13);
        for (int const character : characters) Code128Utils::CreateBars(static_cast<unsigned char>(character), blocks);
        Code128Utils::AddStopCode(blocks);
    }
    return std::make_unique<Model::LinearBarcodeModel>(text, std::move(blocks));
}

}  // namespace Barcode::Encoder
