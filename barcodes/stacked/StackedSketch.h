#pragma once

#include <string>

#include "Barcode/Encoder/ValidationStatus.h"
#include "Barcode/Model/BarcodeModels.h"
#include "barcodes/frame/GraphicHelper.h"

namespace Barcode::Encoder {

/// Code 49 (AIM BC6) of ASCII, two to eight rows of start, four words and stop. The starting mode follows from the
/// data.
struct Code49Encoder {
    static ValidationStatus Validate(std::string const& data);
    /// No rows if the data do not fit.
    static Model::StackedBarcodeModel Encode(std::string const& data);
};

}  // namespace Barcode::Encoder

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
