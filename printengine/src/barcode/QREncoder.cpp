#include "Barcode/Encoder/QREncoder.h"

#include <cstdio>
#include <string_view>

#include "printengine/src/barcode/PublishedSymbol.h"

namespace Barcode::Encoder {

namespace {

constexpr std::string_view Levels = "LMQH";
/// Version 40 at level L holds no more digits than this.
constexpr std::size_t MaxLength = 7089;
constexpr unsigned MaxSymbols = 16;

}  // namespace

ValidationStatus QREncoder::Validate(std::string const& text, QROptions const& options) {
    bool const isAppended = options.count >= 2;
    if (Levels.find(options.level) == std::string_view::npos || options.mask > 7 ||
        (isAppended && (options.count > MaxSymbols || options.index == 0 || options.index > options.count)))
        return ValidationStatus::InvalidParameter;
    if (text.empty()) return ValidationStatus::TooShort;
    return text.size() > MaxLength ? ValidationStatus::TooLong : ValidationStatus::Valid;
}

Model::MatrixBarcodeModel QREncoder::Encode(std::string const& text, QROptions const& options) {
    PublishedSymbol symbol(BARCODE_QRCODE);
    symbol->option_1 = static_cast<int>(Levels.find(options.level)) + 1;
    symbol->option_3 = static_cast<int>(options.mask + 1) << 8 | (options.kanji ? ZINT_FULL_MULTIBYTE : 0);
    if (options.count >= 2) {
        symbol->structapp.index = static_cast<int>(options.index);
        symbol->structapp.count = static_cast<int>(options.count);
        std::snprintf(symbol->structapp.id, sizeof symbol->structapp.id, "%u", options.parity & 0xFF);
    }
    symbol.Encode(text);
    return symbol.ToMatrix();
}

}  // namespace Barcode::Encoder
