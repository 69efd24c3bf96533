#pragma once

#include <cstdint>
#include <span>
#include <string_view>

#include "Scripting/InkGauge.h"
#include "Scripting/ScriptTextJustification.h"
#include "printengine/src/fonts/GlyphCache.h"
#include "printengine/src/fonts/Typeface.h"
#include "printengine/src/raster/PixelScale.h"
#include "printengine/src/raster/Raster.h"
#include "printengine/src/text/TextLayout.h"

namespace PrintEngine::Text {

/// More than this enlarges every font beyond every page.
inline constexpr unsigned MaxMagnification = 1 << 16;

/// Line heights in dots for text that runs downwards, at magnification 1. Characters never touch the next one's
/// capitals.
int CharacterLineHeight(Fonts::Typeface const& typeface);

/// Sum of the advances times `magnification`, plus `spacing` between characters, in dots.
int MeasureWidth(Fonts::Typeface& typeface, TextLayout& layout, std::string_view text, unsigned magnification,
                 int spacing);

/// The turned place of a text: (0, 0) of its own dots, on the label. Its own x runs clockwise turned by `degrees`.
struct TextFrame {
    std::int64_t x = 0;
    std::int64_t y = 0;
    int degrees = 0;
};

/// How a text is set, in dots.
struct TextStyle {
    unsigned magnificationX = 1;
    unsigned magnificationY = 1;
    int spacing = 0;
    Scripting::ScriptTextFlow flow = Scripting::ScriptTextFlow::Horizontal;
};

/// Draws texts in one raster.
class TextPainter {
public:
    TextPainter(Drawing::Raster& raster, Drawing::PixelScale const& scale, Fonts::GlyphCache& glyphs,
                TextLayout& layout, Drawing::Ink ink);

    /// Adds the box of each drawn character to `box`; null adds none.
    void CountInk(Scripting::PixelBox* box) { counted_ = box; }

    /// Draws a text whose first cell has its upper left corner at (u, v) of the frame.
    void Draw(Fonts::Typeface& typeface, std::string_view text, TextStyle const& style, TextFrame const& frame,
              std::int64_t u, std::int64_t v);

    /// True once a character was too large to be drawn.
    bool HasLeftOut() const { return hasLeftOut_; }

private:
    struct Setting;

    void DrawCharacters(Setting const& setting, std::string_view text, std::int64_t u, std::int64_t v);
    void DrawLine(Setting const& setting, TextLine const& line, std::int64_t u, std::int64_t v);
    void DrawClusters(Setting const& setting, TextLine const& line, std::int64_t u, std::int64_t v);
    /// Draws some glyphs of a line from the pen on, and gives how far they move it.
    std::int64_t DrawGlyphs(Setting const& setting, std::span<LineGlyph const> glyphs, std::int64_t u, std::int64_t v);
    /// `toRight` and `up` are pixels by which the glyph stands off its pen.
    void Place(Setting const& setting, Fonts::TurnedGlyph const& glyph, std::int64_t u, std::int64_t v, int toRight = 0,
               int up = 0);

    Drawing::Raster& raster_;
    Drawing::PixelScale const& scale_;
    Fonts::GlyphCache& glyphs_;
    TextLayout& layout_;
    Drawing::Ink ink_;
    Scripting::PixelBox* counted_ = nullptr;
    bool hasLeftOut_ = false;
};

}  // namespace PrintEngine::Text
