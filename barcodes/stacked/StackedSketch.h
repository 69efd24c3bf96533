#pragma once

#include "Barcode/Model/BarcodeModels.h"
#include "barcodes/frame/GraphicHelper.h"

namespace Scripting::GraphicHelper {

/// Rows between bars one module high that reach over the quiet zones: ten modules on the left, one on the right.
SketchedBitmap SketchCode49Barcode(Barcode::Model::StackedBarcodeModel const& model, unsigned rowHeight,
                                   unsigned module, Dpi dpi, unsigned long designResolution);
/// Rows at least two modules high, between bars one module high as wide as they.
SketchedBitmap SketchCodaBlockABarcode(Barcode::Model::StackedBarcodeModel const& model, unsigned narrow, unsigned wide,
                                       unsigned rowHeight, Dpi dpi, unsigned long designResolution);
SketchedBitmap SketchCodaBlockFEBarcode(Barcode::Model::StackedBarcodeModel const& model, unsigned rowHeight,
                                        unsigned module, Dpi dpi, unsigned long designResolution);

}  // namespace Scripting::GraphicHelper
