#include <algorithm>
#include <cmath>
#include <iterator>
#include <optional>

#include "fields/text/Font0Characters.h"
#include "fields/text/TrueTypeUtils.h"
#include "frontend/context/Utf8Text.h"

namespace TrueTypeUtils {

namespace {

constexpr unsigned FirstSmall = 10;
constexpr unsigned FirstLarge = 45;
constexpr unsigned LastLarge = 300;
constexpr unsigned LargeStep = 5;
constexpr char32_t FirstListed = 32;
constexpr char32_t LastListed = 126;

constexpr std::size_t CharacterCount() {
    std::size_t count = 0;
    for (auto const& range : Font0CharacterRanges) count += range.last - range.first + 1U;
    return count;
}
static_assert(CharacterCount() == std::tuple_size_v<decltype(Font0ScaleInfo::Font0WidthTrends)>);
static_assert(LastListed - FirstListed + 1 + std::size(CapturedAboveAscii) == Font0ScaleInfo::CapturedCount);

/// The columns of a text's characters in the captured tables; no value if one of them is not captured.
std::optional<std::vector<std::size_t>> CapturedColumns(std::string_view text) {
    auto const& captured = Font0ScaleInfo::CapturedZplChars;
    std::vector<std::size_t> columns;
    for (char32_t const character : ToCodePoints(text)) {
        auto const found = std::lower_bound(captured.begin(), captured.end(), character);
        if (found == captured.end() || *found != character) return std::nullopt;
        columns.push_back(static_cast<std::size_t>(found - captured.begin()));
    }
    return columns;
}

long AddUp(Font0ScaleInfo::CapturedRow const& widths, std::vector<std::size_t> const& columns) {
    long sum = 0;
    for (std::size_t const column : columns) sum += widths[column];
    return sum;
}

/// An empty text is one dot less than nothing, which the unsigned result shows as its largest number.
std::uint16_t GetZplStringLength10_44(std::string_view text, unsigned height) {
    auto const columns = CapturedColumns(text);
    if (!columns) return 0;
    auto const& widths = Font0ScaleInfo::CapturedZPLCharWidths_10_44[height - FirstSmall];
    return static_cast<std::uint16_t>(AddUp(widths, *columns) - 1);
}

/// The length by the row of a height that has one.
long LengthInRow(std::vector<std::size_t> const& columns, unsigned height) {
    std::size_t const row = (height - FirstLarge) / LargeStep;
    return AddUp(Font0ScaleInfo::CapturedZPLCharWidths_45_300[row], columns) -
           Font0ScaleInfo::CapturedZPLCharTrailingSpaces_45_300[row][columns.back()];
}

std::uint16_t GetZplStringLength45_300(std::string_view text, unsigned height) {
    auto const columns = CapturedColumns(text);
    if (!columns || columns->empty()) return 0;
    unsigned const low = height / LargeStep * LargeStep;
    long const lowSum = LengthInRow(*columns, low);
    if (height == low) return static_cast<std::uint16_t>(lowSum);
    double const fraction = static_cast<double>(height - low) / LargeStep;
    long const between = LengthInRow(*columns, low + LargeStep) - lowSum;
    long const length = std::lround(fraction * static_cast<double>(between) + static_cast<double>(lowSum));
    // Long texts are pulled in by a quarter of a character for each 750 dots.
    long const average = std::lround(static_cast<double>(lowSum) / static_cast<double>(columns->size()));
    return static_cast<std::uint16_t>(length - length / 750 * (average / 4));
}

}  // namespace

bool IsSupportedFont0Character(char32_t character) {
    if (character >= FirstListed && character <= LastListed) return true;
    if (character > 0xFFFF) return false;
    auto const range = std::lower_bound(std::begin(Font0CharacterRanges), std::end(Font0CharacterRanges), character,
                                        [](CharacterRange const& r, char32_t c) { return r.last < c; });
    return range != std::end(Font0CharacterRanges) && range->first <= character;
}

std::function<unsigned(char32_t)> CreateFont0ExpectedWidths(unsigned width) {
    return [width](char32_t character) {
        unsigned corrected = width;
        if (character >= FirstListed && character <= LastListed) {
            auto const& over = Font0ScaleInfo::OverWidthRanges[character - FirstListed];
            auto const& under = Font0ScaleInfo::DigitUnderWidths;
            bool const isDigit = character >= U'0' && character <= U'9';
            if (std::binary_search(over.begin, over.end, width)) {
                --corrected;
            } else if (isDigit && std::binary_search(under.begin(), under.end(), width)) {
                ++corrected;
            }
        }
        auto const& trends = Font0ScaleInfo::Font0WidthTrends;
        auto const trend = std::lower_bound(trends.begin(), trends.end(), character,
                                            [](Font0WidthTrend const& row, char32_t c) { return row.codePoint < c; });
        if (trend == trends.end() || trend->codePoint != character) return 0U;
        return static_cast<unsigned>(std::max(0L, std::lround(trend->At(corrected))));
    };
}

std::uint16_t GetZplStringLength(std::string_view text, std::uint16_t height) {
    constexpr unsigned SecondLastMeasured = 250;
    if (height < FirstSmall) return 0;
    if (height < FirstLarge) return GetZplStringLength10_44(text, height);
    if (height <= LastLarge) return GetZplStringLength45_300(text, height);
    int const at250 = GetZplStringLength45_300(text, SecondLastMeasured);
    int const at300 = GetZplStringLength45_300(text, LastLarge);
    // No text is shorter than nothing.
    if (at300 == 0) return 0;
    int const grown = static_cast<int>(height - LastLarge) * (at300 - at250);
    return static_cast<std::uint16_t>(at300 - 1 + grown / static_cast<int>(LastLarge - SecondLastMeasured));
}

}  // namespace TrueTypeUtils
