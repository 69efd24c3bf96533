#pragma once

#include <optional>
#include <string_view>

#include "Scripting/Dpi.h"
#include "Scripting/GraphicContext.h"
#include "fields/FontSteps.h"

/// What a cached font hands to the drawing target.
using Font0ScaleInfo = Scripting::ScaledFontMetrics;

/// The arithmetic of scalable fonts. Heights and widths are dots of the design resolution.
namespace TrueTypeUtils {

/// The fonts that are scaled to a requested cell and drawn from a cache.
inline constexpr std::string_view CachedFonts = "PQRSTUV0";
/// The name under which the drawing target knows the outline of the cached fonts.
inline constexpr std::string_view Font0Name = "0";

/// The metrics of cached font `letter` for a requested cell; all zero for any other letter.
Font0ScaleInfo ScaleZPLFont(char letter, unsigned height, unsigned width, Scripting::Dpi dpi);
/// The metrics of one of the fonts P to V. A width of 10 stands for none requested.
Font0ScaleInfo ScaleStepFont(std::array<FontStep, 10> const& steps, unsigned defaultHeight, unsigned height,
                             unsigned width, Scripting::Dpi dpi);

struct TrueTypeScale {
    double pointSize = 0;
    double widthPercent = 0;
};
TrueTypeScale ScaleTrueTypeFont(unsigned height, unsigned width);
/// Undoes the height of ScaleTrueTypeFont, to whole dots.
int ConvertPointSizeToHeightInDots(double pointSize);
/// How far a TrueType text of `height` dots is raised so that it stands where a bitmap text does.
int AdjustYPos(unsigned height);

/// Whether the cached outline draws the character.
bool IsSupportedFont0Character(char32_t character);

}  // namespace TrueTypeUtils
