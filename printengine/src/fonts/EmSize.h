#pragma once

#include <algorithm>
#include <cmath>

/// The rule by which outlines are scaled; the measured tables of font 0 are made by the same.
namespace PrintEngine::Fonts {

/// The file that draws font 0 and P to V, and the one that draws the alphabets it lacks.
inline constexpr char const* Font0File = "texgyreheroscn-bold.otf";
inline constexpr char const* Font0Supplement = "RobotoCondensed-Bold.ttf";

/// An em in dots of a TrueType font.
inline double TrueTypeEm(double pointSize) { return pointSize / 0.331; }
/// The same, at most far more than a page; 0 for no size.
inline double BoundedTrueTypeEm(double pointSize) {
    double const em = TrueTypeEm(pointSize);
    return em > 0 ? std::min(em, 1e6) : 0;
}
/// An em in dots of a prepared font, which is given half the points at 600 dpi.
inline double PreparedEm(double pointSize, unsigned designDpi) {
    return TrueTypeEm(pointSize) * (designDpi == 600 ? 2 : 1);
}
/// An advance of a part of an em, in whole dots.
inline int AdvanceInDots(double partOfEm, double emWidth) {
    return static_cast<int>(std::lround(std::min(1e6, partOfEm * emWidth)));
}

}  // namespace PrintEngine::Fonts
