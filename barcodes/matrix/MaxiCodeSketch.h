#pragma once

#include "barcodes/frame/GraphicHelper.h"
#include "barcodes/matrix/MaxiCodeModel.h"

namespace Scripting::GraphicHelper {

/// The size follows the resolution of the target alone.
SketchedBitmap SketchMaxiCodeBarcode(Barcode::Model::MaxiCodeBarcodeModel const& model, Dpi dpi,
                                     unsigned long designResolution);

}  // namespace Scripting::GraphicHelper
