#include "barcodes/linear/LinearBarcodeHandlers.h"

#include "Barcode/Encoder/Code128Encoder.h"
#include "Scripting/GraphicContext.h"
#include "barcodes/frame/BarcodeError.h"
#include "barcodes/frame/BarcodeParameters.h"
#include "barcodes/frame/LinearFrame.h"
#include "barcodes/linear/Code128Text.h"
#include "frontend/context/ZplContextKeys.h"
#include "frontend/handlers/CommandHandlerPool.h"

namespace {

using Barcode::Encoder::Code128EncodeMode;
using Barcode::Encoder::Code128Encoder;
using namespace ZplCore;

/// A render function of the fixed linear family for one encode mode. Data are repaired by the transform, so there is
/// no second repair.
ZplContextKeys::RenderFunction PlainMode(bool printLine, bool lineAbove, Code128EncodeMode mode,
                                         BarcodeTransform inputTransform, BarcodeTransform line) {
    return FixedLinearBarcodeRenderFunction(
        printLine, lineAbove, [mode](std::string const& text) { return Code128Encoder::Validate(text, mode); },
        [mode](std::string const& text) { return Code128Encoder::Encode(text, mode); },
        [line = std::move(line)](std::string const& data, std::string const&) { return line(data); },
        std::move(inputTransform), {});
}

ZplContextKeys::RenderFunction ModeN(bool printLine, bool lineAbove, bool ucc) {
    return PlainMode(
        printLine, lineAbove, Code128EncodeMode::Manual,
        [ucc](std::string const& data) { return Code128::ModeNEncoderInputTransform(data, ucc); },
        [ucc](std::string const& data) { return Code128::ModeNTransformHRText(data, ucc); });
}

void ModeURenderFunc(ContextProcessor& processor, bool printLine, bool lineAbove) {
    auto const& target = processor.GetGraphicContext();
    if (!target) return;
    target->SetFieldVariable(processor.at(ZplContextKeys::FieldVariable));
    std::string const data = processor.at(ZplContextKeys::FieldData);
    bool const validates = processor.at(ZplContextKeys::EnableBarcodeValidation);
    auto const message = GetBarcodeErrorMessage(Code128::ModeUValidation(data));
    if (message && validates) {
        HandleBarcodeError(processor, *message, false);
        return;
    }
    BarcodeTransform const transform =
        validates ? Code128::ModeUEncoderInputTransformWithoutPadding : Code128::ModeUEncoderInputTransformWithPadding;
    std::string const digits = message ? RepairBarcodeData(processor, data, *message, transform) : transform(data);
    NoteEncoded(processor, digits);
    if (auto const model = Code128Encoder::Encode(digits, Code128EncodeMode::Ucc))
        DrawLinearBarcode(processor, *model, LinearBarcodeStyle::Fixed(processor, printLine, lineAbove),
                          Code128::ModeUTransformHRText(data, !validates));
}

void ModeDRenderFunc(ContextProcessor& processor, bool printLine, bool lineAbove) {
    auto const& target = processor.GetGraphicContext();
    if (!target) return;
    target->SetFieldVariable(processor.at(ZplContextKeys::FieldVariable));
    std::string const data = processor.at(ZplContextKeys::FieldData);
    std::string const input = Code128::ModeD::TransformInput(data);
    if (auto const message = GetBarcodeErrorMessage(Code128::ModeD::Validate(input))) {
        HandleBarcodeError(processor, *message, true);
        return;
    }
    if (auto const model = Code128::ModeD::Encode(input))
        DrawLinearBarcode(processor, *model, LinearBarcodeStyle::Fixed(processor, printLine, lineAbove),
                          Code128::ModeD::TransformInterpretationLine(data));
}

/// `^BC`: Code 128, in the modes N (subsets by invocations), U (shipping container), A (automatic) and D (GS1).
class Code128BarcodeHandler : public HandlerFor<CommandId("BC")> {
public:
    bool HandleCommand(Context& current, ZplCommand const& command, ContextProcessor& processor) override {
        StoreBarcodeOrientation(current, command, processor);
        StoreBarcodeHeight(current, command, 1, processor);
        bool const printLine = ParseFlag(command, 2, true);
        bool const lineAbove = ParseFlag(command, 3, false);
        bool const ucc = ParseFlag(command, 4, false);
        char const mode = ParseLetter(command, 5, 'N');

        ZplContextKeys::RenderFunction render;
        switch (mode) {
            case 'U':
                render = [=](ContextProcessor& atRender) { ModeURenderFunc(atRender, printLine, lineAbove); };
                break;
            case 'D':
                render = [=](ContextProcessor& atRender) { ModeDRenderFunc(atRender, printLine, lineAbove); };
                break;
            case 'A':
                render = PlainMode(printLine, lineAbove, Code128EncodeMode::Automatic,
                                   Code128::ModeAEncoderInputTransform, Code128::ModeAHRTextTransform);
                break;
            default: render = ModeN(printLine, lineAbove, ucc); break;
        }
        bool const isOther = mode == 'U' || mode == 'D' || mode == 'A';
        return StoreBarcodeRender(current, processor, std::move(render), "Code 128",
                                  [=, mode = isOther ? mode : 'N'](ContextProcessor const& at, FieldNotes& notes) {
                                      notes.Add("mode", mode);
                                      if (mode == 'N') notes.Add("UCC check digit", ucc);
                                      DescribeBars(at, notes, printLine, lineAbove, false);
                                  });
    }
};

}  // namespace

void AddCode128BarcodeHandler(CommandHandlerPool& pool) { pool.AddToCache<Code128BarcodeHandler>(); }
