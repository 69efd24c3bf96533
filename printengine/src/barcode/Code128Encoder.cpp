#include "Barcode/Encoder/Code128Encoder.h"

#include <algorithm>

#include "printengine/src/barcode/Code128Characters.h"
#include "printengine/src/barcode/Code128Patterns.h"

namespace Barcode::Encoder {

namespace {

/// Longer data would not fit on the widest page with the narrowest bars, even as pairs of digits.
constexpr std::size_t MaxLength = 6000;

constexpr std::size_t ContainerNumberLength = 20;

/// Bars and spaces of one pattern, a block for each module.
void AppendPattern(int pattern, std::vector<Model::Block>& blocks) {
    int divisor = 1;
    while (pattern / divisor >= 10) divisor *= 10;
    for (bool isBar = true; divisor != 0; divisor /= 10, isBar = !isBar) {
        auto const width = static_cast<std::size_t>(pattern / divisor % 10);
        blocks.insert(blocks.end(), width, isBar ? Model::Block::NarrowBar() : Model::Block::NarrowSpace());
    }
}

/// Weighted modulo 103: the start character and the first after it count once, the next twice, and so on.
int CheckCharacter(std::vector<int> const& characters) {
    std::size_t sum = static_cast<std::size_t>(characters.front());
    for (std::size_t i = 1; i < characters.size(); ++i) sum = (sum + i * static_cast<std::size_t>(characters[i])) % 103;
    return static_cast<int>(sum % 103);
}

/// Whether the last digit makes the sum of all digits, every second one counted three times, a multiple of ten.
bool HasModulo10CheckDigit(std::string_view digits) {
    int sum = 0;
    for (std::size_t i = 0; i < digits.size(); ++i) sum += (digits[digits.size() - 1 - i] - '0') * (i % 2 == 1 ? 3 : 1);
    return sum % 10 == 0;
}

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
    return HasModulo10CheckDigit(text) ? ValidationStatus::Valid : ValidationStatus::InvalidCheckDigit;
}

std::unique_ptr<Model::LinearBarcodeModel> Code128Encoder::Encode(std::string const& text, Code128EncodeMode mode) {
    bool const startsWithFnc1 = mode == Code128EncodeMode::Ucc || mode == Code128EncodeMode::Gs1;
    std::vector<int> characters = mode == Code128EncodeMode::Manual ? ManualCode128Characters(text)
                                                                    : ShortestCode128Characters(text, startsWithFnc1);
    std::vector<Model::Block> blocks;
    if (!characters.empty()) {
        characters.push_back(CheckCharacter(characters));
        blocks.reserve(characters.size() * 11 + 13);
        for (int const character : characters)
            AppendPattern(Code128Patterns[static_cast<std::size_t>(character)], blocks);
        AppendPattern(Code128StopPattern, blocks);
    }
    return std::make_unique<Model::LinearBarcodeModel>(text, std::move(blocks));
}

}  // namespace Barcode::Encoder
