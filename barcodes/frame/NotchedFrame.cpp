#include "barcodes/frame/NotchedFrame.h"

#include "barcodes/frame/BarcodeError.h"
#include "barcodes/frame/BarcodeParameters.h"
#include "frontend/context/ZplContextKeys.h"

namespace ZplCore {

ZplContextKeys::RenderFunction NotchedBarcodeRenderFunction(BarcodeValidate validate, LinearEncode encode,
                                                            NotchedRender render, NotchedSplit split,
                                                            BarcodeTransform inputTransform, BarcodeReason reason) {
    return [=](ContextProcessor& processor) {
        auto const& target = processor.GetGraphicContext();
        if (!target) return;
        target->SetFieldVariable(processor.at(ZplContextKeys::FieldVariable));
        std::string const data = processor.at(ZplContextKeys::FieldData);
        std::string const text = inputTransform ? inputTransform(data) : data;
        if (auto const message = GetBarcodeErrorMessage(validate(text))) {
            HandleBarcodeError(processor, *message, true, reason ? reason(text) : std::string_view());
            return;
        }
        auto const model = encode(text);
        if (!model) return;
        // The encoder was given what the symbology made of the text.
        NoteEncoded(processor, model->GetText());
        render(*model, processor, split ? split(data, model->GetCheckDigit()) : std::vector<std::string>{data});
    };
}

}  // namespace ZplCore
