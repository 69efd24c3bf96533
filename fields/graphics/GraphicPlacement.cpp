#include "fields/graphics/GraphicPlacement.h"

#include "fields/placement/RenderPoints.h"
#include "fields/text/TextDrawing.h"
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

namespace {

/// Draws a bitmap as `width` x `rows` dots, the upper part of what is `height` dots high.
void DrawEnlarged(ContextProcessor& processor, Scripting::Bitmap const& bitmap, unsigned width, unsigned rows,
                  unsigned height, ZplOrientation orientation) {
    auto const& target = processor.GetGraphicContext();
    if (!target) return;
    target->SetFieldVariable(processor.at(ZplContextKeys::FieldVariable));
    ZplPoint const point = PlaceGraphic(processor, width, height, orientation);
    if (rows != 0) DrawImage(*target, bitmap, point, orientation, width, rows, true);
}

}  // namespace

void DrawBitmap(ContextProcessor& processor, Scripting::Bitmap const& bitmap, unsigned height,
                ZplOrientation orientation) {
    DrawEnlarged(processor, bitmap, bitmap.width, bitmap.height, height, orientation);
}

void DrawPicture(ContextProcessor& processor, Picture const& picture, unsigned x, unsigned y) {
    unsigned const rows = picture.StoredRows();
    DrawEnlarged(processor, {picture.rows, picture.Width(), rows}, picture.Width() * x, rows * y, picture.Height() * y,
                 ZplOrientation::Normal);
}

}  // namespace ZplCore
