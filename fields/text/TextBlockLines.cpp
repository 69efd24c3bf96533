#include "fields/text/TextBlockLines.h"

#include <algorithm>

#include "fields/placement/RenderPoints.h"
#include "frontend/context/Utf8Text.h"
#include "frontend/context/ZplContextKeys.h"

namespace ZplCore::Sketching {

namespace {

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

LinearTransform TransformOf(Block const& block) {
    return GetFieldLocalToGlobalTransform(block.processor, static_cast<int>(block.width),
                                          static_cast<int>(block.LineRows()), BlockShift(block.Extent()));
}

/// Characters that say which way what stands between them runs (UAX 9), whatever it is.
constexpr char32_t LeftToRightMark = 0x200E;
constexpr char32_t LeftToRightOverride = 0x202D;
constexpr char32_t RightToLeftOverride = 0x202E;
constexpr char32_t EndOfOverride = 0x202C;

/// Words that have been put in order as a text in which they keep it.
std::u32string KeepingOrder(std::u32string_view words) {
    std::u32string text{LeftToRightMark, LeftToRightOverride};
    return (text += words) += EndOfOverride;
}

std::vector<std::u32string> SplitAtBlanks(std::u32string_view text) {
    std::vector<std::u32string> words;
    for (;;) {
        auto const end = text.find(U' ');
        words.emplace_back(text.substr(0, end));
        if (end == text.npos) return words;
        text.remove_prefix(end + 1);
    }
}

}  // namespace

Dots Block::Extent() const { return std::max<Dots>(lineCount - 1, 0) * pitch; }

Dots Block::LineRows() const {
    return processor.at(ZplContextKeys::FieldBaseline) == Baseline::Bottom ? line.ascent : line.height;
}

Dots AdvanceCache::operator()(char32_t character) {
    auto const [entry, isNew] = advances_.try_emplace(character, 0);
    if (isNew) entry->second = Measure(character);
    return entry->second;
}

Dots AdvanceCache::Measure(char32_t character) const {
    auto const& font = block_.font;
    if (font.isBitmap) return Dots{block_.target.GetCharacterWidth(font.drawName, character)} * font.magnificationX;
    auto const text = FromCodePoints({&character, 1});
    return block_.target.MeasureTrueTypeText(font.drawName, text, 0, font.pointSize, font.widthPercent).width;
}

LinePrinter::LinePrinter(Block const& block, AdvanceCache& advance, std::u32string_view text, bool isShaped)
    : block_(block), advance_(advance), text_(text), isShaped_(isShaped), transform_(TransformOf(block)) {}

void LinePrinter::Print(BlockLine const& line, Dots index) {
    bool const isRightToLeft = isShaped_ && RunsRightToLeft(line.paragraph);
    Dots const indent = line.beginsParagraph ? 0 : block_.indent;
    Dots const available = block_.width - indent;
    Dots const y = std::min(index, block_.lineCount - 1) * block_.pitch;
    Words words = isShaped_ ? OrderedWords(line.text, isRightToLeft) : Words();
    std::u32string text = line.text;
    if (!words.empty()) {
        text = words.front();
        for (std::size_t i = 1; i < words.size(); ++i) (text += U' ') += words[i];
        text = KeepingOrder(text);
        for (auto& word : words) word = word.empty() ? word : KeepingOrder(word);
    }
    Dots const width = WidthOf(text);
    bool const isJustified = block_.alignment == Align::Justified;
    // The side that lines begin at is indented.
    Dots x = isRightToLeft ? 0 : indent;
    if (isJustified && !line.endsParagraph && line.text.find(U' ') != std::u32string::npos) {
        PrintJustified(words.empty() ? SplitAtBlanks(text) : words, width, x, y, available);
        return;
    }
    Dots const slack = available - width;
    if (block_.alignment == Align::Right || (isJustified && isRightToLeft)) x += slack;
    if (block_.alignment == Align::Center) x += slack / 2;
    PrintAt(text, x, y);
}

bool LinePrinter::RunsRightToLeft(std::size_t paragraph) {
    if (paragraph != paragraph_) {
        paragraph_ = paragraph;
        auto const text = text_.substr(paragraph);
        isRightToLeft_ = block_.gauge->RunsRightToLeft(text.substr(0, text.find(U'\n')));
    }
    return isRightToLeft_;
}

/// None if the line is read from left to right, or its characters follow each other otherwise.
LinePrinter::Words LinePrinter::OrderedWords(std::u32string_view line, bool isRightToLeft) const {
    if (block_.run.direction != Direction::Horizontal) return {};
    auto const pieces = block_.gauge->FindPieces(line, isRightToLeft);
    if (pieces.empty()) return {};
    Words words(1);
    for (auto const& piece : pieces) {
        auto parts = SplitAtBlanks(line.substr(piece.begin, piece.end - piece.begin));
        if (piece.isRightToLeft) std::reverse(parts.begin(), parts.end());
        for (std::size_t i = 0; i < parts.size(); ++i) {
            if (i != 0) words.emplace_back();
            if (parts[i].empty()) continue;
            if (!piece.isRightToLeft) {
                words.back() += parts[i];
                continue;
            }
            ((words.back() += RightToLeftOverride) += parts[i]) += EndOfOverride;
        }
    }
    return words;
}

Dots LinePrinter::WidthOf(std::u32string_view text) {
    if (isShaped_) {
        auto const& font = block_.font;
        std::string const utf8 = FromCodePoints(text);
        if (font.isBitmap)
            return block_.target.MeasureText(font.drawName, utf8, font.magnificationX, block_.run.spacing, true);
        return block_.target.MeasureTrueTypeText(font.drawName, utf8, 0, font.pointSize, font.widthPercent).width;
    }
    Dots width = text.empty() ? 0 : (static_cast<Dots>(text.size()) - 1) * block_.run.spacing;
    for (char32_t const c : text) width += advance_(c);
    return width;
}

/// Word by word, with what is left of the line spread over the gaps from the left.
void LinePrinter::PrintJustified(Words const& words, Dots width, Dots x, Dots y, Dots available) {
    auto gaps = static_cast<Dots>(words.size()) - 1;
    Dots slack = std::max<Dots>(available - width, 0);
    Dots const blank = advance_(U' ') + 2 * Dots{block_.run.spacing};
    for (std::size_t i = 0; i < words.size(); ++i) {
        auto const& word = words[i];
        PrintAt(word, x, y);
        if (i + 1 == words.size()) return;
        Dots const share = slack / gaps + (slack % gaps != 0 ? 1 : 0);
        x += WidthOf(word) + blank - (word.empty() ? block_.run.spacing : 0) + share;
        slack -= share;
        --gaps;
    }
}

void LinePrinter::PrintAt(std::u32string_view codePoints, Dots x, Dots y) {
    if (codePoints.empty()) return;
    std::string const text = FromCodePoints(codePoints);
    TextMeasures measures = block_.line;
    measures.width = WidthOf(codePoints);
    measures.averageWidth = isShaped_ ? measures.width / static_cast<Dots>(codePoints.size()) : advance_(codePoints[0]);
    ZplPoint const point = transform_ * ZplPoint(static_cast<int>(x), static_cast<int>(y));
    DrawPlacedText(block_.target, block_.processor, block_.font, {text, point, measures, block_.run});
}

}  // namespace ZplCore::Sketching
