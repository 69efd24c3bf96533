#pragma once

#include <cstdint>
#include <functional>
#include <string_view>

#include "Scripting/Dpi.h"
#include "fields/text/Font0ScaleInfo.h"
#include "fields/text/FontSteps.h"

/// The arithmetic of scalable fonts. Heights and widths are dots of the design resolution.
namespace TrueTypeUtils {

/// The fonts that are scaled to a requested cell and drawn from a cache.
inline constexpr std::string_view CachedFonts = "PQRSTUV0";
/// The name under which the drawing target knows the outline of the cached fonts.
inline constexpr std::string_view Font0Name = "0";

/// The size of type that a height asks for, in points; half of that at 600 dpi.
inline double FontPointSize(unsigned height, Scripting::Dpi dpi) {
    double const points = (0.2192 * height + 0.0955) * 1.5;
    return dpi == Scripting::Dpi(600) ? points / 2 : points;
}

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

/// Whether the tables of font 0 hold the character.
bool IsSupportedFont0Character(char32_t character);
/// Gives the advance of a character in cells of `width` dots, in dots; 0 for a character that the tables lack.
std::function<unsigned(char32_t)> CreateFont0ExpectedWidths(unsigned width);
/// How wide a text (UTF-8) of font 0 is in square cells of `height` dots, in dots and without the space behind its last
/// character; 0 if the captured tables lack one of its characters, or hold no such height. An empty text is 65535 wide
/// at heights below 45.
std::uint16_t GetZplStringLength(std::string_view text, std::uint16_t height);

}  // namespace TrueTypeUtils
