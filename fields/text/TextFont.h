#pragma once

#include <cstdint>
#include <string_view>

#include "Scripting/GraphicContext.h"
#include "fields/text/TextDrawing.h"

namespace ZplCore::Sketching {

/// The font of the field in force, resolved and scaled.
struct TextFont {
    FontName zplName;   ///< as the language knows it
    FontName drawName;  ///< as the drawing target knows it
    unsigned magnificationX = 1;
    unsigned magnificationY = 1;
    double pointSize = 0;  ///< of a TrueType font
    double widthPercent = 0;
    bool isBitmap = true;  ///< drawn in cells; otherwise TrueType
    bool isCached = false;

    /// The font that a stream named, of which a cached one is prepared by `target`.
    static TextFont Of(ContextProcessor const& processor, Scripting::GraphicContext& target);
};

/// Dots of a text in its font. Wider than coordinates, so that sums of what a stream sends stay defined.
struct TextMeasures {
    std::int64_t width = 0;
    std::int64_t height = 0;
    std::int64_t ascent = 0;
    std::int64_t descent = 0;
    std::int64_t leading = 0;
    std::int64_t averageWidth = 0;
    std::int64_t tail = 0;
};

/// How the text of a field runs.
struct TextRun {
    Direction direction = Direction::Horizontal;
    int spacing = 0;  ///< dots between characters, as set

    int HorizontalSpacing() const { return direction == Direction::Vertical ? 0 : spacing; }
};

/// Measures a text that is not empty (UTF-8), after the target has prepared it.
TextMeasures MeasureTextField(Scripting::GraphicContext const& target, TextFont const& font, std::string_view text,
                              TextRun const& run);

/// Height, ascent and descent of any line in the font.
TextMeasures MeasureLine(Scripting::GraphicContext const& target, TextFont const& font);

/// What a TrueType target needs to draw a text as it runs: characters with what sits on them that
/// stand above each other are lines.
std::string ModifyTrueTypeText(Scripting::GraphicContext const& target, TextFont const& font, std::string_view text,
                               Direction direction);

/// A text whose unturned box's corner (0, 0) lands on `point`.
struct PlacedText {
    std::string_view text;
    ZplPoint point;
    TextMeasures measures;
    TextRun run;
};
void DrawPlacedText(Scripting::GraphicContext& target, ContextProcessor const& processor, TextFont const& font,
                    PlacedText const& placed);

}  // namespace ZplCore::Sketching
