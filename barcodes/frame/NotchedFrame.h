#pragma once

#include <functional>
#include <string>
#include <vector>

#include "barcodes/frame/BarcodeFunctions.h"
#include "frontend/context/ZplValueTypes.h"

namespace ZplCore {

/// The frame of EAN and UPC: data that `validate` refuses are always drawn as an error, and `render` draws the model
/// with the groups of digits that `split` makes of the field data and the check digit.
using NotchedRender =
    std::function<void(Barcode::Model::LinearBarcodeModel&, ContextProcessor&, std::vector<std::string> const&)>;
using NotchedSplit = std::function<std::vector<std::string>(std::string const& data, std::string const& checkDigit)>;
ZplContextKeys::RenderFunction NotchedBarcodeRenderFunction(BarcodeValidate validate, LinearEncode encode,
                                                            NotchedRender render, NotchedSplit split,
                                                            BarcodeTransform inputTransform, BarcodeReason reason = {});

}  // namespace ZplCore
