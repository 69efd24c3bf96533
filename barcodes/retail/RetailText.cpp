#include "barcodes/retail/RetailText.h"

#include <algorithm>

#include "Barcode/Algorithm/MODX.h"
#include "barcodes/frame/BarcodeArithmetic.h"
#include "frontend/stream/Ascii.h"

namespace ZplCore {

using namespace Barcode::Encoder;
using Barcode::Algorithm::MODX::GenerateUPCCheckDigit;

namespace {

bool IsAllDigits(std::string_view text) { return std::all_of(text.begin(), text.end(), IsAsciiDigit); }

std::string OnlyDigits(std::string const& text) { return KeepCharacters("0123456789")(text); }

std::string PadFront(std::string const& digits, std::size_t length) {
    return digits.size() < length ? std::string(length - digits.size(), '0') + digits : digits;
}

/// Cuts a supplied check digit off.
std::string CutTo(std::string const& text, std::size_t length) {
    return text.size() == length + 1 ? text.substr(0, length) : text;
}

/// Digits with or without their check digit; anything else is the encoder's to refuse.
template <typename Encoder>
ValidationStatus ValidateWithCheckDigit(std::string_view text, std::size_t length) {
    if (!IsAllDigits(text)) return ValidationStatus::InvalidCharacter;
    if (text.size() != length + 1) return Encoder::Validate(text);
    if (text.back() != GenerateUPCCheckDigit(text.substr(0, length))) return ValidationStatus::InvalidCheckDigit;
    return Encoder::Validate(text.substr(0, length));
}

}  // namespace

std::string EAN13::TransformInvalidInput(std::string const& text) { return CutTo(text, 12); }

ValidationStatus EAN13::Validate(std::string_view text) { return ValidateWithCheckDigit<EAN13Encoder>(text, 12); }

LinearModel EAN13::Encode(std::string const& text) { return EAN13Encoder::Encode(TransformInvalidInput(text)); }

std::vector<std::string> EAN13::SplitUpText(std::string const& data, std::string const& checkDigit) {
    std::string const full = TransformInvalidInput(data) + checkDigit;
    return {full.substr(0, 1), full.substr(1, 6), full.substr(7)};
}

std::string UPCA::TransformInvalidInput(std::string const& text) { return CutTo(text, 11); }

ValidationStatus UPCA::Validate(std::string_view text) { return ValidateWithCheckDigit<UPCAEncoder>(text, 11); }

LinearModel UPCA::Encode(std::string const& text) { return UPCAEncoder::Encode(TransformInvalidInput(text)); }

std::vector<std::string> UPCA::SplitUpText(std::string const& data, std::string const& checkDigit) {
    std::string const digits = TransformInvalidInput(data);
    return {digits.substr(0, 1), digits.substr(1, 5), digits.substr(6), checkDigit};
}

std::string EAN8::TransformInvalidInput(std::string const& text) {
    std::string const digits = OnlyDigits(text);
    switch (digits.size()) {
        case 8: return digits.substr(0, 7);
        case 9:
        case 10:
        case 11: return PadFront(digits.substr(5), 7);
        case 12: return digits.substr(5);
        case 13: return digits.substr(5, 7);
        default: return PadFront(digits, 7);
    }
}

ValidationStatus EAN8::Validate(std::string_view text) {
    if (text.size() < 7) return ValidationStatus::TooShort;
    if (!IsAllDigits(text)) return ValidationStatus::InvalidCharacter;
    if (text.size() == 8 && text[7] != GenerateUPCCheckDigit(text.substr(0, 7)))
        return ValidationStatus::InvalidCheckDigit;
    // A full EAN-13 is refused for its check digit only if that is wrong; hosts know these answers.
    if (text.size() == 13)
        return text[12] == GenerateUPCCheckDigit(text.substr(5, 7)) ? ValidationStatus::InvalidCharacter
                                                                    : ValidationStatus::InvalidCheckDigit;
    if (text.size() == 12) return ValidationStatus::InvalidCharacter;
    if (text.size() > 12) return ValidationStatus::TooLong;
    return text.size() < 9 ? ValidationStatus::Valid : ValidationStatus::TooShort;
}

std::string_view EAN8::Reason(std::string_view text) {
    constexpr std::size_t Full = 8;
    return IsAllDigits(text) && text.size() > Full ? "there are too many; EAN-8 has 7 digits, or 8 with the check digit"
                                                   : std::string_view();
}

LinearModel EAN8::Encode(std::string const& text) { return EAN8Encoder::Encode(TransformInvalidInput(text)); }

std::vector<std::string> EAN8::SplitUpText(std::string const& data, std::string const& checkDigit) {
    std::string const full = TransformInvalidInput(data) + checkDigit;
    return {full.substr(0, 4), full.substr(4)};
}

namespace {

bool AreZeros(std::string_view text) { return text.find_first_not_of('0') == std::string_view::npos; }

/// The six digits of a maker's and a product's number, or nothing: the rules of zero suppression in their order.
std::string Compress(std::string_view digits) {
    std::string_view const maker = digits.substr(0, 5);
    std::string_view const product = digits.substr(5);
    if (maker[2] <= '2' && AreZeros(maker.substr(3)) && AreZeros(product.substr(0, 2)))
        return std::string(maker.substr(0, 2)).append(product.substr(2)) + maker[2];
    if (AreZeros(maker.substr(3)) && AreZeros(product.substr(0, 3)))
        return std::string(maker.substr(0, 3)).append(product.substr(3)) + '3';
    if (maker[4] == '0' && AreZeros(product.substr(0, 4))) return std::string(maker.substr(0, 4)) + product[4] + '4';
    if (maker[4] != '0' && AreZeros(product.substr(0, 4)) && product[4] >= '5') return std::string(maker) + product[4];
    return {};
}

}  // namespace

bool UPCE::IsValidInput(std::string_view tenDigits) {
    return tenDigits.size() == 10 && IsAllDigits(tenDigits) && !Compress(tenDigits).empty();
}

std::string UPCE::TransformInvalidInput(std::string const& text) {
    std::string digits = OnlyDigits(text);
    if (digits.size() == 9) {
        digits.insert(digits.begin(), '0');
        digits[6] = digits[5] == '0' ? '4' : '5';
        return digits.substr(0, 7);
    }
    if (digits.size() == 10 && IsValidInput(digits)) return "0" + Compress(digits);
    return PadFront(digits, 6);
}

ValidationStatus UPCE::Validate(std::string_view text) {
    if (!IsAllDigits(text)) return ValidationStatus::InvalidCharacter;
    if (text.size() < 6) return ValidationStatus::TooShort;
    switch (text.size()) {
        case 8:
            if (text[0] != '0') return ValidationStatus::InvalidCharacter;
            return text[7] == UPCEEncoder::CalculateUPCECheckDigit(text.substr(0, 7))
                       ? ValidationStatus::Valid
                       : ValidationStatus::InvalidCheckDigit;
        case 9:
        case 11: return ValidationStatus::InvalidCharacter;
        case 10: return IsValidInput(text) ? ValidationStatus::Valid : ValidationStatus::InvalidCharacter;
        default: return UPCEEncoder::Validate(text);
    }
}

std::string_view UPCE::Reason(std::string_view text) {
    if (!IsAllDigits(text)) return {};
    switch (text.size()) {
        case 7: return "UPC-E of 7 digits begins with 0 or 1";
        case 8: return text[0] == '0' ? std::string_view() : "UPC-E of 8 digits begins with 0";
        case 9:
        case 11: return "UPC-E has 6, 7 or 8 digits, or the 10 of maker and product of a UPC-A";
        case 10: return "a UPC-A of these digits cannot be told in the six of UPC-E";
        default: return {};
    }
}

LinearModel UPCE::Encode(std::string const& text) { return UPCEEncoder::Encode(CutTo(TransformInvalidInput(text), 7)); }

std::vector<std::string> UPCE::SplitUpText(std::string const& data, std::string const& checkDigit) {
    std::string const digits = PadFront(CutTo(TransformInvalidInput(data), 7), 7);
    return {digits.substr(0, 1), digits.substr(1), checkDigit};
}

}  // namespace ZplCore
