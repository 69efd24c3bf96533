#include "barcodes/matrix/MaxiCodeEncoder.h"

#include <algorithm>

#include "Barcode/Encoder/ModuleEncoder.h"
#include "frontend/stream/Ascii.h"

namespace ZplCore {

using namespace Barcode::Encoder;

namespace {

constexpr std::size_t ClassAndCountry = 6;
constexpr unsigned PostalMode = 2;
constexpr unsigned InternationalPostalMode = 3;

std::size_t PostalCodeLength(unsigned mode) { return mode == PostalMode ? 9 : 6; }

/// What code set A of the symbology can print.
bool IsPostalCharacter(char c) {
    constexpr std::string_view CodeSetA = "ABCDEFGHIJKLMNOPQRSTUVWXYZ0123456789 \"#$%&'()*+,-./:";
    return CodeSetA.find(ToAsciiUpper(c)) != std::string_view::npos;
}

bool HasPrimary(unsigned mode) { return mode == PostalMode || mode == InternationalPostalMode; }

}  // namespace

BarcodeStatus MaxiCodeEncoder::Validate(std::string const& data, unsigned mode) {
    constexpr std::size_t MaxLength = 150;
    if (mode < 2 || mode > 6) return BarcodeStatus::InvalidParameter;
    if (data.empty()) return BarcodeStatus::TooShort;
    if (data.size() > MaxLength) return BarcodeStatus::TooLong;
    if (!HasPrimary(mode)) return BarcodeStatus::Valid;
    if (data.size() < ClassAndCountry + PostalCodeLength(mode)) return BarcodeStatus::TooShort;
    auto const number = std::string_view(data).substr(0, ClassAndCountry);
    auto const code = std::string_view(data).substr(ClassAndCountry, PostalCodeLength(mode));
    bool const isNumber = std::all_of(number.begin(), number.end(), IsAsciiDigit);
    bool const isCode = std::all_of(code.begin(), code.end(), mode == PostalMode ? IsAsciiDigit : IsPostalCharacter);
    return isNumber && isCode ? BarcodeStatus::Valid : BarcodeStatus::InvalidCharacter;
}

Barcode::Model::MaxiCodeBarcodeModel MaxiCodeEncoder::Encode(std::string const& data, unsigned mode, unsigned index,
                                                             unsigned count) {
    ModuleRequest request;
    request.symbology = ModuleSymbology::MaxiCode;
    request.data = data;
    request.mode = mode;
    request.index = index;
    request.count = count;
    if (HasPrimary(mode)) {
        // The language has the class of service first, the symbology the postal code.
        std::size_t const length = PostalCodeLength(mode);
        request.primary = data.substr(ClassAndCountry, length) + data.substr(3, 3) + data.substr(0, 3);
        request.data = data.substr(ClassAndCountry + length);
        if (request.data.empty()) request.data = " ";
    }
    return Barcode::Model::MaxiCodeBarcodeModel(EncodeModules(request).rows);
}

}  // namespace ZplCore
