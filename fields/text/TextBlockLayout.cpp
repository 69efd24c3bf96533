#include "fields/text/TextBlockLayout.h"

#include <algorithm>

namespace ZplCore::Sketching {

namespace {

/// Part of the text that makes a line, and where the next one starts.
struct LineRange {
    std::size_t begin = 0;
    std::size_t end = 0;
    std::size_t next = 0;
    bool hyphen = false;
    bool endsParagraph = false;
};

/// Finds the end of the line that starts at `begin`.
LineRange FindLine(std::u32string_view text, std::size_t begin, std::int64_t available, BlockShape const& shape) {
    LineRange best;  // the last place where the line could end so far
    std::int64_t width = 0;
    bool isFirst = true;
    for (std::size_t i = begin; i < text.size(); ++i) {
        char32_t const c = text[i];
        if (c == U'\n') return {begin, i, i + 1, false, true};
        std::int64_t const advance = shape.advances.empty() ? shape.advance(c) : shape.advances[i];
        // What sits on the character before it takes no room of its own, and none between.
        std::int64_t const gap = isFirst || (advance == 0 && !shape.advances.empty()) ? 0 : shape.spacing;
        if (!isFirst && !shape.breaks.empty() && shape.breaks[i]) best = {begin, i, i, false, false};
        if (c == SoftHyphen) {
            if (width + gap + shape.advance(U'-') <= available) best = {begin, i, i + 1, true, false};
            continue;
        }
        if (c == U' ') {
            best = {begin, i, i + 1, false, false};
        } else if (width + gap + advance > available) {
            if (best.next != 0) return best;
            // No place to end a line: the word is cut, and a character wider than the block stands alone.
            std::size_t const end = isFirst ? i + 1 : i;
            return {begin, end, end, false, end == text.size()};
        }
        width += gap + advance;
        isFirst = false;
    }
    return {begin, text.size(), text.size(), false, true};
}

BlockLine MakeLine(std::u32string_view text, LineRange const& range) {
    BlockLine line;
    line.endsParagraph = range.endsParagraph;
    std::copy_if(text.begin() + static_cast<std::ptrdiff_t>(range.begin),
                 text.begin() + static_cast<std::ptrdiff_t>(range.end), std::back_inserter(line.text),
                 [](char32_t c) { return c != SoftHyphen; });
    while (!line.text.empty() && line.text.back() == U' ') line.text.pop_back();
    if (range.hyphen) line.text += U'-';
    return line;
}

}  // namespace

void BreakIntoLines(std::u32string_view text, BlockShape const& shape,
                    std::function<bool(BlockLine const&)> const& emit) {
    bool beginsParagraph = true;
    std::size_t paragraph = 0;
    for (std::size_t i = 0; i < text.size();) {
        while (i < text.size() && text[i] == U' ') ++i;
        if (i == text.size()) return;
        auto const range = FindLine(text, i, shape.width - (beginsParagraph ? 0 : shape.indent), shape);
        BlockLine line = MakeLine(text, range);
        line.beginsParagraph = beginsParagraph;
        line.paragraph = paragraph;
        if (!emit(line)) return;
        i = range.next;
        beginsParagraph = line.endsParagraph;
        if (beginsParagraph) paragraph = i;
    }
}

}  // namespace ZplCore::Sketching
