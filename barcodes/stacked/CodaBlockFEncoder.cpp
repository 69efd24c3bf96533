#include <algorithm>

#include "barcodes/stacked/CodaBlockEncoders.h"
#include "barcodes/stacked/CodaBlockRows.h"
#include "frontend/stream/Ascii.h"

namespace ZplCore {

using namespace Barcode::Encoder;

namespace {

using Subset = CodaBlockSubset;
using Tokens = std::vector<CodaBlockToken>;

constexpr unsigned MostRows = 44;
constexpr unsigned FewestColumns = 4;
constexpr unsigned MostColumns = 62;
constexpr std::size_t CheckCharacters = 2;
/// Pairs of digits in the largest symbol.
constexpr std::size_t MaxLength = std::size_t{MostRows} * MostColumns * 2;

constexpr unsigned char Fnc1Byte = 0x80;
/// What the bytes from 0x80 on stand for: FNC1 to FNC4, and NUL.
constexpr CodaBlockToken FunctionTokens[] = {
    {{102, 102, 102}}, {{97, 97, -1}}, {{96, 96, -1}}, {{101, 100, -1}}, {{64, -1, -1}}};

bool IsFunction(unsigned char byte) { return byte >= Fnc1Byte && byte < Fnc1Byte + std::size(FunctionTokens); }

CodaBlockToken TokenOf(unsigned char byte) {
    if (IsFunction(byte)) return FunctionTokens[byte - Fnc1Byte];
    CodaBlockToken token;
    token.isExtended = byte >= 128;
    for (Subset const subset : {Subset::CodeA, Subset::CodeB})
        token.values[static_cast<std::size_t>(subset)] = Code128Utils::CharToSCV(byte & 0x7F, subset);
    if (IsAsciiDigit(static_cast<char>(byte))) token.digit = static_cast<char>(byte);
    return token;
}

Tokens TokensOf(std::string const& text, bool leadsWithFnc1) {
    Tokens tokens;
    bool const hasFnc1 = !text.empty() && static_cast<unsigned char>(text[0]) == Fnc1Byte;
    if (leadsWithFnc1 && !hasFnc1) tokens.push_back(FunctionTokens[0]);
    for (char const c : text) tokens.push_back(TokenOf(static_cast<unsigned char>(c)));
    return tokens;
}

/// A number from 0 to 85 as one symbol character. A and B begin with what is apart in them (64 to 95), and go on from
/// the blank without the digits.
int NumberIn(Subset subset, unsigned number) {
    if (subset == Subset::CodeC) return static_cast<int>(number);
    if (number < 32) return static_cast<int>(number + 64);
    return static_cast<int>(number < 48 ? number - 32 : number - 22);
}

/// The sums over the data, weighted from 1 and from 0, modulo 86. Function characters do not count; 0x84 is NUL.
std::array<unsigned, CheckCharacters> CheckSums(std::string const& text) {
    std::array<unsigned, CheckCharacters> sums{};
    unsigned weight = 0;
    for (char const c : text) {
        auto byte = static_cast<unsigned char>(c);
        if (IsFunction(byte) && byte != 0x84) continue;
        if (byte == 0x84) byte = 0;
        sums[1] = (sums[1] + weight * byte) % 86;
        sums[0] = (sums[0] + ++weight * byte) % 86;
    }
    return sums;
}

/// Fills a row up by switches between two subsets.
void Pad(CodaBlockRow& row, std::size_t columns) {
    while (row.values.size() < columns) {
        row.last = row.last == Subset::CodeC ? Subset::CodeB : Subset::CodeC;
        row.values.push_back(row.last == Subset::CodeC ? 99 : 100);
    }
}

std::vector<Barcode::Model::Block> BarsOf(std::vector<int> values) {
    values.push_back(Code128Utils::CheckCharacter(values));
    std::vector<Barcode::Model::Block> blocks;
    blocks.reserve(values.size() * 11 + 13);
    for (int const value : values) Code128Utils::CreateBars(static_cast<unsigned char>(value), blocks);
    Code128Utils::AddStopCode(blocks);
    return blocks;
}

/// One row without indicator: a plain Code 128.
Barcode::Model::StackedBarcodeModel EncodeSingle(Tokens const& tokens) {
    constexpr int StartA = 103;
    auto const rows = BreakCodaBlockRows(tokens, 3 * tokens.size() + 1);
    std::vector<int> values{StartA + static_cast<int>(rows[0].first)};
    values.insert(values.end(), rows[0].values.begin(), rows[0].values.end());
    Barcode::Model::StackedBarcodeModel model(1, 0);
    model.GetBlocks()[0] = BarsOf(std::move(values));
    return model;
}

std::vector<Barcode::Model::Block> EncodeRow(CodaBlockRow const& row, unsigned index, unsigned count) {
    // Every row starts in A, and switches to the subset of its data. The number behind that is the count of the rows in
    // the first, and the place of the row in the others.
    constexpr int StartA = 103;
    constexpr int Selectors[] = {98, 100, 99};
    std::vector<int> values{StartA, Selectors[static_cast<std::size_t>(row.first)],
                            NumberIn(row.first, index == 0 ? count - 2 : index + 42)};
    values.insert(values.end(), row.values.begin(), row.values.end());
    return BarsOf(std::move(values));
}

/// The characters that rows of data take, with the check characters behind them.
std::size_t Used(std::vector<CodaBlockRow> const& rows, unsigned columns) {
    return (rows.size() - 1) * columns + rows.back().values.size() + CheckCharacters;
}

/// The narrowest rows, of so many, that hold the tokens; 0 if none do.
unsigned NarrowestColumns(Tokens const& tokens, unsigned rows) {
    auto const least = static_cast<unsigned>((tokens.size() / 2 + CheckCharacters) / rows);
    for (unsigned columns = std::max(FewestColumns, least); columns <= MostColumns; ++columns) {
        if (Used(BreakCodaBlockRows(tokens, columns), columns) <= std::size_t{rows} * columns) return columns;
    }
    return 0;
}

}  // namespace

BarcodeStatus CodaBlockFEncoder::Validate(std::string const& text, CodaBlockLayout layout) {
    bool const hasColumns = layout.columns == 0 || (layout.columns >= FewestColumns && layout.columns <= MostColumns);
    if (!hasColumns || layout.rows > MostRows) return BarcodeStatus::InvalidParameter;
    if (text.empty()) return BarcodeStatus::TooShort;
    return text.size() > MaxLength ? BarcodeStatus::TooLong : BarcodeStatus::Valid;
}

Barcode::Model::StackedBarcodeModel CodaBlockFEncoder::Encode(std::string const& text, CodaBlockLayout layout,
                                                              bool leadsWithFnc1) {
    Tokens const tokens = TokensOf(text, leadsWithFnc1);
    if (layout.rows == 1 || (layout.rows == 0 && layout.columns == 0)) return EncodeSingle(tokens);
    unsigned const columns = layout.columns != 0 ? layout.columns : NarrowestColumns(tokens, layout.rows);
    if (columns == 0) return {0, 0};
    auto rows = BreakCodaBlockRows(tokens, columns);
    auto const needed = static_cast<unsigned>((Used(rows, columns) + columns - 1) / columns);
    unsigned const count = layout.rows != 0 ? layout.rows : std::max(2U, needed);
    if (needed > count || count > MostRows) return {0, 0};
    rows.resize(count, {Subset::CodeB, Subset::CodeB, {}});
    for (unsigned r = 0; r < count; ++r) Pad(rows[r], r + 1 == count ? columns - CheckCharacters : columns);
    for (unsigned const sum : CheckSums(text)) rows.back().values.push_back(NumberIn(rows.back().last, sum));
    Barcode::Model::StackedBarcodeModel model(count, 0);
    for (unsigned r = 0; r < count; ++r) model.GetBlocks()[r] = EncodeRow(rows[r], r, count);
    return model;
}

}  // namespace ZplCore
