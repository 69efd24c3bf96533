#include "barcodes/postal/PostalBarcodeHandlers.h"

#include <algorithm>

#include "Barcode/Encoder/PlanetEncoder.h"
#include "barcodes/frame/BarcodeArithmetic.h"
#include "barcodes/frame/BarcodeParameters.h"
#include "barcodes/postal/PostalEncoders.h"
#include "barcodes/postal/PostalFrame.h"
#include "barcodes/postal/PostalSketch.h"
#include "frontend/context/ZplContextKeys.h"
#include "frontend/handlers/CommandHandlerPool.h"
#include "frontend/stream/ZplParse.h"

namespace {

using namespace Barcode::Encoder;
using namespace ZplCore;

enum PostalType : unsigned { Postnet = 0, Planet = 1, IntelligentMail = 3 };

std::string Plain(std::string const& data, std::string const&) { return data; }

/// Hosts write ZIP codes with their hyphen.
std::string OnlyDigits(std::string const& data) { return KeepCharacters("0123456789")(data); }

/// Digits cut or filled up from the left to the nearest length that there is.
template <std::size_t... Lengths>
std::string RepairLength(std::string const& data) {
    std::string digits = OnlyDigits(data);
    for (std::size_t const length : {Lengths...}) {
        if (digits.size() <= length) return std::string(length - digits.size(), '0') + digits;
        if (length == std::max({Lengths...})) digits.resize(length);
    }
    return digits;
}

bool StorePostal(Context& current, ZplCommand const& command, ContextProcessor& processor, unsigned type) {
    StoreBarcodeOrientation(current, command, processor);
    StoreBarcodeHeight(current, command, 1, processor);
    bool const line = ParseFlag(command, 2, true);
    bool const above = ParseFlag(command, 3, false);
    unsigned long const spacing = PostalBarWidth(processor);
    ZplContextKeys::RenderFunction render;
    std::string_view symbology = "POSTNET";
    switch (type) {
        case Planet:
            symbology = "PLANET";
            render = USPSBarcodeRenderFunction(line, above, PlanetEncoder::Validate, PlanetEncoder::Encode, OnlyDigits,
                                               Plain, spacing, RepairLength<11, 13>);
            break;
        case IntelligentMail:
            symbology = "Intelligent Mail";
            render = IntelligentMailRenderFunction(line, above, IntelligentMailEncoder::Validate,
                                                   IntelligentMailEncoder::Encode, OnlyDigits, Plain);
            break;
        default:
            render = USPSBarcodeRenderFunction(line, above, PostnetEncoder::Validate, PostnetEncoder::Encode,
                                               OnlyDigits, Plain, spacing, RepairLength<5, 9, 11>);
            break;
    }
    return StoreBarcodeRender(
        current, processor, std::move(render), symbology,
        [=](ContextProcessor const& at, FieldNotes& notes) { DescribeBars(at, notes, line, above, false); });
}

// Symbologies of postal services. h is the height, f whether the line is printed, g whether it stands above the bars.

/// `^B5`: PLANET. h, f, g.
class PlanetCodeBarcodeHandler : public HandlerFor<CommandId("B5")> {
public:
    bool HandleCommand(Context& current, ZplCommand const& command, ContextProcessor& processor) override {
        return StorePostal(current, command, processor, Planet);
    }
};

/// `^BZ`: h, f, g, type: 0 POSTNET, 1 PLANET, 3 Intelligent Mail.
class PostalBarcodeHandler : public HandlerFor<CommandId("BZ")> {
public:
    bool HandleCommand(Context& current, ZplCommand const& command, ContextProcessor& processor) override {
        return StorePostal(current, command, processor, ZplParse<unsigned>(command, 4).ValueOr(Postnet));
    }
};

}  // namespace

void AddPostalBarcodeHandlers(CommandHandlerPool& pool) {
    pool.AddToCache<PlanetCodeBarcodeHandler>();
    pool.AddToCache<PostalBarcodeHandler>();
}
