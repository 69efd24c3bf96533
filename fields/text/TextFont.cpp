#include "fields/text/TextFont.h"

#include <algorithm>
#include <cmath>

#include "Scripting/TextGauge.h"
#include "fields/text/Fonts.h"
#include "fields/text/TrueTypeUtils.h"
#include "frontend/context/Utf8Text.h"
#include "frontend/context/ZplContextKeys.h"

namespace ZplCore::Sketching {

namespace {

constexpr double TrueTypeDescentOfHeight = 0.37;

/// The advances of a text by its clusters, in dots at magnification 1; empty if each character is one.
std::vector<int> ClusterAdvances(Scripting::GraphicContext const& target, TextFont const& font,
                                 std::u32string_view text) {
    auto const* const gauge = Scripting::TextGauge::Of(&target);
    return gauge ? gauge->FindAdvances({font.drawName, font.pointSize, font.widthPercent}, text) : std::vector<int>();
}

/// Leaves out what sits on the character before it.
std::u32string WithoutMarks(std::u32string text, std::vector<int> const& advances) {
    std::size_t kept = 0;
    for (std::size_t i = 0; i < advances.size(); ++i) {
        if (advances[i] != 0) text[kept++] = text[i];
    }
    if (!advances.empty()) text.resize(kept);
    return text;
}

std::int64_t WidestCharacter(Scripting::GraphicContext const& target, TextFont const& font, std::u32string_view text,
                             std::vector<int> const& advances) {
    int widest = 0;
    for (int const advance : advances) widest = std::max(widest, advance);
    for (char32_t const c : advances.empty() ? text : std::u32string_view())
        widest = std::max(widest, target.GetCharacterWidth(font.drawName, c));
    return std::int64_t{widest} * font.magnificationX;
}

std::int64_t StackedHeight(Scripting::GraphicContext const& target, TextFont const& font, std::u32string_view text,
                           int spacing) {
    auto const metrics = target.GetSpaceMetrics(font.drawName);
    std::int64_t const space = std::int64_t{metrics.spaceHeight} * font.magnificationY + spacing;
    std::int64_t const character = std::int64_t{metrics.characterHeight} * font.magnificationY;
    auto const spaces = std::count(text.begin(), text.end(), U' ');
    return spaces * space + (static_cast<std::int64_t>(text.size()) - spaces) * character;
}

TextMeasures MeasureBitmapLine(Scripting::GraphicContext const& target, TextFont const& font) {
    auto const magnified = [&font](int dots) { return std::int64_t{dots} * font.magnificationY; };
    TextMeasures m;
    m.height = magnified(target.GetFontHeight(font.drawName));
    m.ascent = magnified(target.GetFontAscent(font.drawName));
    m.descent = magnified(target.GetFontDescent(font.drawName));
    m.leading = magnified(target.GetFontLeading(font.drawName));
    return m;
}

TextMeasures MeasureBitmapText(Scripting::GraphicContext const& target, TextFont const& font, std::string_view text,
                               TextRun const& run) {
    TextMeasures m = MeasureBitmapLine(target, font);
    if (run.direction == Direction::Vertical) {
        auto const codePoints = ToCodePoints(text);
        auto const advances = ClusterAdvances(target, font, codePoints);
        m.averageWidth = WidestCharacter(target, font, codePoints, advances);
        m.width = m.averageWidth;
        m.height = StackedHeight(target, font, WithoutMarks(codePoints, advances), run.spacing);
        return m;
    }
    int const unspaced = target.MeasureText(font.drawName, text, font.magnificationX, 0, true);
    auto const count = std::max<std::size_t>(CountCodePoints(text), 1);
    m.averageWidth = std::lround(static_cast<double>(unspaced) / static_cast<double>(count));
    m.width = run.spacing == 0
                  ? unspaced
                  : std::int64_t{target.MeasureText(font.drawName, text, font.magnificationX, run.spacing, true)} +
                        run.HorizontalSpacing();
    return m;
}

TextMeasures MeasureTrueTypeText(Scripting::GraphicContext const& target, TextFont const& font, std::string_view text,
                                 TextRun const& run) {
    auto const measure = [&](std::string_view part) {
        return target.MeasureTrueTypeText(font.drawName, part, 0, font.pointSize, font.widthPercent);
    };
    auto const firstEnd = std::find_if(text.begin() + 1, text.end(), [](char c) { return (c & 0xC0) != 0x80; });
    auto const first = measure(text.substr(0, static_cast<std::size_t>(firstEnd - text.begin())));
    // Characters that stand above each other are measured as they are drawn, line by line.
    bool const stacked = run.direction == Direction::Vertical;
    auto const whole = stacked ? measure(ModifyTrueTypeText(target, font, text, run.direction)) : measure(text);
    TextMeasures m;
    m.averageWidth = first.width;
    m.descent = std::lround(TrueTypeDescentOfHeight * first.height);
    m.ascent = first.height - m.descent;
    m.width = whole.width;
    m.height = whole.height;
    return m;
}

/// A tail is a sixth of the average character, but a third for the magnified font B.
std::int64_t Tail(TextFont const& font, std::int64_t averageWidth) {
    bool const isMagnifiedB = font.magnificationX > 1 && font.zplName == "B";
    return std::lround(static_cast<double>(averageWidth) / (isMagnifiedB ? 3.0 : 6.0));
}

struct TrueTypeOffset {
    std::int64_t x;
    std::int64_t y;
};

/// How far a TrueType text is drawn left of and above its corner. `adjust` raises it to where a bitmap text stands,
/// and `half` undoes the turn of the box about its centre.
TrueTypeOffset OffsetOf(TextMeasures const& m, TextRun const& run, ZplOrientation orientation,
                        Justification justification, std::int64_t adjust) {
    std::int64_t const half = (m.width - m.height) / 2;
    std::int64_t const beforeLast = m.width - m.averageWidth;
    bool const isVertical = run.direction == Direction::Vertical;
    bool const isReverse = run.direction == Direction::Reverse;
    switch (orientation) {
        case ZplOrientation::Rotated:
            if (isReverse) return {half, beforeLast - run.HorizontalSpacing() - half};
            if (isVertical && justification == Justification::Right) return {half - m.ascent, -half};
            return {half, -half};
        case ZplOrientation::Inverted: return {isReverse ? -beforeLast : 0, 0};
        case ZplOrientation::BottomUp: return {adjust + half, isReverse ? -half - beforeLast : -half};
        case ZplOrientation::Normal: break;
    }
    return {isReverse ? beforeLast : 0, adjust};
}

void DrawTrueType(Scripting::GraphicContext& target, ContextProcessor const& processor, TextFont const& font,
                  PlacedText const& placed) {
    auto const& m = placed.measures;
    auto const orientation = processor.at(ZplContextKeys::FieldOrientation);
    auto const height = TrueTypeUtils::ConvertPointSizeToHeightInDots(font.pointSize);
    auto const offset = OffsetOf(m, placed.run, orientation, processor.at(ZplContextKeys::FieldJustification),
                                 TrueTypeUtils::AdjustYPos(static_cast<unsigned>(height)));
    ZplPoint const origin = GetGraphicContextOrigin(placed.point, orientation, static_cast<unsigned long>(m.width),
                                                    static_cast<unsigned long>(m.height)) -
                            ZplPoint(static_cast<int>(offset.x), static_cast<int>(offset.y));
    target.SetRotation(static_cast<int>(orientation));
    target.DrawTrueTypeText(font.drawName, origin.x, origin.y, static_cast<int>(m.width), static_cast<int>(m.height),
                            ModifyTrueTypeText(target, font, placed.text, placed.run.direction),
                            placed.run.direction == Direction::Vertical, font.pointSize, font.widthPercent, 0,
                            processor.at(ZplContextKeys::TextBlockJustification), placed.run.HorizontalSpacing());
}

}  // namespace

TextFont TextFont::Of(ContextProcessor const& processor, Scripting::GraphicContext& target) {
    TextFont font;
    font.zplName = GetZplFont(processor);
    font.isCached = IsCachedFont(font.zplName);
    auto const scale = GetFontScaleInfo(font.zplName, processor);
    if (auto const* bitmap = std::get_if<BitmapFontInfo>(&scale)) {
        font.drawName = bitmap->name;
        font.magnificationX = bitmap->magnificationX;
        font.magnificationY = bitmap->magnificationY;
    } else {
        auto const& trueType = std::get<TrueTypeFontInfo>(scale);
        font.drawName = trueType.name;
        font.pointSize = trueType.pointSize;
        font.widthPercent = trueType.widthPercent;
    }
    font.isBitmap = target.IsBitmapTypeface(font.drawName);
    return font;
}

TextMeasures MeasureTextField(Scripting::GraphicContext const& target, TextFont const& font, std::string_view text,
                              TextRun const& run) {
    TextMeasures m =
        font.isBitmap ? MeasureBitmapText(target, font, text, run) : MeasureTrueTypeText(target, font, text, run);
    m.tail = Tail(font, m.averageWidth);
    return m;
}

TextMeasures MeasureLine(Scripting::GraphicContext const& target, TextFont const& font) {
    return font.isBitmap ? MeasureBitmapLine(target, font) : MeasureTrueTypeText(target, font, "X", {});
}

std::string ModifyTrueTypeText(Scripting::GraphicContext const& target, TextFont const& font, std::string_view text,
                               Direction direction) {
    if (direction == Direction::Horizontal) return std::string(text);
    auto const codePoints = ToCodePoints(text);
    auto const advances = ClusterAdvances(target, font, codePoints);
    bool const isReverse = direction == Direction::Reverse;
    // What is written from right to left runs so by itself.
    if (isReverse && !advances.empty() && Scripting::TextGauge::Of(&target)->RunsRightToLeft(codePoints))
        return std::string(text);
    std::u32string modified;
    for (std::size_t begin = 0, end = 0; begin < codePoints.size(); begin = end) {
        for (end = begin + 1; end < advances.size() && advances[end] == 0;) ++end;
        std::u32string cluster = codePoints.substr(begin, end - begin);
        // Turned twice, it keeps its own order.
        if (isReverse) std::reverse(cluster.begin(), cluster.end());
        modified += cluster;
        if (!isReverse) modified += U'\n';
    }
    if (isReverse) std::reverse(modified.begin(), modified.end());
    return FromCodePoints(modified);
}

void DrawPlacedText(Scripting::GraphicContext& target, ContextProcessor const& processor, TextFont const& font,
                    PlacedText const& placed) {
    if (!font.isBitmap) {
        DrawTrueType(target, processor, font, placed);
        return;
    }
    DrawText(target, placed.text, placed.point,
             {.font = font.drawName,
              .magnificationX = font.magnificationX,
              .magnificationY = font.magnificationY,
              .spacing = placed.run.spacing,
              .orientation = processor.at(ZplContextKeys::FieldOrientation),
              .direction = placed.run.direction,
              .justification = processor.at(ZplContextKeys::FieldJustification),
              .baseline = processor.at(ZplContextKeys::FieldBaseline),
              .cached = font.isCached});
}

}  // namespace ZplCore::Sketching
