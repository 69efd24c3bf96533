#pragma once

#include <functional>
#include <string_view>

#include "Barcode/Model/BarcodeModels.h"
#include "barcodes/frame/BarcodeFunctions.h"
#include "frontend/context/ContextProcessor.h"

namespace ZplCore {

/// The common end of symbols of cells: the error if `status` is one or the model has no cells, which says that the data
/// do not fit; otherwise the symbol. `reason` is that of a character that the symbol lacks.
void RenderMatrix(ContextProcessor& processor, BarcodeStatus status,
                  std::function<Barcode::Model::MatrixBarcodeModel const&()> const& encode, unsigned cellSize,
                  bool forceError = false, std::string_view reason = {});

}  // namespace ZplCore
