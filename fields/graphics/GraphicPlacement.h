#pragma once

#include "Scripting/GraphicContext.h"
#include "fields/graphics/GraphicData.h"
#include "fields/placement/FieldTransform.h"

namespace ZplCore {

/// Where the corner (0, 0) of a graphic of that unturned size (dots) goes on the page; stores where the next field
/// starts. Most graphics have no orientation of their own and do not turn with the default orientation of fields.
ZplPoint PlaceGraphic(ContextProcessor& processor, unsigned width, unsigned height,
                      ZplOrientation orientation = ZplOrientation::Normal);

/// Draws a bitmap at the field origin in force; nothing without a drawing target. It stands as one of `height` dots
/// would, of which it holds the upper rows.
void DrawBitmap(ContextProcessor& processor, Scripting::Bitmap const& bitmap, unsigned height,
                ZplOrientation orientation = ZplOrientation::Normal);
/// Draws a picture there, each of its dots as `x` times `y` dots. The picture is not copied: only as much of it is
/// enlarged as the page can show.
void DrawPicture(ContextProcessor& processor, Picture const& picture, unsigned x = 1, unsigned y = 1);

}  // namespace ZplCore
