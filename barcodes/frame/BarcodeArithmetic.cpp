#include "barcodes/frame/BarcodeArithmetic.h"

#include <algorithm>
#include <cmath>

#include "frontend/stream/Ascii.h"
#include "frontend/stream/PlainNumber.h"

namespace ZplCore {

unsigned ComputeWideBarWidth(unsigned narrow, float ratio) {
    if (narrow == 0) return 0;
    // Divided and multiplied again on purpose: single precision can round to another dot than the plain product.
    auto const n = static_cast<float>(narrow);
    float const steps = std::floor(n * ratio) / n;
    return static_cast<unsigned>(std::lround(steps * n));
}

float ParseRatio(std::string const& text) {
    if (text.empty() || text[0] < '0' || text[0] > '9') return 0.0F;
    std::string prefix = text.substr(0, text.find_first_not_of("0123456789."));
    // One decimal counts.
    if (prefix.size() > 1 && prefix[1] == '.') prefix.resize(3, '\0');
    return ToPlainNumber<float>(prefix, text);
}

bool CheckRatio(float ratio) { return 2.0F <= ratio && ratio <= 3.0F; }

unsigned ClampBarcodeHeight(unsigned height) { return std::max(height, 1U); }

unsigned MagnificationDefaultDPIConversion(Scripting::Dpi dpi) {
    switch (dpi.Value()) {
        case 300: return 3;
        case 600: return 6;
        default: return 0;
    }
}

unsigned ClampMagnificationFactor(Scripting::Dpi dpi, unsigned value, unsigned limit) {
    return value == 0 ? MagnificationDefaultDPIConversion(dpi) : std::min(limit * 10, value);
}

InterpretationText AddGuardsAndAppendCheckDigit(bool appendCheckDigit, char leading, char trailing,
                                                BarcodeTransform transform) {
    return [=](std::string const& data, std::string const& checkDigit) {
        std::string line(1, leading);
        line += transform ? transform(data) : data;
        if (appendCheckDigit) line += checkDigit;
        return line += trailing;
    };
}

std::string ConvertToUpper(std::string_view text) { return ToAsciiUpper(text); }

BarcodeTransform KeepCharacters(std::string_view alphabet) {
    return [alphabet = std::string(alphabet)](std::string const& text) {
        std::string kept = text;
        std::erase_if(kept, [&](char c) { return alphabet.find(c) == std::string::npos; });
        return kept;
    };
}

}  // namespace ZplCore
