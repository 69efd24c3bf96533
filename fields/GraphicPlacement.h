#pragma once

#include "fields/FieldTransform.h"
#include "fields/GraphicData.h"

namespace ZplCore {

/// Where the upper left corner of a graphic of that size (dots) goes on the page; stores where the next field starts.
/// Graphics have no orientation of their own and do not turn with the default orientation of fields.
ZplPoint PlaceGraphic(ContextProcessor& processor, unsigned width, unsigned height);

/// Draws a picture at the field origin in force; nothing without a drawing target.
void DrawPicture(ContextProcessor& processor, Picture const& picture);

}  // namespace ZplCore
