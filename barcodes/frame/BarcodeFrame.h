#pragma once

#include <functional>
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "Barcode/Encoder/ValidationStatus.h"
#include "Barcode/Model/BarcodeModels.h"
#include "Scripting/Dpi.h"
#include "Scripting/GraphicContext.h"
#include "barcodes/frame/GraphicHelper.h"
#include "barcodes/postal/PostalModels.h"
#include "fields/placement/FieldTransform.h"
#include "frontend/context/ZplValueTypes.h"

/// What all symbologies share: the render functions that a barcode command stores, the arithmetic of widths and
/// heights, the interpretation line, and the error that is drawn in place of a symbol.
namespace ZplCore {

using BarcodeStatus = Barcode::Encoder::ValidationStatus;
using BarcodeValidate = std::function<BarcodeStatus(std::string const&)>;
using BarcodeTransform = std::function<std::string(std::string const&)>;
using LinearEncode = std::function<std::unique_ptr<Barcode::Model::LinearBarcodeModel>(std::string const&)>;
/// The line that people read, from the field data as sent and the check digits of the symbol.
using InterpretationText = std::function<std::string(std::string const& data, std::string const& checkDigit)>;

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

/// The frame of EAN and UPC: data that `validate` refuses are always drawn as an error, and `render` draws the model
/// with the groups of digits that `split` makes of the field data and the check digit.
using NotchedRender =
    std::function<void(Barcode::Model::LinearBarcodeModel&, ContextProcessor&, std::vector<std::string> const&)>;
using NotchedSplit = std::function<std::vector<std::string>(std::string const& data, std::string const& checkDigit)>;
/// Why a text is refused, where the status tells it wrongly or not at all; otherwise empty.
using BarcodeReason = std::function<std::string_view(std::string const&)>;
ZplContextKeys::RenderFunction NotchedBarcodeRenderFunction(BarcodeValidate validate, LinearEncode encode,
                                                            NotchedRender render, NotchedSplit split,
                                                            BarcodeTransform inputTransform, BarcodeReason reason = {});

/// Places and draws the bitmap of a symbol that has no line, and stores where the next field starts.
void RenderSimpleBarcode(ContextProcessor& processor, std::vector<std::uint8_t> const& bitmap,
                         unsigned long logicalWidth, unsigned long logicalHeight, unsigned long bitmapWidth);

/// The dpi of the target, and that of the design, for the sketching of a symbol.
struct SketchResolution {
    Scripting::Dpi printer;
    unsigned long design;

    static SketchResolution Of(ContextProcessor const& processor);
};

/// Width of a wide element in dots.
unsigned ComputeWideBarWidth(unsigned narrow, float ratio);
/// The ratio that a text begins with, to one decimal; 0 if it begins with no digit. Throws what std::stof throws.
float ParseRatio(std::string const& text);
/// From 2 to 3.
bool CheckRatio(float ratio);
/// At least one dot.
unsigned ClampBarcodeHeight(unsigned height);
/// The cell size in dots of two-dimensional symbols at that resolution; 0 if there is none.
unsigned MagnificationDefaultDPIConversion(Scripting::Dpi dpi);
/// 0 takes the default of the resolution; anything else is at most ten times `limit`.
unsigned ClampMagnificationFactor(Scripting::Dpi dpi, unsigned value, unsigned limit);

/// Makes lines of `leading`, the transformed data, the check digits if wanted, and `trailing`.
InterpretationText AddGuardsAndAppendCheckDigit(bool appendCheckDigit, char leading, char trailing,
                                                BarcodeTransform transform);
std::string ConvertToUpper(std::string_view text);
/// Leaves out every character that is not in `alphabet`.
BarcodeTransform KeepCharacters(std::string_view alphabet);

namespace Code39 {

/// In upper case, without what the symbology lacks; start and stop characters that a host sent are lacking too.
std::string TransformInvalidInput(std::string const& text);

}  // namespace Code39

/// What is printed in place of a symbol; nothing for valid data.
std::optional<std::string> GetBarcodeErrorMessage(BarcodeStatus status);
/// Reports that the field's data were refused, with `reason`, or what `message` means if that is empty.
void ReportRefusedBarcode(ContextProcessor const& processor, std::string_view message, std::string_view reason = {});
/// What `repair` makes of refused text, which is reported; empty text is no symbol, and reported as refused.
std::string RepairBarcodeData(ContextProcessor const& processor, std::string const& text, std::string_view message,
                              BarcodeTransform const& repair);
/// Reports refused data, and draws the message at the field origin if validation is on or `force` is set. The next
/// field then starts where this one should have stood.
void HandleBarcodeError(ContextProcessor& processor, std::string const& message, bool force,
                        std::string_view reason = {});
/// White text on a black bar.
void DrawBarcodeError(Scripting::GraphicContext& target, ZplPoint origin, ZplOrientation orientation,
                      Justification justification, std::string const& message);

}  // namespace ZplCore
