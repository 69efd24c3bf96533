#pragma once

#include <functional>
#include <string>

#include "barcodes/frame/BarcodeFunctions.h"
#include "barcodes/postal/PostalModels.h"
#include "frontend/context/ZplValueTypes.h"

namespace ZplCore {

/// The frames of postal symbols: as the linear one, with bars of two heights and of four states. Data of four states
/// have no repair. `barSpacing` is the width of a bar in dots.
using PostalEncode = std::function<Barcode::Model::USPS2StateBarcodeModel(std::string const&)>;
using IntelligentMailEncode = std::function<Barcode::Model::IntelligentMailBarcodeModel(std::string const&)>;
ZplContextKeys::RenderFunction USPSBarcodeRenderFunction(bool printLine, bool lineAbove, BarcodeValidate validate,
                                                         PostalEncode encode, BarcodeTransform inputTransform,
                                                         InterpretationText interpretationText,
                                                         unsigned long barSpacing, BarcodeTransform invalidTransform);
ZplContextKeys::RenderFunction IntelligentMailRenderFunction(bool printLine, bool lineAbove, BarcodeValidate validate,
                                                             IntelligentMailEncode encode,
                                                             BarcodeTransform inputTransform,
                                                             InterpretationText interpretationText);

/// The width of a postal bar in dots of the design resolution.
unsigned long PostalBarWidth(ContextProcessor const& processor);

}  // namespace ZplCore
