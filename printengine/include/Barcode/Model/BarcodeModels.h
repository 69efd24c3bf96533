#pragma once

#include <string>
#include <utility>
#include <vector>

namespace Barcode::Model {

/// What a model is built of.
enum class SymbologyGroup { Linear, Stacked, Matrix, PostalTwoState, PostalFourState, MaxiCode, Composite };

/// A resolution-free symbol, in modules. Models are values: made by an encoder and not changed afterwards.
class BarcodeModelBase {
public:
    virtual ~BarcodeModelBase() = default;
    virtual SymbologyGroup GetSymbologyGroup() const = 0;
};

/// One bar or space: whether it is wide, and whether it is painted.
struct Block {
    bool wide = false;
    bool black = false;

    constexpr Block() = default;
    constexpr Block(bool isWide, bool isBlack) : wide(isWide), black(isBlack) {}

    static constexpr Block NarrowBar() { return {false, true}; }
    static constexpr Block NarrowSpace() { return {false, false}; }

    friend constexpr bool operator==(Block, Block) = default;
};

/// A row of bars and spaces from left to right.
class LinearBarcodeModel : public BarcodeModelBase {
public:
    explicit LinearBarcodeModel(std::string text, std::vector<Block> blocks = {}, std::string checkDigit = {})
        : text_(std::move(text)), blocks_(std::move(blocks)), checkDigit_(std::move(checkDigit)) {}

    SymbologyGroup GetSymbologyGroup() const override { return SymbologyGroup::Linear; }
    std::string const& GetText() const { return text_; }
    std::vector<Block> const& GetBlocks() const { return blocks_; }
    std::vector<Block>& GetBlocks() { return blocks_; }
    /// The check digits as they are printed; empty if the symbol has none.
    std::string const& GetCheckDigit() const { return checkDigit_; }
    void SetCheckDigit(std::string digits) { checkDigit_ = std::move(digits); }

private:
    std::string text_;
    std::vector<Block> blocks_;
    std::string checkDigit_;
};

/// Rows of bars and spaces, from the top.
class StackedBarcodeModel : public BarcodeModelBase {
public:
    StackedBarcodeModel(unsigned rows, unsigned cols) : cols_(cols), blocks_(rows) {
        for (auto& row : blocks_) row.reserve(cols);
    }

    SymbologyGroup GetSymbologyGroup() const override { return SymbologyGroup::Stacked; }
    unsigned GetRows() const { return static_cast<unsigned>(blocks_.size()); }
    unsigned GetCols() const { return cols_; }
    std::vector<std::vector<Block>> const& GetBlocks() const { return blocks_; }
    std::vector<std::vector<Block>>& GetBlocks() { return blocks_; }

private:
    unsigned cols_;
    std::vector<std::vector<Block>> blocks_;
};

/// Square cells, rows from the top; true is dark.
class MatrixBarcodeModel : public BarcodeModelBase {
public:
    MatrixBarcodeModel(unsigned long rows, unsigned long cols) {
        // Each row is made where it stays: a copy of one is made cell by cell.
        cells_.reserve(rows);
        while (cells_.size() < rows) cells_.emplace_back(cols);
    }

    SymbologyGroup GetSymbologyGroup() const override { return SymbologyGroup::Matrix; }
    std::vector<std::vector<bool>> const& GetCells() const { return cells_; }
    std::vector<std::vector<bool>>& GetCells() { return cells_; }

private:
    std::vector<std::vector<bool>> cells_;
};

/// Bars on one base line from left to right; true is tall.
class USPS2StateBarcodeModel : public BarcodeModelBase {
public:
    explicit USPS2StateBarcodeModel(std::vector<bool> bars = {}) : bars_(std::move(bars)) {}

    SymbologyGroup GetSymbologyGroup() const override { return SymbologyGroup::PostalTwoState; }
    std::vector<bool> const& GetBars() const { return bars_; }
    std::vector<bool>& GetBars() { return bars_; }

private:
    std::vector<bool> bars_;
};

}  // namespace Barcode::Model
