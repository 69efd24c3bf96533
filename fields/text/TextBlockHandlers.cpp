#include "fields/text/TextHandlers.h"

#include <algorithm>

#include "fields/placement/UnitConversion.h"
#include "fields/text/TextElementProcessor.h"
#include "frontend/context/ZplContextKeys.h"
#include "frontend/handlers/CommandHandlerPool.h"
#include "frontend/stream/ParameterRange.h"
#include "frontend/stream/ZplParse.h"

namespace {

using ZplCore::Sketching::TextElementProcessor;

constexpr int Limit = 9999;

unsigned ParseIndent(ZplCommand const& command) {
    int const indent = ZplParse<int>(command, 4).ValueOr(static_cast<int>(ZplContextDefaults::HangingIndent));
    if (indent > Limit) return ZplContextDefaults::HangingIndent;
    return static_cast<unsigned>(std::max(indent, 0));
}

void StoreRenderFunction(Context& current, ContextProcessor& processor, ZplContextKeys::RenderFunction function) {
    processor.set(current, ZplContextKeys::FieldRenderFunction, std::move(function));
}

/// `^FB`: breaks the text of this field into lines.
class FieldBlockHandler : public HandlerFor<CommandId("FB")> {
public:
    bool HandleCommand(Context& current, ZplCommand const& command, ContextProcessor& processor) override {
        // None is the same as nothing.
        auto const lines =
            OnlyWithin(command, 1, ZplParse<unsigned>(command, 1), {0, Limit}).Where([](unsigned n) { return n != 0; });
        auto const spacing = OnlyWithin(command, 2, ZplParse<int>(command, 2), {-Limit, Limit});
        processor.set(current, ZplContextKeys::TextBlockWidth,
                      ZplParse<unsigned>(command, 0)
                          .Map(ZplCore::ApplyDpiScale(processor))
                          .ValueOr(ZplContextDefaults::TextBlockWidth));
        processor.set(current, ZplContextKeys::TextBlockLineCount, lines.ValueOr(ZplContextDefaults::TextBlockLines));
        processor.set(current, ZplContextKeys::TextBlockLineSpacing, spacing.ValueOr(ZplContextDefaults::LineSpace));
        processor.set(
            current, ZplContextKeys::TextBlockJustification,
            ZplParse<Scripting::ScriptTextJustification>(command, 3).ValueOr(ZplContextDefaults::BlockJustification));
        processor.set(current, ZplContextKeys::TextBlockIndent, ParseIndent(command));
        StoreRenderFunction(current, processor, [](ContextProcessor& atRender) {
            TextElementProcessor::ProcessFieldBlock(atRender.GetCurrentContext(), atRender);
        });
        return true;
    }
};

/// `^TB`: breaks the text of this field into the lines that fit a box.
class TextBlocksHandler : public HandlerFor<CommandId("TB")> {
public:
    bool HandleCommand(Context& current, ZplCommand const& command, ContextProcessor& processor) override {
        constexpr unsigned SmallestSide = 1;  // dots
        if (auto const orientation = ZplParse<ZplOrientation>(command, 0))
            processor.set(current, ZplContextKeys::FieldOrientation, *orientation);
        processor.set(current, ZplContextKeys::TextBlockWidth, ZplParse<unsigned>(command, 1).ValueOr(SmallestSide));
        unsigned const height = ZplParse<unsigned>(command, 2).ValueOr(SmallestSide);
        StoreRenderFunction(current, processor, [height](ContextProcessor& atRender) {
            TextElementProcessor::ProcessTextBlock(atRender.GetCurrentContext(), atRender, height);
        });
        return true;
    }
};

}  // namespace

void AddTextBlockHandlers(CommandHandlerPool& pool) {
    pool.AddToCache<FieldBlockHandler>();
    pool.AddToCache<TextBlocksHandler>();
}
