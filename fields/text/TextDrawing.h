#pragma once

#include <string>
#include <string_view>

#include "Scripting/GraphicContext.h"
#include "fields/placement/FieldTransform.h"
#include "frontend/context/ZplValueTypes.h"

/// Drawing of turned things on a target that wants the upper left corner of the turned box. Each takes the point that
/// the unturned box's corner (0, 0) lands on, in dots.
namespace ZplCore {

Scripting::ScriptTextFlow ConvertScriptingTextFlow(Direction direction);
Scripting::ScriptTextJustification ConvertScriptingTextJustification(Justification justification);

/// How a bitmap text is drawn.
struct BitmapTextStyle {
    FontName font;
    unsigned magnificationX = 1;
    unsigned magnificationY = 1;
    int spacing = 0;  ///< dots between characters
    ZplOrientation orientation = ZplOrientation::Normal;
    Direction direction = Direction::Horizontal;
    Justification justification = Justification::Left;
    Baseline baseline = Baseline::Top;
    bool cached = false;
};

/// Draws UTF-8 text; nothing if it is empty.
void DrawText(Scripting::GraphicContext& target, std::string_view text, ZplPoint point, BitmapTextStyle const& style);

/// Draws bytes of a code page in the orientation of the field in force; nothing without a drawing target.
void DrawUTF8Text(ContextProcessor const& processor, std::string_view bytes, unsigned codePage, ZplPoint point,
                  FontName const& font, unsigned magnificationX, unsigned magnificationY);

/// Bytes of a code page, by its number in the language, as UTF-8.
std::string ZplCodePageToUTF8(std::string_view bytes, unsigned codePage);

/// `width` and `height` are the unturned logical size in dots; `scaled` says that the picture is in dots, not pixels.
void DrawImage(Scripting::GraphicContext& target, Scripting::Bitmap const& bitmap, ZplPoint point,
               ZplOrientation orientation, unsigned width, unsigned height, bool scaled);

/// An outline between two corners on the page, whose lines are centred on the corners.
void DrawRect(Scripting::GraphicContext& target, ZplPoint a, ZplPoint b, unsigned thickness);

}  // namespace ZplCore
