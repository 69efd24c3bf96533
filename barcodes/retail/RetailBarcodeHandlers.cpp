#include "barcodes/retail/RetailBarcodeHandlers.h"

#include "barcodes/frame/BarcodeParameters.h"
#include "barcodes/frame/NotchedFrame.h"
#include "barcodes/retail/RetailRendering.h"
#include "barcodes/retail/RetailText.h"
#include "frontend/context/ZplContextKeys.h"
#include "frontend/handlers/CommandHandlerPool.h"

namespace {

using namespace Barcode::Encoder;
using namespace ZplCore;
using Model = Barcode::Model::LinearBarcodeModel;

/// What a command of these symbologies says.
struct NotchedCommand {
    std::string_view symbology;
    bool line;
    bool above;
};

bool StoreNotched(Context& current, ZplCommand const& command, ContextProcessor& processor, NotchedCommand const& says,
                  BarcodeValidate validate, LinearEncode encode, NotchedRender render, NotchedSplit split,
                  BarcodeReason reason = {}) {
    StoreBarcodeOrientation(current, command, processor);
    StoreBarcodeHeight(current, command, 1, processor);
    return StoreBarcodeRender(current, processor,
                              NotchedBarcodeRenderFunction(std::move(validate), std::move(encode), std::move(render),
                                                           std::move(split), {}, std::move(reason)),
                              says.symbology, [=](ContextProcessor const& at, FieldNotes& notes) {
                                  DescribeBars(at, notes, says.line, says.above, false);
                              });
}

/// Two digits or five.
ValidationStatus Ext5Validation(std::string const& text) {
    auto const status = Ext5Encoder::Validate(text);
    return text.size() == 2 ? Ext2Encoder::Validate(text) : status;
}

LinearModel EncodeExtension(std::string const& text) {
    return text.size() == 2 ? Ext2Encoder::Encode(text) : Ext5Encoder::Encode(text);
}

// EAN and UPC symbols, and what goes with them at the till. h is the height of the bars above the notches, f whether
// the digits are printed, g whether they stand above the bars, e whether the check digit is among them.

/// `^B8`: EAN-8. h, f, g.
class Ean8BarcodeHandler : public HandlerFor<CommandId("B8")> {
public:
    bool HandleCommand(Context& current, ZplCommand const& command, ContextProcessor& processor) override {
        bool const line = ParseFlag(command, 2, true);
        bool const above = ParseFlag(command, 3, false);
        return StoreNotched(
            current, command, processor, {"EAN-8", line, above}, EAN8::Validate, EAN8::Encode,
            [=](Model& model, ContextProcessor& at, TextGroups const& groups) {
                RenderEAN8(line, above, model, at, groups);
            },
            EAN8::SplitUpText, EAN8::Reason);
    }
};

/// `^B9`: UPC-E. h, f, g, e.
class UpcEBarcodeHandler : public HandlerFor<CommandId("B9")> {
public:
    bool HandleCommand(Context& current, ZplCommand const& command, ContextProcessor& processor) override {
        bool const line = ParseFlag(command, 2, true);
        bool const above = ParseFlag(command, 3, false);
        bool const check = ParseFlag(command, 4, true);
        return StoreNotched(
            current, command, processor, {"UPC-E", line, above}, UPCE::Validate, UPCE::Encode,
            [=](Model& model, ContextProcessor& at, TextGroups const& groups) {
                RenderUPCE(line, above, check, model, at, groups);
            },
            UPCE::SplitUpText, UPCE::Reason);
    }
};

/// `^BE`: EAN-13. h, f, g.
class Ean13BarcodeHandler : public HandlerFor<CommandId("BE")> {
public:
    bool HandleCommand(Context& current, ZplCommand const& command, ContextProcessor& processor) override {
        bool const line = ParseFlag(command, 2, true);
        bool const above = ParseFlag(command, 3, false);
        return StoreNotched(
            current, command, processor, {"EAN-13", line, above}, EAN13::Validate, EAN13::Encode,
            [=](Model& model, ContextProcessor& at, TextGroups const& groups) {
                RenderEAN13(line, above, model, at, groups);
            },
            EAN13::SplitUpText);
    }
};

/// `^BS`: the supplements of two and of five digits. h, f, g, both flags on unless switched off.
class UpcEanExtensionsBarcodeHandler : public HandlerFor<CommandId("BS")> {
public:
    bool HandleCommand(Context& current, ZplCommand const& command, ContextProcessor& processor) override {
        bool const line = ParseFlag(command, 2, true);
        bool const above = ParseFlag(command, 3, true);
        return StoreNotched(
            current, command, processor, {"EAN/UPC supplement", line, above}, Ext5Validation, EncodeExtension,
            [=](Model& model, ContextProcessor& at, TextGroups const& groups) {
                RenderExt(line, above, model, at, groups);
            },
            {}, [](std::string const&) { return "a supplement has two digits or five"; });
    }
};

/// `^BU`: UPC-A. h, f, g, e.
class UpcABarcodeHandler : public HandlerFor<CommandId("BU")> {
public:
    bool HandleCommand(Context& current, ZplCommand const& command, ContextProcessor& processor) override {
        bool const line = ParseFlag(command, 2, true);
        bool const above = ParseFlag(command, 3, false);
        bool const check = ParseFlag(command, 4, true);
        return StoreNotched(
            current, command, processor, {"UPC-A", line, above}, UPCA::Validate, UPCA::Encode,
            [=](Model& model, ContextProcessor& at, TextGroups const& groups) {
                RenderUPCA(line, above, check, model, at, groups);
            },
            UPCA::SplitUpText);
    }
};

}  // namespace

void AddRetailBarcodeHandlers(CommandHandlerPool& pool) {
    pool.AddToCache<Ean8BarcodeHandler>();
    pool.AddToCache<UpcEBarcodeHandler>();
    pool.AddToCache<Ean13BarcodeHandler>();
    pool.AddToCache<UpcEanExtensionsBarcodeHandler>();
    pool.AddToCache<UpcABarcodeHandler>();
}
