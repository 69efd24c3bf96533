#include "barcodes/frame/LinearFrame.h"

#include <algorithm>

#include "barcodes/frame/BarcodeArithmetic.h"
#include "barcodes/frame/BarcodeError.h"
#include "barcodes/frame/BarcodeParameters.h"
#include "barcodes/frame/SymbolFrame.h"
#include "fields/placement/RenderPoints.h"
#include "fields/text/TextDrawing.h"
#include "foundation/Log.h"
#include "foundation/Quoted.h"
#include "frontend/context/ZplContextKeys.h"
#include "frontend/stream/Ascii.h"

namespace ZplCore {

namespace {

/// The font of the line that people read, magnified by the module width.
FontName const InterpretationLineFont = "A";

struct LinearBarcode {
    bool printLine;
    bool lineAbove;
    BarcodeValidate validate;
    LinearEncode encode;
    InterpretationText interpretationText;
    BarcodeTransform inputTransform;
    BarcodeTransform invalidTransform;
};

void DrawInterpretationLine(ContextProcessor& processor, Scripting::GraphicContext const& target,
                            LinearTransform const& transform, LinearBarcodeStyle const& style,
                            Scripting::SketchedBitmap const& symbol, std::string const& bytes) {
    constexpr int GapAbove = 8;  // dots
    constexpr int GapBelow = 6;  // dots
    constexpr unsigned CodePage = 0;
    auto const m = static_cast<std::int64_t>(style.narrow);
    std::string const text = ZplCodePageToUTF8(bytes, CodePage);
    std::int64_t const width = target.MeasureText(InterpretationLineFont, text, 1, 0, true);
    std::int64_t const height = target.GetFontHeight(InterpretationLineFont);
    std::int64_t x = (static_cast<std::int64_t>(symbol.logicalWidth) - m * width) / 2;
    auto const orientation = processor.at(ZplContextKeys::FieldOrientation);
    // Turned back, a line starts at its last dot.
    if (orientation == ZplOrientation::Inverted || orientation == ZplOrientation::BottomUp) --x;
    std::int64_t const y =
        style.lineAbove ? -GapAbove - m * height : static_cast<std::int64_t>(symbol.logicalHeight) + GapBelow;
    DrawUTF8Text(processor, bytes, CodePage, transform * ZplPoint(static_cast<int>(x), static_cast<int>(y)),
                 InterpretationLineFont, style.narrow, style.narrow);
}

/// What a symbology leaves out without refusing it is in neither its bars nor its line.
void ReportLostCharacters(std::string const& data, std::string const& line) {
    auto const isAscii = [](std::string const& bytes) { return std::all_of(bytes.begin(), bytes.end(), IsAscii); };
    if (isAscii(data) || !isAscii(line)) return;
    Log::Report(LogTopic::Data, "a barcode and its line leave out what is not ASCII of the data " + Quoted(data));
}

/// Steps that both linear families share, once the widths are known.
void RenderLinear(ContextProcessor& processor, LinearBarcode const& barcode, LinearBarcodeStyle const& style) {
    auto const& target = processor.GetGraphicContext();
    if (!target) return;
    target->SetFieldVariable(processor.at(ZplContextKeys::FieldVariable));
    std::string const data = processor.at(ZplContextKeys::FieldData);
    std::string text = barcode.inputTransform ? barcode.inputTransform(data) : data;
    auto const message = GetBarcodeErrorMessage(barcode.validate(text));
    if (message) {
        if (processor.at(ZplContextKeys::EnableBarcodeValidation) || !barcode.invalidTransform) {
            HandleBarcodeError(processor, *message, false);
            return;
        }
        text = RepairBarcodeData(processor, text, *message, barcode.invalidTransform);
    }
    auto const model = barcode.encode(text);
    if (!model) {
        if (!text.empty()) ReportRefusedBarcode(processor, {});
        return;
    }
    if (model->GetBlocks().empty()) ReportRefusedBarcode(processor, {}, "the symbology has none of their characters");
    NoteEncoded(processor, text);
    std::string const line = barcode.interpretationText(data, model->GetCheckDigit());
    if (!message && !model->GetBlocks().empty()) ReportLostCharacters(data, line);
    DrawLinearBarcode(processor, *model, style, line);
}

}  // namespace

LinearBarcodeStyle LinearBarcodeStyle::Fixed(ContextProcessor const& processor, bool printLine, bool lineAbove) {
    unsigned const narrow = processor.at(ZplContextKeys::BarcodeModuleWidth);
    return {narrow, 2 * narrow, processor.at(ZplContextKeys::BarcodeHeight), printLine, lineAbove};
}

void DrawSketchWithLine(ContextProcessor& processor, Scripting::SketchedBitmap const& symbol,
                        LinearBarcodeStyle const& style, std::string const& interpretation) {
    auto const& target = processor.GetGraphicContext();
    if (!target) return;
    int const width = static_cast<int>(symbol.logicalWidth);
    int const height = static_cast<int>(symbol.logicalHeight);
    auto const transform = GetFieldLocalToGlobalTransform(processor, width, height, {});
    StoreNextFieldOrigin(processor, transform * Rendering::CreateLocalNextPoint(processor, width, height, {}));
    DrawImage(*target,
              {*symbol.rows, static_cast<unsigned>(symbol.bitmapWidth), static_cast<unsigned>(symbol.bitmapHeight)},
              transform * ZplPoint(), processor.at(ZplContextKeys::FieldOrientation),
              static_cast<unsigned>(symbol.logicalWidth), static_cast<unsigned>(symbol.logicalHeight), false);
    if (style.printLine) DrawInterpretationLine(processor, *target, transform, style, symbol, interpretation);
}

void DrawLinearBarcode(ContextProcessor& processor, Barcode::Model::LinearBarcodeModel const& model,
                       LinearBarcodeStyle const& style, std::string const& interpretation) {
    auto const resolution = SketchResolution::Of(processor);
    DrawSketchWithLine(processor,
                       Scripting::GraphicHelper::SketchLinearBarcode(model, style.narrow, style.wide, style.height,
                                                                     resolution.printer, resolution.design),
                       style, interpretation);
}

namespace {

/// The closure of both linear families: they differ only in what makes an element wide.
ZplContextKeys::RenderFunction RenderFunctionOf(LinearBarcode barcode, bool usesRatio) {
    return [barcode = std::move(barcode), usesRatio](ContextProcessor& processor) {
        auto style = LinearBarcodeStyle::Fixed(processor, barcode.printLine, barcode.lineAbove);
        if (usesRatio) style.wide = ComputeWideBarWidth(style.narrow, processor.at(ZplContextKeys::BarcodeRatio));
        RenderLinear(processor, barcode, style);
    };
}

}  // namespace

ZplContextKeys::RenderFunction LinearBarcodeRenderFunction(bool printLine, bool lineAbove, BarcodeValidate validate,
                                                           LinearEncode encode, InterpretationText interpretationText,
                                                           BarcodeTransform inputTransform,
                                                           BarcodeTransform invalidTransform) {
    return RenderFunctionOf({printLine, lineAbove, std::move(validate), std::move(encode),
                             std::move(interpretationText), std::move(inputTransform), std::move(invalidTransform)},
                            true);
}

ZplContextKeys::RenderFunction FixedLinearBarcodeRenderFunction(bool printLine, bool lineAbove,
                                                                BarcodeValidate validate, LinearEncode encode,
                                                                InterpretationText interpretationText,
                                                                BarcodeTransform inputTransform,
                                                                BarcodeTransform invalidTransform) {
    return RenderFunctionOf({printLine, lineAbove, std::move(validate), std::move(encode),
                             std::move(interpretationText), std::move(inputTransform), std::move(invalidTransform)},
                            false);
}

}  // namespace ZplCore
