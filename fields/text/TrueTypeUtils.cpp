#include "fields/text/TrueTypeUtils.h"

#include <algorithm>
#include <cmath>
#include <iterator>
#include <limits>

namespace TrueTypeUtils {

namespace {

constexpr double PointsPerDot = 0.331;

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
    info.expectedWidth = CreateFont0ExpectedWidths(width);
    return info;
}

/// The last step whose `minimum` is not above `value`; null if there is none.
FontStep const* FindStep(std::array<FontStep, 10> const& steps, std::uint16_t FontStep::*minimum, unsigned value) {
    auto const found =
        std::find_if(steps.rbegin(), steps.rend(), [&](FontStep const& step) { return step.*minimum <= value; });
    return found == steps.rend() ? nullptr : &*found;
}

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
    info.expectedWidth = CreateFont0ExpectedWidths(target);
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

}  // namespace TrueTypeUtils
