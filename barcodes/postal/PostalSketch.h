#pragma once

#include "barcodes/frame/GraphicHelper.h"
#include "barcodes/postal/PostalModels.h"

namespace Scripting::GraphicHelper {

/// Bars `spacing` dots wide, with gaps of one and a half times that. Short bars are two fifths tall, in whole steps of
/// five dots; all stand on the bottom edge.
SketchedBitmap SketchUSPS2Barcode(Barcode::Model::USPS2StateBarcodeModel const& model, unsigned long spacing,
                                  unsigned height, Dpi dpi, unsigned long designResolution);
/// The same pitch; bars of one to three thirds of the height.
SketchedBitmap SketchIntelligentMailBarcode(Barcode::Model::IntelligentMailBarcodeModel const& model,
                                            unsigned long spacing, unsigned height, Dpi dpi,
                                            unsigned long designResolution);

}  // namespace Scripting::GraphicHelper
