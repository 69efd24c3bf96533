#include "printengine/src/fonts/PixelFit.h"

#include <ft2build.h>
#include FT_BBOX_H
#include FT_OUTLINE_H

#include <algorithm>
#include <cmath>
#include <string_view>

namespace PrintEngine::Fonts {

namespace {

/// Strokes with ink on both sides need three columns to be read.
constexpr std::u32string_view Crossed = U"ft{}*";
constexpr int CrossedColumns = 3;

/// Slanted strokes that stand between figures; they lean out of their advance, but are not meant to meet anything.
constexpr std::u32string_view Slashes = U"/\\";

bool IsOneOf(std::u32string_view characters, char32_t character) {
    return characters.find(character) != characters.npos;
}

/// Rules and the letters of running hands join, and some letters of large type reach over their neighbours.
bool IsToReachOut(char32_t character, double left, double right, double ownAdvance) {
    constexpr double Pixel = 1;
    bool const fills = right - left >= ownAdvance && !IsOneOf(Slashes, character);
    return fills || left < -Pixel || right > ownAdvance + Pixel;
}

}  // namespace

void FitToPixels(FT_Outline_& outline, char32_t character, int advance, double ownAdvance) {
    FT_BBox box;
    if (outline.n_points == 0 || FT_Outline_Get_BBox(&outline, &box) != 0) return;
    double const left = static_cast<double>(box.xMin) / 64;
    double const right = static_cast<double>(box.xMax) / 64;
    double const width = right - left;
    if (width <= 0 || advance < 2 || IsToReachOut(character, left, right, ownAdvance)) return;

    double const rounded = std::max(1.0, std::round(width));
    bool const needsAll = advance <= CrossedColumns && IsOneOf(Crossed, character);
    double const room = needsAll ? advance : advance - 1;
    double const columns = std::min(rounded, room);
    double const first = std::clamp(std::round((left + right - columns) / 2), 0.0, room - columns);
    double const scale = columns / width;
    for (short i = 0; i < outline.n_points; ++i) {
        auto& x = outline.points[i].x;
        x = std::lround(first * 64 + static_cast<double>(x - box.xMin) * scale);
    }
}

}  // namespace PrintEngine::Fonts
