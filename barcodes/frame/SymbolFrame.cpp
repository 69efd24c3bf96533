#include "barcodes/frame/SymbolFrame.h"

#include "Scripting/PrinterContextInterface.h"
#include "fields/placement/RenderPoints.h"
#include "fields/placement/UnitConversion.h"
#include "fields/text/TextDrawing.h"
#include "frontend/context/ZplContextKeys.h"

namespace ZplCore {

SketchResolution SketchResolution::Of(ContextProcessor const& processor) {
    auto const& printer = processor.GetPrinterContext();
    unsigned const design = DesignDpi(processor);
    return {printer ? printer->PrinterDpi() : Scripting::Dpi(design), design};
}

void RenderSimpleBarcode(ContextProcessor& processor, std::vector<std::uint8_t> const& bitmap,
                         unsigned long logicalWidth, unsigned long logicalHeight, unsigned long bitmapWidth) {
    auto const& target = processor.GetGraphicContext();
    if (!target) return;
    target->SetFieldVariable(processor.at(ZplContextKeys::FieldVariable));
    auto const field = FieldPlacement::From(processor);
    int const width = static_cast<int>(logicalWidth);
    int const height = static_cast<int>(logicalHeight);
    ZplPoint const factor = Rendering::GenerateLocalJustificationFactor(field.orientation, field.baseline,
                                                                        field.justification, width, height);
    auto const transform = GetFieldLocalToGlobalTransform(processor, logicalWidth, logicalHeight);
    auto const [image, next] =
        Rendering::GenerateRenderPoints(field.orientation, field.baseline, field.justification, width, height);
    StoreNextFieldOrigin(processor, Rendering::PreOrPostRotationShift(transform, next, factor, field.baseline));
    unsigned long const stride = (bitmapWidth + 7) / 8;
    DrawImage(*target,
              {bitmap, static_cast<unsigned>(bitmapWidth), stride ? static_cast<unsigned>(bitmap.size() / stride) : 0},
              Rendering::PreOrPostRotationShift(transform, image, factor, field.baseline), field.orientation,
              static_cast<unsigned>(logicalWidth), static_cast<unsigned>(logicalHeight), false);
}

}  // namespace ZplCore
