#pragma once

#include <array>
#include <cstddef>
#include <cstdint>

#include "Scripting/GraphicContext.h"
#include "fields/text/FontSteps.h"

/// The advance of a character over the width of its cell, as a straight line: dots = intercept + width * slope.
struct Font0WidthTrend {
    float intercept;
    float slope;
    std::uint32_t codePoint;

    double At(unsigned width) const { return double{intercept} + double{slope} * width; }
};

/// A sorted list of cell widths.
struct WidthList {
    std::uint16_t const* begin;
    std::uint16_t const* end;
};

/// What a cached font hands to the drawing target, and the measures of the outline that draws font 0. The build makes
/// the tables from the font file, by the rule that draws it: tools/MakeFontTables.cpp.
struct Font0ScaleInfo : Scripting::ScaledFontMetrics {
    static constexpr std::size_t CapturedCount = 147;

    template <typename Value, std::size_t Count>
    using Table = std::array<Value, Count>;
    using CapturedRow = Table<std::uint16_t, CapturedCount>;

    /// The sizes of the fonts P to V.
    static constexpr auto const& FontSteps = TrueTypeUtils::FontSteps;

    /// The characters of the captured tables, ascending.
    static CapturedRow const CapturedZplChars;
    /// Advances in dots in a square cell: a row for each height from 10 to 44 dots.
    static Table<CapturedRow, 35> const CapturedZPLCharWidths_10_44;
    /// A row for each fifth height from 45 to 300: the advance, and how much of it lies right of the ink.
    static Table<CapturedRow, 52> const CapturedZPLCharWidths_45_300;
    static Table<CapturedRow, 52> const CapturedZPLCharTrailingSpaces_45_300;
    /// Ascending by code point.
    static Table<Font0WidthTrend, 567> const Font0WidthTrends;
    /// For each character from 32 to 126 the cell widths at which its trend gives a dot too much.
    static Table<WidthList, 95> const OverWidthRanges;
    /// The cell widths at which the trend of the digits gives a dot too few.
    static Table<std::uint16_t, 119> const DigitUnderWidths;
};
