#include "fields/text/TextHandlers.h"

#include <algorithm>

#include "fields/map/FieldFunction.h"
#include "fields/placement/UnitConversion.h"
#include "fields/text/FieldText.h"
#include "fields/text/TextBlockText.h"
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

std::string_view NameOf(Scripting::ScriptTextJustification justification) {
    switch (justification) {
        case Scripting::ScriptTextJustification::Right: return "right";
        case Scripting::ScriptTextJustification::Center: return "center";
        case Scripting::ScriptTextJustification::Justified: return "justified";
        default: return "left";
    }
}

void DescribeFieldBlock(ContextProcessor const& at, ZplCore::FieldNotes& notes) {
    notes.kind = ZplCore::FieldKind::TextBlock;
    notes.text = ZplCore::Sketching::FieldBlockText(at.at(ZplContextKeys::FieldData), at);
    notes.Add("width", at.at(ZplContextKeys::TextBlockWidth), "dots")
        .Add("lines", at.at(ZplContextKeys::TextBlockLineCount))
        .Add("line spacing", at.at(ZplContextKeys::TextBlockLineSpacing), "dots")
        .Add("justification", NameOf(at.at(ZplContextKeys::TextBlockJustification)))
        .Add("indent", at.at(ZplContextKeys::TextBlockIndent), "dots");
}

void DescribeTextBlock(ContextProcessor const& at, ZplCore::FieldNotes& notes, unsigned height) {
    notes.kind = ZplCore::FieldKind::TextBlock;
    notes.text = ZplCore::Sketching::TextBlockText(ZplCore::FieldText(at.at(ZplContextKeys::FieldData), at));
    notes.Add("width", at.at(ZplContextKeys::TextBlockWidth), "dots").Add("height", height, "dots");
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
        auto const draw = [](ContextProcessor& atRender) {
            TextElementProcessor::ProcessFieldBlock(atRender.GetCurrentContext(), atRender);
        };
        ZplCore::StoreFieldFunction(current, processor, draw, DescribeFieldBlock);
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
        auto const draw = [height](ContextProcessor& atRender) {
            TextElementProcessor::ProcessTextBlock(atRender.GetCurrentContext(), atRender, height);
        };
        ZplCore::StoreFieldFunction(
            current, processor, draw,
            [height](ContextProcessor const& at, ZplCore::FieldNotes& notes) { DescribeTextBlock(at, notes, height); });
        return true;
    }
};

}  // namespace

void AddTextBlockHandlers(CommandHandlerPool& pool) {
    pool.AddToCache<FieldBlockHandler>();
    pool.AddToCache<TextBlocksHandler>();
}
