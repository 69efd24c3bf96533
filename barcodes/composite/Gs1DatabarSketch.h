#pragma once

#include "barcodes/composite/Gs1DatabarModel.h"
#include "barcodes/frame/GraphicHelper.h"

namespace Scripting::GraphicHelper {

/// Dots: the width of a module, the height of one in rows whose height the model tells, and the heights of separators,
/// of linear bars and of the rows of a composite component.
SketchedBitmap SketchGS1Barcode(Barcode::Model::GS1BarcodeModel const& model, unsigned module, unsigned moduleHeight,
                                unsigned separatorHeight, unsigned barHeight, unsigned componentRowHeight, Dpi dpi,
                                unsigned long designResolution);

}  // namespace Scripting::GraphicHelper
