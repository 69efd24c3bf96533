#include "Barcode/Encoder/PDF417Encoder.h"

#include <algorithm>
#include <cmath>
#include <cstdlib>
#include <optional>

#include "printengine/src/barcode/Elements.h"
#include "printengine/src/barcode/PDF417Compaction.h"
#include "printengine/src/barcode/PDF417Patterns.h"

namespace Barcode::Encoder {

namespace {

constexpr unsigned MaxSecurity = 8;
constexpr unsigned MaxColumns = 30;
constexpr unsigned MinRows = 3;
constexpr unsigned MaxRows = 90;
constexpr unsigned MaxCodewords = 928;
/// No symbol holds more digits than this.
constexpr std::size_t MaxLength = 2710;
constexpr unsigned Pad = 900;  // the latch to text, which says nothing at the end

struct Shape {
    unsigned columns;
    unsigned rows;

    bool Holds(unsigned codewords) const {
        return columns <= MaxColumns && rows <= MaxRows && columns * rows >= codewords &&
               columns * rows <= MaxCodewords;
    }
};

/// The shape of a given width, of as many rows as the codewords fill if none are asked for.
Shape OfColumns(unsigned columns, unsigned rows, unsigned codewords) {
    return {columns, rows != 0 ? rows : std::max(MinRows, (codewords + columns - 1) / columns)};
}

/// 0 columns or rows are open; without either, the shape next to twice as many rows as columns.
std::optional<Shape> ChooseShape(unsigned codewords, unsigned columns, unsigned rows) {
    std::optional<Shape> best;
    unsigned const wanted = columns != 0 ? columns
                            : rows != 0  ? (codewords + rows - 1) / rows
                                         : static_cast<unsigned>(std::round(std::sqrt(codewords / 2.0)));
    auto const distance = [&](Shape const& shape) {
        return std::abs(static_cast<int>(shape.columns) - static_cast<int>(std::max(wanted, 1U)));
    };
    for (unsigned c = 1; c <= MaxColumns; ++c) {
        auto const shape = OfColumns(c, rows, codewords);
        bool const isAsked = columns == 0 ? rows == 0 || c >= wanted : c == columns;
        if (isAsked && shape.Holds(codewords) && (!best || distance(shape) < distance(*best))) best = shape;
    }
    return best;
}

/// ISO/IEC 15438, 5.3: the start and stop patterns, and the indicators at both ends of each row, which tell the numbers
/// of rows and columns and the security level by turns.
Model::StackedBarcodeModel Draw(std::vector<unsigned> const& codewords, Shape const& shape, unsigned security,
                                bool truncated) {
    constexpr unsigned CodewordModules = 17;
    constexpr unsigned Start = 0b11111111010101000, Stop = 0b111111101000101001;
    unsigned const frame = truncated ? 2 * CodewordModules + 1 : 4 * CodewordModules + 1;
    Model::StackedBarcodeModel model(shape.rows, shape.columns * CodewordModules + frame);
    unsigned const byRows = (shape.rows - 1) / 3;
    unsigned const bySecurity = security * 3 + (shape.rows - 1) % 3;
    unsigned const byColumns = shape.columns - 1;
    unsigned const left[] = {byRows, bySecurity, byColumns};
    unsigned const right[] = {byColumns, byRows, bySecurity};
    auto codeword = codewords.begin();
    for (unsigned r = 0; r < shape.rows; ++r) {
        auto& row = model.GetBlocks()[r];
        // Neighbouring rows have different patterns for the same codeword, so that a reader notices when it strays.
        auto const append = [&](unsigned value) {
            row.push_back(Model::Block::NarrowBar());
            AppendModules(PDF417Patterns[r % 3][value], CodewordModules - 1, row);
        };
        AppendModules(Start, CodewordModules, row);
        append(30 * (r / 3) + left[r % 3]);
        for (unsigned c = 0; c < shape.columns; ++c) append(*codeword++);
        if (truncated) {
            row.push_back(Model::Block::NarrowBar());
        } else {
            append(30 * (r / 3) + right[r % 3]);
            AppendModules(Stop, CodewordModules + 1, row);
        }
    }
    return model;
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
    auto codewords = CompactPDF417(text, PDF417Start::Text);
    unsigned const corrections = 2U << security;
    auto const shape = ChooseShape(static_cast<unsigned>(codewords.size()) + 1 + corrections, columns, rows);
    if (!shape) return {0, 0};
    unsigned const length = shape->columns * shape->rows - corrections;
    // The length counts itself and the pads, and no error correction.
    codewords.insert(codewords.begin(), length);
    codewords.resize(length, Pad);
    auto const checks = PDF417Corrections(codewords, corrections);
    codewords.insert(codewords.end(), checks.begin(), checks.end());
    return Draw(codewords, *shape, security, truncated);
}

}  // namespace Barcode::Encoder
