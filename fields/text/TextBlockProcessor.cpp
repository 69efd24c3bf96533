#include <algorithm>

#include "Scripting/TextGauge.h"
#include "fields/placement/RenderPoints.h"
#include "fields/text/FieldText.h"
#include "fields/text/TextBlockLayout.h"
#include "fields/text/TextBlockLines.h"
#include "fields/text/TextBlockText.h"
#include "fields/text/TextElementProcessor.h"
#include "fields/text/TextFont.h"
#include "foundation/Log.h"
#include "frontend/context/Utf8Text.h"
#include "frontend/context/ZplContextKeys.h"

namespace ZplCore::Sketching {

namespace {

/// What the drawing target makes of the paragraphs of a text.
std::u32string Prepare(Block const& block, std::string_view text) {
    if (!block.font.isBitmap) return ToCodePoints(text);
    std::string prepared;
    while (true) {
        std::size_t const end = text.find('\n');
        std::string paragraph(text.substr(0, end));
        block.target.PrepareText(block.font.drawName, paragraph);
        prepared += paragraph;
        if (end == text.npos) return ToCodePoints(prepared);
        prepared += '\n';
        text.remove_prefix(end + 1);
    }
}

/// Tells of a text that its block does not hold, once for all copies of a label. `surplus` counts the lines too many.
void ReportFullBlock(Block const& block, Dots surplus) {
    if (block.processor.CurrentLabelNumber() != 0 || (block.width > 0 && surplus == 0)) return;
    std::string report = "the text \"" + BeginningOfData(block.processor) + "\" ";
    if (block.width <= 0) {
        report += "is not drawn: its block has no width";
    } else {
        report += "does not fit its block of " + std::to_string(block.lineCount) +
                  (block.lineCount == 1 ? " line: " : " lines: ");
        report += block.overprints ? std::to_string(surplus) + (surplus == 1 ? " more is" : " more are") +
                                         " printed over the last one"
                                   : "the rest is left out";
    }
    Log::Report(LogTopic::OffPage, report);
}

/// The shape of a block with what its drawing target can tell of a text.
BlockShape ShapeOf(Block const& block, AdvanceCache& advance, std::u32string_view text) {
    BlockShape shape{block.width, block.indent, block.run.spacing, [&advance](char32_t c) { return advance(c); }};
    if (!block.gauge) return shape;
    for (int const dots : block.gauge->FindAdvances(block.SizedFont(), text))
        shape.advances.push_back(Dots{dots} * block.font.magnificationX);
    shape.breaks = block.gauge->FindBreaks(text);
    return shape;
}

void DrawBlock(Block& block, std::string_view data) {
    AdvanceCache advance(block);
    Dots surplus = 0;
    std::u32string const text = Prepare(block, data);
    BlockShape const shape = ShapeOf(block, advance, text);
    LinePrinter printer(block, advance, text, !shape.advances.empty());
    // A block without width shows nothing, as hosts expect of one that they left out.
    if (block.width > 0) {
        Dots index = 0;
        BreakIntoLines(text, shape, [&](BlockLine const& line) {
            if (index >= block.lineCount && !line.text.empty()) ++surplus;
            if (index >= block.lineCount && !block.overprints) return surplus == 0;
            printer.Print(line, index++);
            return true;
        });
    }
    ReportFullBlock(block, surplus);
    // The transform has moved the block already.
    auto const height = static_cast<int>(block.LineRows() + block.Extent());
    StoreNextFieldOrigin(block.processor,
                         printer.Transform() * Rendering::CreateLocalNextPoint(
                                                   block.processor, static_cast<int>(block.width), height, {}));
}

/// A block in the font of the field in force.
Block MakeBlock(Scripting::GraphicContext& target, ContextProcessor& processor) {
    TextFont font = TextFont::Of(processor, target);
    TextMeasures const line = MeasureLine(target, font);
    return {.target = target,
            .gauge = Scripting::TextGauge::Of(&target),
            .processor = processor,
            .font = std::move(font),
            .line = line,
            .run = {processor.at(ZplContextKeys::TextDirection), processor.at(ZplContextKeys::TextSpacing)},
            .width = processor.at(ZplContextKeys::TextBlockWidth),
            .pitch = line.height};
}

}  // namespace

void TextElementProcessor::ProcessFieldBlock(Context const&, ContextProcessor& processor) {
    auto const target = processor.GetGraphicContext();
    if (!target) return;
    std::string const& data = processor.at(ZplContextKeys::FieldData);
    ReportMisread(data, processor);
    std::string const text = FieldBlockText(data, processor);
    if (text.empty()) return;
    target->SetFieldVariable(processor.at(ZplContextKeys::FieldVariable));
    Block block = MakeBlock(*target, processor);
    block.alignment = processor.at(ZplContextKeys::TextBlockJustification);
    block.indent = processor.at(ZplContextKeys::TextBlockIndent);
    block.pitch += processor.at(ZplContextKeys::TextBlockLineSpacing);
    block.lineCount = std::max(processor.at(ZplContextKeys::TextBlockLineCount), 1U);
    block.overprints = true;
    DrawBlock(block, text);
}

void TextElementProcessor::ProcessTextBlock(Context&, ContextProcessor& processor, unsigned height) {
    auto const target = processor.GetGraphicContext();
    if (!target) return;
    std::string const& data = processor.at(ZplContextKeys::FieldData);
    ReportMisread(data, processor);
    std::string const text = TextBlockText(FieldText(data, processor));
    if (text.empty()) return;
    target->SetFieldVariable(processor.at(ZplContextKeys::FieldVariable));
    Block block = MakeBlock(*target, processor);
    // Hosts that leave the height out, or take it for that of the capitals, expect their text all the same.
    block.lineCount = std::max<Dots>(Dots{height} / std::max<Dots>(block.pitch, 1), 1);
    DrawBlock(block, text);
}

}  // namespace ZplCore::Sketching
