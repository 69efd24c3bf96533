#include <algorithm>

#include "printengine/src/ScriptGraphicContextState.h"
#include "printengine/src/fonts/EmSize.h"
#include "printengine/src/scripts/Modules.h"
#include "printengine/src/text/TextRuns.h"

namespace Scripting {

namespace {

using PrintEngine::Text::ParagraphDirection;
using PrintEngine::Text::TextLayout;

bool NeedsLayout(std::u32string_view text) {
    return std::any_of(text.begin(), text.end(), PrintEngine::Scripts::IsSetWithOthers);
}

}  // namespace

bool ScriptGraphicContext::HasFontFile(std::string_view name) const {
    return !state_->fonts.Files().Find(name).empty();
}

std::vector<int> ScriptGraphicContext::FindAdvances(SizedFont const& font, std::u32string_view text) const {
    if (!NeedsLayout(text)) return {};
    double const em = PrintEngine::Fonts::BoundedTrueTypeEm(font.pointSize);
    auto& typeface = font.pointSize > 0 ? state_->fonts.TrueType(font.name, em * font.widthPercent / 100, em)
                                        : state_->fonts.Find(font.name);
    std::vector<int> advances(text.size());
    auto const line = TextLayout::Set(typeface, std::u32string(text), TextLayout::Order::Visual);
    for (auto const& glyph : line.glyphs) advances[glyph.character] += glyph.advance;
    return advances;
}

std::vector<bool> ScriptGraphicContext::FindBreaks(std::u32string_view text) const {
    using PrintEngine::Scripts::IsWrittenWithoutBlanks;
    if (std::none_of(text.begin(), text.end(), IsWrittenWithoutBlanks)) return {};
    auto const* const module = PrintEngine::Scripts::BreaksModule();
    std::vector<std::uint8_t> mayEnd(text.size());
    if (!module || !module->findBreaks(text.data(), static_cast<std::uint32_t>(text.size()), mayEnd.data())) return {};
    std::vector<bool> breaks(text.size());
    for (std::size_t i = 1; i < text.size(); ++i)
        breaks[i] = mayEnd[i] != 0 && (IsWrittenWithoutBlanks(text[i - 1]) || IsWrittenWithoutBlanks(text[i]));
    return breaks;
}

bool ScriptGraphicContext::RunsRightToLeft(std::u32string_view paragraph) const {
    std::u32string text(paragraph);
    return PrintEngine::Text::FindLevels(text, ParagraphDirection::ByFirstLetter).isRightToLeft;
}

std::vector<TextPiece> ScriptGraphicContext::FindPieces(std::u32string_view line, bool isRightToLeft) const {
    std::u32string text(line);
    auto const levels = PrintEngine::Text::FindLevels(
                            text, isRightToLeft ? ParagraphDirection::RightToLeft : ParagraphDirection::LeftToRight)
                            .levels;
    std::vector<PrintEngine::Text::TextRun> runs;
    for (std::uint32_t i = 0; i < levels.size(); ++i) {
        if (runs.empty() || runs.back().level != levels[i]) runs.push_back({i, i, {}, {}, levels[i]});
        runs.back().end = i + 1;
    }
    PrintEngine::Text::OrderRuns(runs);
    std::vector<TextPiece> pieces;
    for (auto const& run : runs) pieces.push_back({run.begin, run.end, run.level % 2 != 0});
    return pieces;
}

}  // namespace Scripting
