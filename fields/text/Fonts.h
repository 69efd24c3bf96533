#pragma once

#include <optional>
#include <utility>
#include <variant>

#include "PrintEngine/Printing/TrueTypeCacheCreator.h"
#include "Scripting/Dpi.h"
#include "frontend/context/ContextProcessor.h"
#include "frontend/context/ZplValueTypes.h"
#include "frontend/stream/ZplParse.h"

/// From the font that a stream names, with a height and a width in dots, to what the drawing target draws.
namespace ZplCore {

/// A font of fixed cells that grows by whole factors; prepared scalable fonts are one too, with factors of 1.
struct BitmapFontInfo {
    FontName name;
    unsigned magnificationX = 1;
    unsigned magnificationY = 1;
};

struct TrueTypeFontInfo {
    FontName name;
    double pointSize = 0;
    double widthPercent = 0;
};

/// Digits and upper-case letters give a font, anything else none.
std::optional<BuiltInFont> ToBuiltInFont(char letter);
/// A name of exactly one such character gives a font.
std::optional<BuiltInFont> ToBuiltInFont(FontName const& name);

bool IsBitmapFont(FontName const& name);
bool IsCachedFont(FontName const& name);
bool IsOCRFont(FontName const& name);
bool IsFont0(FontName const& name);
bool IsTrueTypeFont(FontName const& name, ContextProcessor const& processor);

/// An object name as a font's name: without device, in upper case, and a resident font of another make as ours.
FontName ToFontName(std::string_view objectName);

/// The height and the width (dots) to store for a field: what is given, with 0 for one that is missing, or the default
/// size of the stream if neither is given.
std::pair<unsigned, unsigned> GetFontBoundary(ContextProcessor& processor, ZplParseResult<unsigned> height,
                                              ZplParseResult<unsigned> width);

/// The font to draw with: the one named, by its substitute if it has one; else the default font; else font A.
FontName TransformToZplFont(std::variant<BuiltInFont, UserFont> const& font, ContextProcessor const& processor);
/// The font of the field in force.
FontName GetZplFont(ContextProcessor const& processor);

/// The size to draw `name` at. For a cached font the drawing target prepares it, and the prepared font is named.
std::variant<BitmapFontInfo, TrueTypeFontInfo> GetFontScaleInfo(FontName const& name,
                                                                ContextProcessor const& processor);

/// What a font of the size in force measures, in dots: the cell of a bitmap font with how often its base cell goes into
/// it, or what a scalable one (magnifications 0) is asked for.
struct FontCell {
    unsigned height = 0;
    unsigned width = 0;
    unsigned magnificationX = 0;
    unsigned magnificationY = 0;
};
FontCell GetFontCell(FontName const& name, ContextProcessor const& processor);

/// Lets files draw fonts: `setting` is NAME=FILE.ttf, parted by semicolons, where NAME is a font letter or an object
/// name without its device.
void UseFontFiles(std::string_view setting, PrintEngine::Printing::TrueTypeCacheCreator& fonts);

namespace TextProcessing {
/// Added to the y (dots) of a text's render point: fonts E and H stand differently at 600 dpi.
int Get600DpiVerticalOffset(FontName const& name, Scripting::Dpi dpi, ZplOrientation orientation,
                            unsigned magnificationY);
}  // namespace TextProcessing

}  // namespace ZplCore
