#include "fields/TrueTypeUtils.h"

#include <algorithm>
#include <cmath>
#include <iterator>
#include <limits>

namespace TrueTypeUtils {

namespace {

constexpr double PointsPerDot = 0.331;

double FontPointSize(unsigned height, Scripting::Dpi dpi) {
    double const points = (0.2192 * height + 0.0955) * 1.5;
    return dpi == Scripting::Dpi(600) ? points / 2 : points;
}

std::uint16_t ToMetric(unsigned dots) {
    return static_cast<std::uint16_t>(std::min<unsigned>(dots, std::numeric_limits<std::uint16_t>::max()));
}

Font0ScaleInfo ScaleFont0(unsigned height, unsigned width, Scripting::Dpi dpi) {
    Font0ScaleInfo info;
    info.pointSize = FontPointSize(height, dpi);
    info.widthPercent = static_cast<double>(width) / height * 100;
    info.cellHeight = ToMetric(height);
    info.descent = ToMetric(static_cast<unsigned>(static_cast<float>(height) * 0.33333334F) - 1);
    info.cellWidth = ToMetric(width);
    return info;
}

/// The last step whose `minimum` is not above `value`; null if there is none.
FontStep const* FindStep(std::array<FontStep, 10> const& steps, std::uint16_t FontStep::*minimum, unsigned value) {
    auto const found =
        std::find_if(steps.rbegin(), steps.rend(), [&](FontStep const& step) { return step.*minimum <= value; });
    return found == steps.rend() ? nullptr : &*found;
}

struct CharacterRange {
    char32_t first;
    char32_t last;
};

// Blocks that the outline of font 0 draws.
constexpr CharacterRange SupportedRanges[] = {
    {0x00A0, 0x017F},  // Latin-1 supplement, Latin extended A
    {0x0192, 0x0192},  // florin
    {0x01FA, 0x01FF},  // Latin letters with acute
    {0x0218, 0x021B},  // Romanian letters
    {0x02C6, 0x02C7},  // circumflex, caron
    {0x02D8, 0x02DD},  // spacing accents
    {0x0384, 0x03CE},  // Greek
    {0x0400, 0x0513},  // Cyrillic
    {0x1E80, 0x1E85},  // Welsh letters
    {0x1EA0, 0x1EF9},  // Vietnamese letters
    {0x2013, 0x2022},  // dashes, quotation marks, daggers, bullet
    {0x2026, 0x2026},  // ellipsis
    {0x2030, 0x2030},  // per mille
    {0x2039, 0x203A},  // angle quotation marks
    {0x20AC, 0x20AC},  // euro
    {0x2116, 0x2122},  // numero, trade mark
};

}  // namespace

Font0ScaleInfo ScaleStepFont(std::array<FontStep, 10> const& steps, unsigned defaultHeight, unsigned height,
                             unsigned width, Scripting::Dpi dpi) {
    constexpr unsigned NoWidthRequested = 10;
    FontStep const& heightStep = *FindStep(steps, &FontStep::minimumHeight, height);
    unsigned const nominal = heightStep.nominalHeight ? heightStep.nominalHeight : defaultHeight;
    auto const* widthStep = FindStep(steps, &FontStep::minimumWidth, width == NoWidthRequested ? defaultHeight : width);
    unsigned const target = widthStep && widthStep->nominalWidth ? widthStep->nominalWidth : defaultHeight;

    Font0ScaleInfo info;
    info.pointSize = FontPointSize(nominal, dpi);
    info.widthPercent = static_cast<double>(target) / nominal * 100;
    info.cellHeight = heightStep.cellHeight;
    info.descent = heightStep.descent;
    info.cellWidth = ToMetric(target);
    info.fourthMetric = heightStep.fourthMetric;
    return info;
}

Font0ScaleInfo ScaleZPLFont(char letter, unsigned height, unsigned width, Scripting::Dpi dpi) {
    if (letter == '0') return ScaleFont0(height, width, dpi);
    for (auto const& table : FontSteps) {
        if (table.letter == letter) return ScaleStepFont(table.steps, table.defaultHeight, height, width, dpi);
    }
    Font0ScaleInfo none;
    none.widthPercent = 0;
    return none;
}

TrueTypeScale ScaleTrueTypeFont(unsigned height, unsigned width) {
    return {height * PointsPerDot, static_cast<double>(width) / height * 100};
}

int ConvertPointSizeToHeightInDots(double pointSize) {
    double const dots = std::round(pointSize / PointsPerDot);
    return static_cast<int>(std::clamp(dots, 0.0, double{std::numeric_limits<int>::max()}));
}

int AdjustYPos(unsigned height) { return static_cast<int>(std::lround(height * 0.19)); }

bool IsSupportedFont0Character(char32_t character) {
    if (character >= 32 && character <= 126) return true;
    auto const range = std::lower_bound(std::begin(SupportedRanges), std::end(SupportedRanges), character,
                                        [](CharacterRange const& r, char32_t c) { return r.last < c; });
    return range != std::end(SupportedRanges) && range->first <= character;
}

}  // namespace TrueTypeUtils
