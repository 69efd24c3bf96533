#pragma once

#include <string>

#include "Barcode/Model/BarcodeModels.h"
#include "barcodes/GraphicHelper.h"

namespace Barcode::Encoder {

/// Code 49 (AIM BC6), two to eight rows of start, four words and stop. The starting mode follows from the data. No rows
/// if the data do not fit.
struct Code49Encoder {
    static Model::StackedBarcodeModel Encode(std::string const& data);
};

/// CODABLOCK F (EN 12323), rows of Code 128. No rows if the data do not fit. 0 leaves `columns` or `rows` to the
/// encoder; with neither the symbol has one row.
struct CodaBlockFEncoder {
    static Model::StackedBarcodeModel Encode(std::string const& data, unsigned columns, unsigned rows);
};

}  // namespace Barcode::Encoder

namespace Scripting::GraphicHelper {

/// Rows between bars one module high that reach over the quiet zones: ten modules on the left, one on the right.
SketchedBitmap SketchCode49Barcode(Barcode::Model::StackedBarcodeModel const& model, unsigned rowHeight,
                                   unsigned module, Dpi dpi, unsigned long designResolution);
/// Rows at least two modules high, between bars one module high as wide as they.
SketchedBitmap SketchCodaBlockFEBarcode(Barcode::Model::StackedBarcodeModel const& model, unsigned rowHeight,
                                        unsigned module, Dpi dpi, unsigned long designResolution);

}  // namespace Scripting::GraphicHelper
