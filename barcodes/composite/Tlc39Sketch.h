#pragma once

#include "barcodes/composite/Tlc39Model.h"
#include "barcodes/frame/GraphicHelper.h"

namespace Scripting::GraphicHelper {

/// Dots: the narrow and wide elements and the height of the Code 39, and the module and row height of the MicroPDF417.
/// Both parts stand in the middle; four modules lie between them, the upper one blank.
SketchedBitmap SketchTLC39Barcode(Barcode::Model::Tlc39BarcodeModel const& model, unsigned narrow, unsigned wide,
                                  unsigned height, unsigned module, unsigned rowHeight, Dpi dpi,
                                  unsigned long designResolution);

}  // namespace Scripting::GraphicHelper
