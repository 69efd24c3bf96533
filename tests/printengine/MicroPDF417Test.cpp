#include <gtest/gtest.h>

#include <optional>

#include "../support/LibrarySymbol.h"
#include "Barcode/Encoder/MicroPDF417Encoder.h"
#include "printengine/src/barcode/PDF417Patterns.h"

using namespace Barcode::Encoder;

namespace {

using Rows = std::vector<std::string>;

/// What the library makes of a text in so many columns; none if they are too few.
std::optional<Rows> Library(std::string const& text, unsigned columns) {
    constexpr std::size_t Widths[] = {38, 55, 82, 99};
    auto rows = LibrarySymbol(text, {BARCODE_MICROPDF417, 0, static_cast<int>(columns)});
    if (rows.empty() || rows[0].size() != Widths[columns - 1]) return std::nullopt;
    return rows;
}

Rows Dump(Barcode::Model::StackedBarcodeModel const& model) {
    Rows rows;
    for (auto const& blocks : model.GetBlocks()) {
        rows.emplace_back();
        for (auto const block : blocks) rows.back() += block.black ? '#' : '.';
    }
    return rows;
}

/// Capitals, digits, both cases and bytes, by turns.
std::string Text(std::size_t length) {
    constexpr std::string_view Kinds[] = {"ABCDEFGHIJKLM NOPQRSTUVWXYZ", "0123456789", "aBcDe-fGh,", "\xE9\x80\xFF"};
    std::string text;
    for (std::size_t i = 0; i < length; ++i) text += Kinds[length % 4][i * 7 % Kinds[length % 4].size()];
    return text;
}

TEST(MicroPDF417, EveryModeIsTheLibrarysSymbol) {
    for (unsigned mode = 0; mode < MicroPDF417Encoder::ModeCount; ++mode) {
        auto const shape = MicroPDF417Encoder::ShapeOf(mode);
        unsigned compared = 0;
        for (std::size_t length = 1; length <= 250 && compared < 3; ++length) {
            auto const expected = Library(Text(length), shape.columns);
            if (!expected || expected->size() != shape.rows) continue;
            EXPECT_EQ(Dump(MicroPDF417Encoder::Encode(Text(length), shape, MicroPDF417Linkage::None)), *expected)
                << "mode " << mode << ", " << length << " characters";
            ++compared;
        }
        EXPECT_GT(compared, 0U) << "mode " << mode;
    }
}

/// The codewords of a symbol of four columns.
std::vector<unsigned> Read(Rows const& rows, unsigned firstCluster) {
    std::vector<unsigned> codewords;
    for (std::size_t r = 0; r < rows.size(); ++r) {
        for (std::size_t const x : {10U, 27U, 54U, 71U}) {
            unsigned modules = 0;
            for (std::size_t i = 1; i < 17; ++i) modules = modules << 1 | (rows[r][x + i] == '#' ? 1U : 0U);
            auto const& patterns = PDF417Patterns[(firstCluster + r) % 3];
            codewords.push_back(
                static_cast<unsigned>(std::find(patterns.begin(), patterns.end(), modules) - patterns.begin()));
        }
    }
    return codewords;
}

TEST(MicroPDF417, LinkageComesFirstAndIsProtected) {
    // 918, the latch to text compaction and AB, CD, EF as 30 times the first plus the second; padded with 900.
    auto const rows = Dump(MicroPDF417Encoder::Encode("ABCDEF", {4, 0}, MicroPDF417Linkage::LinearComponent));
    auto const codewords = Read(rows, 1);
    ASSERT_EQ(codewords.size(), 16U);
    EXPECT_EQ(std::vector(codewords.begin(), codewords.begin() + 8),
              (std::vector{918U, 900U, 1U, 63U, 125U, 900U, 900U, 900U}));
    // Eight corrections: the polynomial has the first eight powers of 3 as roots.
    for (unsigned root = 3, i = 0; i < 8; ++i, root = root * 3 % 929) {
        unsigned value = 0;
        for (unsigned const codeword : codewords) value = (value * root + codeword) % 929;
        EXPECT_EQ(value, 0U) << i;
    }
}

TEST(MicroPDF417, WhatDoesNotFitHasNoRows) {
    struct {
        std::string text;
        MicroPDF417Shape shape;
        std::size_t rows;
    } const cases[] = {
        {"ABCDEF", {1, 11}, 11},
        {"ABCDEFG", {1, 11}, 0},
        {"ABCDEFG", {1, 0}, 14},
        {"ABCDEFGHIJKLMNOPQRSTUV", {1, 20}, 20},
        {"AB", {4, 44}, 44},
        {std::string(250, 'A'), {4, 0}, 44},
        {std::string(252, 'A'), {4, 0}, 0},
        {std::string(5000, 'A'), {4, 0}, 0},
    };
    for (auto const& [text, shape, rows] : cases)
        EXPECT_EQ(MicroPDF417Encoder::Encode(text, shape, MicroPDF417Linkage::None).GetRows(), rows) << text;
    EXPECT_EQ(MicroPDF417Encoder::Validate("A", {4, 5}), ValidationStatus::InvalidParameter);
    EXPECT_EQ(MicroPDF417Encoder::Validate("", {4, 4}), ValidationStatus::TooShort);
}

}  // namespace
