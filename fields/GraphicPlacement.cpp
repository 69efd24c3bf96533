#include "fields/GraphicPlacement.h"

#include "fields/RenderPoints.h"
#include "fields/TextDrawing.h"
#include "frontend/context/ZplContextKeys.h"

namespace ZplCore {

ZplPoint PlaceGraphic(ContextProcessor& processor, unsigned width, unsigned height, ZplOrientation orientation) {
    auto const field = FieldPlacement::From(processor);
    int const w = static_cast<int>(width);
    int const h = static_cast<int>(height);
    auto const transform = GetFieldLocalToGlobalTransform(field.origin, {w, h}, orientation);
    auto const factor =
        Rendering::GenerateLocalJustificationFactor(orientation, field.baseline, field.justification, w, h);
    auto const [render, next] = Rendering::GenerateRenderPoints(orientation, field.baseline, field.justification, w, h);
    StoreNextFieldOrigin(processor, Rendering::PreOrPostRotationShift(transform, next, factor, field.baseline));
    return Rendering::PreOrPostRotationShift(transform, render, factor, field.baseline);
}

void DrawBitmap(ContextProcessor& processor, Scripting::Bitmap const& bitmap, unsigned height,
                ZplOrientation orientation) {
    auto const& target = processor.GetGraphicContext();
    if (!target) return;
    target->SetFieldVariable(processor.at(ZplContextKeys::FieldVariable));
    ZplPoint const point = PlaceGraphic(processor, bitmap.width, height, orientation);
    if (bitmap.height != 0) DrawImage(*target, bitmap, point, orientation, bitmap.width, bitmap.height, true);
}

void DrawPicture(ContextProcessor& processor, Picture const& picture) {
    DrawBitmap(processor, {picture.rows, picture.Width(), picture.StoredRows()}, picture.Height());
}

}  // namespace ZplCore
