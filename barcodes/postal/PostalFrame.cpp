#include "barcodes/postal/PostalFrame.h"

#include <algorithm>

#include "barcodes/frame/BarcodeError.h"
#include "barcodes/frame/LinearFrame.h"
#include "barcodes/frame/SymbolFrame.h"
#include "barcodes/postal/PostalEncoders.h"
#include "barcodes/postal/PostalSketch.h"
#include "fields/placement/UnitConversion.h"
#include "frontend/context/ZplContextKeys.h"

namespace ZplCore {

namespace {

/// The steps that both frames share up to the sketch. The text that is encoded, or none if the field is done with.
std::optional<std::string> AcceptedText(ContextProcessor& processor, BarcodeValidate const& validate,
                                        BarcodeTransform const& inputTransform,
                                        BarcodeTransform const& invalidTransform, BarcodeReason const& reason = {}) {
    auto const& target = processor.GetGraphicContext();
    if (!target) return std::nullopt;
    target->SetFieldVariable(processor.at(ZplContextKeys::FieldVariable));
    std::string const data = processor.at(ZplContextKeys::FieldData);
    std::string const text = inputTransform ? inputTransform(data) : data;
    auto const message = GetBarcodeErrorMessage(validate(text));
    if (!message) return text;
    if (!processor.at(ZplContextKeys::EnableBarcodeValidation) && invalidTransform)
        return RepairBarcodeData(processor, text, *message, invalidTransform);
    HandleBarcodeError(processor, *message, false, reason ? reason(text) : std::string_view());
    return std::nullopt;
}

}  // namespace

ZplContextKeys::RenderFunction USPSBarcodeRenderFunction(bool printLine, bool lineAbove, BarcodeValidate validate,
                                                         PostalEncode encode, BarcodeTransform inputTransform,
                                                         InterpretationText interpretationText,
                                                         unsigned long barSpacing, BarcodeTransform invalidTransform) {
    return [=](ContextProcessor& processor) {
        auto const text = AcceptedText(processor, validate, inputTransform, invalidTransform);
        if (!text) return;
        auto const style = LinearBarcodeStyle::Fixed(processor, printLine, lineAbove);
        auto const resolution = SketchResolution::Of(processor);
        DrawSketchWithLine(processor,
                           Scripting::GraphicHelper::SketchUSPS2Barcode(encode(*text), barSpacing, style.height,
                                                                        resolution.printer, resolution.design),
                           style, interpretationText(processor.at(ZplContextKeys::FieldData), {}));
    };
}

ZplContextKeys::RenderFunction IntelligentMailRenderFunction(bool printLine, bool lineAbove, BarcodeValidate validate,
                                                             IntelligentMailEncode encode,
                                                             BarcodeTransform inputTransform,
                                                             InterpretationText interpretationText) {
    return [=](ContextProcessor& processor) {
        auto const text = AcceptedText(processor, validate, inputTransform, {}, IntelligentMailEncoder::Reason);
        if (!text) return;
        auto const style = LinearBarcodeStyle::Fixed(processor, printLine, lineAbove);
        auto const resolution = SketchResolution::Of(processor);
        DrawSketchWithLine(
            processor,
            Scripting::GraphicHelper::SketchIntelligentMailBarcode(encode(*text), PostalBarWidth(processor),
                                                                   style.height, resolution.printer, resolution.design),
            style, interpretationText(processor.at(ZplContextKeys::FieldData), {}));
    };
}

unsigned long PostalBarWidth(ContextProcessor const& processor) {
    // Postal bars have one width, a fiftieth of an inch, whatever the module width of other symbols.
    return std::max(1U, DesignDpi(processor) / 50);
}

}  // namespace ZplCore
