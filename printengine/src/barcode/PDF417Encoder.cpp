#include "Barcode/Encoder/PDF417Encoder.h"

#include <algorithm>
#include <cmath>

#include "printengine/src/barcode/PublishedSymbol.h"

namespace Barcode::Encoder {

namespace {

constexpr unsigned MaxSecurity = 8;
constexpr unsigned MaxColumns = 30;
constexpr unsigned MinRows = 3;
constexpr unsigned MaxRows = 90;
constexpr unsigned MaxCodewords = 928;
/// No symbol holds more digits than this.
constexpr std::size_t MaxLength = 2710;
/// Modules of the start pattern, the stop pattern and the row indicators on both sides.
constexpr std::size_t FullFrame = 17 + 18 + 2 * 17;
constexpr std::size_t TruncatedFrame = 17 + 17 + 1;
constexpr std::size_t CodewordWidth = 17;

/// Encodes into exactly so many columns, and rows where they are given; false if that is too small.
bool EncodeShape(PublishedSymbol& symbol, std::string const& text, unsigned security, unsigned columns, unsigned rows) {
    symbol->option_1 = static_cast<int>(security);
    symbol->option_2 = static_cast<int>(columns);
    symbol->option_3 = static_cast<int>(rows);
    if (symbol.Encode(text) != ValidationStatus::Valid) return false;
    std::size_t const frame = symbol->symbology == BARCODE_PDF417COMP ? TruncatedFrame : FullFrame;
    return (columns == 0 || symbol.Columns() == frame + columns * CodewordWidth) &&
           (rows == 0 || symbol.Rows() == rows);
}

/// The codewords that a text needs, to within a row of the widest shape.
unsigned CountCodewords(std::string const& text, unsigned security) {
    PublishedSymbol symbol(BARCODE_PDF417);
    if (!EncodeShape(symbol, text, security, 0, 0)) return 0;
    auto const columns = static_cast<unsigned>((symbol.Columns() - FullFrame) / CodewordWidth);
    return columns * static_cast<unsigned>(symbol.Rows());
}

}  // namespace

ValidationStatus PDF417Encoder::Validate(std::string const& text, unsigned security, unsigned columns, unsigned rows) {
    if (security > MaxSecurity || columns > MaxColumns || (rows != 0 && (rows < MinRows || rows > MaxRows)) ||
        columns * rows > MaxCodewords)
        return ValidationStatus::InvalidParameter;
    if (text.empty()) return ValidationStatus::TooShort;
    return text.size() > MaxLength ? ValidationStatus::TooLong : ValidationStatus::Valid;
}

Model::StackedBarcodeModel PDF417Encoder::Encode(std::string const& text, unsigned security, unsigned columns,
                                                 unsigned rows, bool truncated) {
    if (columns == 0) {
        unsigned const codewords = CountCodewords(text, security);
        if (codewords == 0) return {0, 0};
        double const wanted = rows == 0 ? std::round(std::sqrt(codewords / 2.0)) : std::ceil(codewords / double(rows));
        columns = std::clamp(static_cast<unsigned>(wanted), 1U, MaxColumns);
    }
    PublishedSymbol symbol(truncated ? BARCODE_PDF417COMP : BARCODE_PDF417);
    if (EncodeShape(symbol, text, security, columns, rows)) return symbol.ToStacked();
    return {0, 0};
}

}  // namespace Barcode::Encoder
