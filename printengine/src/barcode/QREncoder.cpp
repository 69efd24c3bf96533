#include "Barcode/Encoder/QREncoder.h"

#include <string_view>

#include "printengine/src/barcode/QRRuns.h"
#include "printengine/src/barcode/QRSymbol.h"

namespace Barcode::Encoder {

namespace {

constexpr std::string_view Levels = "LMQH";
/// Version 40 at level L holds no more digits than this.
constexpr std::size_t MaxLength = 7089;
constexpr unsigned MaxSymbols = 16;

struct Range {
    QRSizes sizes;
    unsigned first;  ///< versions
    unsigned last;
};
constexpr Range Ranges[] = {{QRSizes::Small, 1, 9}, {QRSizes::Medium, 10, 26}, {QRSizes::Large, 27, MostQRVersion}};

/// Place, count and parity of a structured append (ISO/IEC 18004, 8).
void AddPlace(QRBits& bits, QROptions const& options) {
    constexpr unsigned StructuredAppend = 3;
    if (options.count < 2) return;
    bits.Add(StructuredAppend, 4);
    bits.Add(options.index - 1, 4);
    bits.Add(options.count - 1, 4);
    bits.Add(options.parity & 0xFF, 8);
}

/// No text takes fewer bits than one of digits.
bool MayFit(std::size_t length, QRShape const& shape) { return length * 10 / 3 <= QRCapacity(shape) * 8; }

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
    auto const characters = QRCharacters(text, options.kanji);
    for (auto const& range : Ranges) {
        if (!MayFit(text.size(), {range.last, options.level, options.mask})) continue;
        QRBits bits;
        AddPlace(bits, options);
        for (auto const& run : QRRuns(characters, range.sizes)) bits.Add(characters, run, range.sizes);
        for (unsigned version = range.first; version <= range.last; ++version) {
            QRShape const shape{version, options.level, options.mask};
            std::size_t const capacity = QRCapacity(shape);
            if (bits.Size() <= capacity * 8) return QRSymbol(bits.Fill(capacity), shape);
        }
    }
    return {0, 0};
}

}  // namespace Barcode::Encoder
