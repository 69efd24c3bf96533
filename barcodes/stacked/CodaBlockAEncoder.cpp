#include <algorithm>

#include "Barcode/Encoder/LinearEncoders.h"
#include "barcodes/stacked/CodaBlockEncoders.h"

namespace ZplCore {

using namespace Barcode::Encoder;

namespace {

constexpr std::string_view Alphabet = "0123456789ABCDEFGHIJKLMNOPQRSTUVWXYZ-. $/+%";
constexpr unsigned MostRows = 22;
constexpr unsigned FewestColumns = 2;
constexpr unsigned MostColumns = 62;

/// The first row tells the number of rows by one of the last 21 characters, others their place by one of the first.
char RowIndicator(unsigned row, unsigned rows) { return Alphabet[row == 0 ? MostRows - 2 + rows : row]; }

unsigned DividedUp(std::size_t characters, unsigned by) { return static_cast<unsigned>((characters + by - 1) / by); }

}  // namespace

BarcodeStatus CodaBlockAEncoder::Validate(std::string const& text, CodaBlockLayout layout) {
    bool const hasColumns = layout.columns == 0 || (layout.columns >= FewestColumns && layout.columns <= MostColumns);
    if (!hasColumns || layout.rows > MostRows) return BarcodeStatus::InvalidParameter;
    return Code39Encoder::Validate(text);
}

Barcode::Model::StackedBarcodeModel CodaBlockAEncoder::Encode(std::string const& text, CodaBlockLayout layout,
                                                              bool withCheck) {
    std::string data = text;
    bool const isSingle = layout.rows == 1 || (layout.rows == 0 && layout.columns == 0);
    if (withCheck && !isSingle) data += Code39Encoder::Encode(text, true)->GetCheckDigit();
    unsigned columns = layout.columns;
    if (columns == 0) columns = std::max(FewestColumns, DividedUp(data.size(), std::max(1U, layout.rows)));
    unsigned const rows = layout.rows != 0 ? layout.rows : isSingle ? 1 : std::max(2U, DividedUp(data.size(), columns));
    std::size_t const capacity = std::size_t{rows} * columns;
    if (data.size() > capacity || rows > MostRows || (!isSingle && columns > MostColumns)) return {0, 0};
    // A check character stands at the end of the symbol.
    if (!isSingle) data.insert(text.size(), capacity - data.size(), ' ');
    Barcode::Model::StackedBarcodeModel model(rows, 0);
    for (unsigned r = 0; r < rows; ++r) {
        std::string row = isSingle ? data : data.substr(std::size_t{r} * columns, columns);
        if (!isSingle) row.insert(row.begin(), RowIndicator(r, rows));
        model.GetBlocks()[r] = Code39Encoder::Encode(row, false)->GetBlocks();
    }
    return model;
}

}  // namespace ZplCore
