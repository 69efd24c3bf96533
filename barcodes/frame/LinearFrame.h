#pragma once

#include <string>

#include "barcodes/frame/BarcodeFunctions.h"
#include "barcodes/frame/GraphicHelper.h"
#include "frontend/context/ZplValueTypes.h"

/// The render functions that the commands of linear symbologies store, with the line that people read.
namespace ZplCore {

/// A symbol of bars with two widths in the ratio in force. Data that `validate` refuses are drawn as an error if
/// validation is on; otherwise they are repaired by `invalidTransform`, and nothing is drawn if that is empty.
ZplContextKeys::RenderFunction LinearBarcodeRenderFunction(bool printLine, bool lineAbove, BarcodeValidate validate,
                                                           LinearEncode encode, InterpretationText interpretationText,
                                                           BarcodeTransform inputTransform,
                                                           BarcodeTransform invalidTransform);
/// The same for symbologies whose wide elements are exactly two narrow ones.
ZplContextKeys::RenderFunction FixedLinearBarcodeRenderFunction(bool printLine, bool lineAbove,
                                                                BarcodeValidate validate, LinearEncode encode,
                                                                InterpretationText interpretationText,
                                                                BarcodeTransform inputTransform,
                                                                BarcodeTransform invalidTransform);

/// How a linear symbol is drawn.
struct LinearBarcodeStyle {
    unsigned narrow = 0;  ///< dots
    unsigned wide = 0;    ///< dots
    unsigned height = 0;  ///< dots
    bool printLine = true;
    bool lineAbove = false;

    /// By the barcode defaults and the field in force, with wide elements of two narrow ones.
    static LinearBarcodeStyle Fixed(ContextProcessor const& processor, bool printLine, bool lineAbove);
};

/// Sketches, places and draws a symbol and its line, and stores where the next field starts.
void DrawLinearBarcode(ContextProcessor& processor, Barcode::Model::LinearBarcodeModel const& model,
                       LinearBarcodeStyle const& style, std::string const& interpretation);

/// Places and draws a sketched symbol and its line, magnified by the module width, and stores where the next field
/// starts.
void DrawSketchWithLine(ContextProcessor& processor, Scripting::SketchedBitmap const& symbol,
                        LinearBarcodeStyle const& style, std::string const& interpretation);

}  // namespace ZplCore
