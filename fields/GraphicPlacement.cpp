#include "fields/GraphicPlacement.h"

#include "Scripting/GraphicContext.h"
#include "fields/RenderPoints.h"
#include "fields/TextDrawing.h"
#include "frontend/context/ZplContextKeys.h"

namespace ZplCore {

ZplPoint PlaceGraphic(ContextProcessor& processor, unsigned width, unsigned height) {
    auto const field = FieldPlacement::From(processor);
    constexpr auto Upright = ZplOrientation::Normal;
    int const w = static_cast<int>(width);
    int const h = static_cast<int>(height);
    auto const transform = GetFieldLocalToGlobalTransform(field.origin, {w, h}, Upright);
    auto const factor = Rendering::GenerateLocalJustificationFactor(Upright, field.baseline, field.justification, w, h);
    auto const [render, next] = Rendering::GenerateRenderPoints(Upright, field.baseline, field.justification, w, h);
    StoreNextFieldOrigin(processor, Rendering::PreOrPostRotationShift(transform, next, factor, field.baseline));
    return Rendering::PreOrPostRotationShift(transform, render, factor, field.baseline);
}

void DrawPicture(ContextProcessor& processor, Picture const& picture) {
    auto const& target = processor.GetGraphicContext();
    if (!target) return;
    target->SetFieldVariable(processor.at(ZplContextKeys::FieldVariable));
    ZplPoint const point = PlaceGraphic(processor, picture.Width(), picture.Height());
    unsigned const stored = picture.StoredRows();
    if (stored == 0) return;
    DrawImage(*target, {picture.rows, picture.Width(), stored}, point, ZplOrientation::Normal, picture.Width(), stored,
              true);
}

}  // namespace ZplCore
