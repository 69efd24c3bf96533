#include "fields/text/TextDrawing.h"

#include "frontend/context/ZplContextKeys.h"

namespace ZplCore {

Scripting::ScriptTextFlow ConvertScriptingTextFlow(Direction direction) {
    switch (direction) {
        case Direction::Vertical: return Scripting::ScriptTextFlow::Vertical;
        case Direction::Reverse: return Scripting::ScriptTextFlow::Reverse;
        case Direction::Horizontal: break;
    }
    return Scripting::ScriptTextFlow::Horizontal;
}

Scripting::ScriptTextJustification ConvertScriptingTextJustification(Justification justification) {
    switch (justification) {
        case Justification::Right: return Scripting::ScriptTextJustification::Right;
        case Justification::Auto: return Scripting::ScriptTextJustification::Justified;
        case Justification::Left: break;
    }
    return Scripting::ScriptTextJustification::Left;
}

void DrawText(Scripting::GraphicContext& target, std::string_view text, ZplPoint point, BitmapTextStyle const& style) {
    if (text.empty()) return;
    ZplPoint origin = point;
    // Text that is not turned begins there however large it is.
    if (style.orientation != ZplOrientation::Normal) {
        int const width = target.MeasureText(style.font, text, style.magnificationX, style.spacing, true);
        int const height = WrapMultiply(target.GetFontHeight(style.font), static_cast<int>(style.magnificationY));
        origin = GetGraphicContextOrigin(point, style.orientation, static_cast<unsigned>(width),
                                         static_cast<unsigned>(height));
    }
    target.SelectFont(style.font, style.magnificationX, style.magnificationY);
    target.SetRotation(static_cast<int>(style.orientation));
    target.SetTextFlow(ConvertScriptingTextFlow(style.direction));
    target.DrawText(origin.x, origin.y, text, ConvertScriptingTextJustification(style.justification), style.spacing,
                    style.cached, style.baseline == Baseline::Bottom);
}

void DrawUTF8Text(ContextProcessor const& processor, std::string_view bytes, unsigned codePage, ZplPoint point,
                  FontName const& font, unsigned magnificationX, unsigned magnificationY) {
    auto const& target = processor.GetGraphicContext();
    if (!target) return;
    BitmapTextStyle style{.font = font, .magnificationX = magnificationX, .magnificationY = magnificationY};
    style.orientation = processor.at(ZplContextKeys::FieldOrientation);
    DrawText(*target, ZplCodePageToUTF8(bytes, codePage), point, style);
}

std::string ZplCodePageToUTF8(std::string_view bytes, unsigned codePage) {
    return ZplCodePageConverter(codePage).ConvertThroughCodePage(bytes);
}

void DrawImage(Scripting::GraphicContext& target, Scripting::Bitmap const& bitmap, ZplPoint point,
               ZplOrientation orientation, unsigned width, unsigned height, bool scaled) {
    ZplPoint const origin = GetGraphicContextOrigin(point, orientation, width, height);
    target.SetRotation(static_cast<int>(orientation));
    target.DrawImage(bitmap, origin.x, origin.y, width, height, scaled);
}

void DrawRect(Scripting::GraphicContext& target, ZplPoint a, ZplPoint b, unsigned thickness) {
    target.DrawRect(a.x, a.y, b.x, b.y, thickness);
}

}  // namespace ZplCore
