#include <algorithm>
#include <cstdint>
#include <unordered_map>

#include "Scripting/GraphicContext.h"
#include "fields/placement/RenderPoints.h"
#include "fields/text/FieldText.h"
#include "fields/text/TextBlockLayout.h"
#include "fields/text/TextBlockText.h"
#include "fields/text/TextElementProcessor.h"
#include "fields/text/TextFont.h"
#include "foundation/Log.h"
#include "frontend/context/Utf8Text.h"
#include "frontend/context/ZplContextKeys.h"

namespace ZplCore::Sketching {

namespace {

using Dots = std::int64_t;
using Align = Scripting::ScriptTextJustification;

/// A block on its way to the page.
struct Block {
    Scripting::GraphicContext& target;
    ContextProcessor& processor;
    TextFont font;
    TextMeasures line;  ///< of any line
    TextRun run;
    Align alignment = Align::Left;
    Dots width = 0;
    Dots indent = 0;          ///< of all lines of a paragraph but the first
    Dots pitch = 0;           ///< from one line to the next
    Dots lineCount = 1;       ///< that the block has room for
    bool overprints = false;  ///< surplus lines are drawn over the last one; otherwise they are left out

    Dots Extent() const { return std::max<Dots>(lineCount - 1, 0) * pitch; }
    /// Rows of a line that count for its place: down to the baseline if that stands on the origin.
    Dots LineRows() const {
        return processor.at(ZplContextKeys::FieldBaseline) == Baseline::Bottom ? line.ascent : line.height;
    }
};

/// Keeps the first line of a block that turns back at its origin, or the last one of a block that stands on its base,
/// on the origin. `extent` is the distance between the two in dots.
ShiftFunction BlockShift(Dots extent) {
    return [extent](ZplOrientation orientation, Baseline baseline, Justification justification) -> ZplPoint {
        ZplPoint const up(0, static_cast<int>(-extent));
        if (baseline == Baseline::Bottom) return up;
        bool const isRight = justification == Justification::Right;
        switch (orientation) {
            case ZplOrientation::Rotated: return isRight ? ZplPoint() : up;
            case ZplOrientation::Inverted: return up;
            case ZplOrientation::BottomUp: return isRight ? up : ZplPoint();
            case ZplOrientation::Normal: break;
        }
        return {};
    };
}

/// Advances of characters, each asked for once.
class AdvanceCache {
public:
    explicit AdvanceCache(Block const& block) : block_(block) {}

    Dots operator()(char32_t character) {
        auto const [entry, isNew] = advances_.try_emplace(character, 0);
        if (isNew) entry->second = Measure(character);
        return entry->second;
    }

private:
    Dots Measure(char32_t character) const {
        auto const& font = block_.font;
        if (font.isBitmap) return Dots{block_.target.GetCharacterWidth(font.drawName, character)} * font.magnificationX;
        auto const text = FromCodePoints({&character, 1});
        return block_.target.MeasureTrueTypeText(font.drawName, text, 0, font.pointSize, font.widthPercent).width;
    }

    Block const& block_;
    std::unordered_map<char32_t, Dots> advances_;
};

/// Draws the lines of a block, each at its place on the page.
class LinePrinter {
public:
    explicit LinePrinter(Block const& block, AdvanceCache& advance)
        : block_(block), advance_(advance), transform_(TransformOf(block)) {}

    LinearTransform const& Transform() const { return transform_; }

    void Print(BlockLine const& line, Dots index) {
        Dots const indent = line.beginsParagraph ? 0 : block_.indent;
        Dots const available = block_.width - indent;
        Dots const y = std::min(index, block_.lineCount - 1) * block_.pitch;
        if (block_.alignment == Align::Justified && !line.endsParagraph &&
            line.text.find(U' ') != std::u32string::npos) {
            PrintJustified(line.text, indent, y, available);
            return;
        }
        Dots const slack = available - WidthOf(line.text);
        Dots x = indent;
        if (block_.alignment == Align::Right) x += slack;
        if (block_.alignment == Align::Center) x += slack / 2;
        PrintAt(line.text, x, y);
    }

private:
    static LinearTransform TransformOf(Block const& block) {
        return GetFieldLocalToGlobalTransform(block.processor, static_cast<int>(block.width),
                                              static_cast<int>(block.LineRows()), BlockShift(block.Extent()));
    }

    Dots WidthOf(std::u32string_view text) {
        Dots width = text.empty() ? 0 : (static_cast<Dots>(text.size()) - 1) * block_.run.spacing;
        for (char32_t const c : text) width += advance_(c);
        return width;
    }

    /// Word by word, with what is left of the line spread over the gaps from the left.
    void PrintJustified(std::u32string_view text, Dots x, Dots y, Dots available) {
        auto gaps = static_cast<Dots>(std::count(text.begin(), text.end(), U' '));
        Dots slack = std::max<Dots>(available - WidthOf(text), 0);
        Dots const blank = advance_(U' ') + 2 * Dots{block_.run.spacing};
        while (!text.empty()) {
            auto const word = text.substr(0, text.find(U' '));
            if (!word.empty()) PrintAt(word, x, y);
            if (word.size() == text.size()) return;
            Dots const share = slack / gaps + (slack % gaps != 0 ? 1 : 0);
            x += WidthOf(word) + blank - (word.empty() ? block_.run.spacing : 0) + share;
            slack -= share;
            --gaps;
            text.remove_prefix(word.size() + 1);
        }
    }

    void PrintAt(std::u32string_view codePoints, Dots x, Dots y) {
        if (codePoints.empty()) return;
        std::string const text = FromCodePoints(codePoints);
        TextMeasures measures = block_.line;
        measures.width = WidthOf(codePoints);
        measures.averageWidth = advance_(codePoints.front());
        ZplPoint const point = transform_ * ZplPoint(static_cast<int>(x), static_cast<int>(y));
        DrawPlacedText(block_.target, block_.processor, block_.font, {text, point, measures, block_.run});
    }

    Block const& block_;
    AdvanceCache& advance_;
    LinearTransform transform_;
};

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

void DrawBlock(Block& block, std::string_view text) {
    AdvanceCache advance(block);
    LinePrinter printer(block, advance);
    Dots surplus = 0;
    // A block without width shows nothing, as hosts expect of one that they left out.
    if (block.width > 0) {
        BlockShape const shape{block.width, block.indent, block.run.spacing, [&](char32_t c) { return advance(c); }};
        Dots index = 0;
        BreakIntoLines(Prepare(block, text), shape, [&](BlockLine const& line) {
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
