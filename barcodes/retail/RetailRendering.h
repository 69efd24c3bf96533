#pragma once

#include <string>
#include <vector>

#include "Barcode/Model/BarcodeModels.h"
#include "fields/placement/FieldTransform.h"

/// Drawing of EAN and UPC symbols: bars cut short by notches that the digits stand in.
namespace ZplCore {

namespace EANUPC {

/// The point to draw a symbol of `width` x `height` dots at, and the next field's, local to the field. A typeset symbol
/// stands on its field's y with its guard bars.
std::pair<ZplPoint, ZplPoint> GenerateEANRenderPoints(ZplOrientation orientation, Baseline baseline,
                                                      Justification justification, int width, int height);

}  // namespace EANUPC

using TextGroups = std::vector<std::string>;

void RenderEAN13(bool printLine, bool lineAbove, Barcode::Model::LinearBarcodeModel const& model,
                 ContextProcessor& processor, TextGroups const& groups);
void RenderEAN8(bool printLine, bool lineAbove, Barcode::Model::LinearBarcodeModel const& model,
                ContextProcessor& processor, TextGroups const& groups);
void RenderUPCA(bool printLine, bool lineAbove, bool checkDigit, Barcode::Model::LinearBarcodeModel const& model,
                ContextProcessor& processor, TextGroups const& groups);
void RenderUPCE(bool printLine, bool lineAbove, bool checkDigit, Barcode::Model::LinearBarcodeModel const& model,
                ContextProcessor& processor, TextGroups const& groups);
void RenderExt(bool printLine, bool lineAbove, Barcode::Model::LinearBarcodeModel const& model,
               ContextProcessor& processor, TextGroups const& groups);

}  // namespace ZplCore
