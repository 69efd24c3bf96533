#pragma once

#include <cstdint>
#include <string>
#include <string_view>
#include <unordered_map>
#include <vector>

#include "Scripting/GraphicContext.h"
#include "Scripting/TextGauge.h"
#include "fields/text/TextBlockLayout.h"
#include "fields/text/TextFont.h"
#include "frontend/context/ContextProcessor.h"

namespace ZplCore::Sketching {

using Dots = std::int64_t;
using Align = Scripting::ScriptTextJustification;

/// A block on its way to the page.
struct Block {
    Scripting::GraphicContext& target;
    Scripting::TextGauge const* gauge = nullptr;  ///< of the target; null if it has none
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

    Dots Extent() const;
    /// Rows of a line that count for its place: down to the baseline if that stands on the origin.
    Dots LineRows() const;
    Scripting::SizedFont SizedFont() const { return {font.drawName, font.pointSize, font.widthPercent}; }
};

/// Advances of characters, each asked for once.
class AdvanceCache {
public:
    explicit AdvanceCache(Block const& block) : block_(block) {}

    Dots operator()(char32_t character);

private:
    Dots Measure(char32_t character) const;

    Block const& block_;
    std::unordered_map<char32_t, Dots> advances_;
};

/// Draws the lines of a block, each at its place on the page.
class LinePrinter {
public:
    /// `text` is that of the whole block; `isShaped` says that its characters change with their neighbours.
    LinePrinter(Block const& block, AdvanceCache& advance, std::u32string_view text, bool isShaped);

    LinearTransform const& Transform() const { return transform_; }

    void Print(BlockLine const& line, Dots index);

private:
    /// Words as they stand from left to right, with a blank between each two.
    using Words = std::vector<std::u32string>;

    bool RunsRightToLeft(std::size_t paragraph);
    Words OrderedWords(std::u32string_view line, bool isRightToLeft) const;
    Dots WidthOf(std::u32string_view text);
    void PrintJustified(Words const& words, Dots width, Dots x, Dots y, Dots available);
    void PrintAt(std::u32string_view codePoints, Dots x, Dots y);

    Block const& block_;
    AdvanceCache& advance_;
    std::u32string_view text_;
    bool isShaped_;
    std::size_t paragraph_ = std::u32string_view::npos;  ///< whose direction is known
    bool isRightToLeft_ = false;                         ///< that paragraph
    LinearTransform transform_;
};

}  // namespace ZplCore::Sketching
