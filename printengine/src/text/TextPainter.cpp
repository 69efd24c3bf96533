#include "printengine/src/text/TextPainter.h"

#include <algorithm>
#include <cmath>
#include <limits>

#include "printengine/src/text/Utf8.h"

namespace PrintEngine::Text {

using Scripting::ScriptTextFlow;

namespace {

int Clamped(std::int64_t dots) {
    constexpr std::int64_t Limit = std::numeric_limits<int>::max();
    return static_cast<int>(std::clamp<std::int64_t>(dots, -Limit, Limit));
}

}  // namespace

int CharacterLineHeight(Fonts::Typeface const& typeface) {
    int const ascent = typeface.Ascent();
    return std::max(typeface.Height(), ascent + std::max(1, ascent / 8));
}

int MeasureWidth(Fonts::Typeface& typeface, TextLayout& layout, std::string_view text, unsigned magnification,
                 int spacing) {
    std::int64_t width = 0;
    std::int64_t count = 0;
    if (Scripts::NeedsLayout(text)) {
        TextLine const& line = layout.Of(typeface, text, TextLayout::Order::Visual);
        width = line.advance;
        count = line.clusters;
    } else {
        while (!text.empty()) {
            char32_t const character = TakeCharacter(text);
            width += typeface.Advance(character);
            count += Scripts::IsInvisible(character) ? 0 : 1;
        }
    }
    return count == 0 ? 0 : Clamped(width * std::min(magnification, MaxMagnification) + (count - 1) * spacing);
}

/// What the characters of a text have in common.
struct TextPainter::Setting {
    Fonts::Typeface& typeface;
    TextStyle const& style;
    TextFrame const& frame;
    Fonts::GlyphCache::Set& glyphs;
    double pixelsX;
    double pixelsY;
    std::int64_t lineHeight;
    int ascentPixels;
};

TextPainter::TextPainter(Drawing::Raster& raster, Drawing::PixelScale const& scale, Fonts::GlyphCache& glyphs,
                         TextLayout& layout, Drawing::Ink ink)
    : raster_(raster), scale_(scale), glyphs_(glyphs), layout_(layout), ink_(ink) {}

void TextPainter::Draw(Fonts::Typeface& typeface, std::string_view text, TextStyle const& style, TextFrame const& frame,
                       std::int64_t u, std::int64_t v) {
    double const pixelsX = style.magnificationX * scale_.Factor();
    double const pixelsY = style.magnificationY * scale_.Factor();
    Setting const setting{typeface,
                          style,
                          frame,
                          glyphs_.SetOf(typeface, pixelsX, pixelsY, frame.degrees),
                          pixelsX,
                          pixelsY,
                          std::int64_t{CharacterLineHeight(typeface)} * style.magnificationY,
                          scale_.Edge(std::int64_t{typeface.Ascent()} * style.magnificationY)};
    if (!Scripts::NeedsLayout(text)) {
        DrawCharacters(setting, text, u, v);
    } else if (style.flow == ScriptTextFlow::Horizontal) {
        DrawLine(setting, layout_.Of(typeface, text, TextLayout::Order::Visual), u, v);
    } else {
        DrawClusters(setting, layout_.Of(typeface, text, TextLayout::Order::Logical), u, v);
    }
}

void TextPainter::DrawCharacters(Setting const& setting, std::string_view text, std::int64_t u, std::int64_t v) {
    TextStyle const& style = setting.style;
    for (bool isFirst = true; !text.empty();) {
        char32_t const character = TakeCharacter(text);
        if (Scripts::IsInvisible(character)) continue;
        std::int64_t const advance = std::int64_t{setting.typeface.Advance(character)} * style.magnificationX;
        if (style.flow == ScriptTextFlow::Reverse && !isFirst) u -= advance + style.spacing;
        Fonts::TurnedGlyph const& glyph = setting.glyphs.Get(character);
        hasLeftOut_ |= glyph.isTooLarge;
        if (!glyph.upright.IsEmpty()) Place(setting, glyph, u, v);
        if (style.flow == ScriptTextFlow::Horizontal) u += advance + style.spacing;
        if (style.flow == ScriptTextFlow::Vertical) v += setting.lineHeight + (character == U' ' ? style.spacing : 0);
        isFirst = false;
    }
}

std::int64_t TextPainter::DrawGlyphs(Setting const& setting, std::span<LineGlyph const> glyphs, std::int64_t u,
                                     std::int64_t v) {
    std::int64_t const start = u;
    for (LineGlyph const& each : glyphs) {
        Fonts::TurnedGlyph const& glyph = setting.glyphs.Get(each.picture);
        hasLeftOut_ |= glyph.isTooLarge;
        if (!glyph.upright.IsEmpty()) {
            Place(setting, glyph, u, v, static_cast<int>(std::lround(each.x * setting.pixelsX)),
                  static_cast<int>(std::lround(each.y * setting.pixelsY)));
        }
        u += std::int64_t{each.advance} * setting.style.magnificationX;
    }
    return u - start;
}

void TextPainter::DrawLine(Setting const& setting, TextLine const& line, std::int64_t u, std::int64_t v) {
    for (std::size_t i = 0; i < line.glyphs.size(); ++i) {
        if (i != 0 && BeginsCluster(line.glyphs, i)) u += setting.style.spacing;
        u += DrawGlyphs(setting, {&line.glyphs[i], 1}, u, v);
    }
}

void TextPainter::DrawClusters(Setting const& setting, TextLine const& line, std::int64_t u, std::int64_t v) {
    std::vector<std::span<LineGlyph const>> clusters;
    for (std::size_t i = 0, end = 0; i < line.glyphs.size(); i = end) {
        for (end = i + 1; end < line.glyphs.size() && !BeginsCluster(line.glyphs, end);) ++end;
        clusters.emplace_back(&line.glyphs[i], end - i);
    }
    std::stable_sort(clusters.begin(), clusters.end(),
                     [](auto const& a, auto const& b) { return a.front().character < b.front().character; });
    TextStyle const& style = setting.style;
    for (bool isFirst = true; auto const& cluster : clusters) {
        if (style.flow == ScriptTextFlow::Reverse && !isFirst) {
            u -= style.spacing;
            for (LineGlyph const& glyph : cluster) u -= std::int64_t{glyph.advance} * style.magnificationX;
        }
        DrawGlyphs(setting, cluster, u, v);
        bool const isBlank = cluster.front().picture == U' ';
        if (style.flow == ScriptTextFlow::Vertical) v += setting.lineHeight + (isBlank ? style.spacing : 0);
        isFirst = false;
    }
}

/// Turns dot for dot: the dot (u, v) of the frame is the dot (x - v, y + u) at 90 degrees, and so on, and a dot that is
/// several pixels wide is entered from the side that the turn makes its first.
void TextPainter::Place(Setting const& setting, Fonts::TurnedGlyph const& glyph, std::int64_t u, std::int64_t v,
                        int toRight, int up) {
    TextFrame const& frame = setting.frame;
    int const left = glyph.upright.left + toRight;
    int const right = left + glyph.upright.width;
    int const top = setting.ascentPixels - glyph.upright.above - up;
    int const bottom = top + glyph.upright.height;
    auto const put = [&](int x, int y) {
        Drawing::BitRows const picture = glyph.picture.Rows();
        if (counted_) counted_->Add({x, y, x + picture.width, y + picture.height});
        raster_.Blit(picture, x, y, 0, ink_);
    };
    switch (frame.degrees) {
        case 90: return put(scale_.Edge(frame.x - v + 1) - bottom, scale_.Edge(frame.y + u) + left);
        case 180: return put(scale_.Edge(frame.x - u + 1) - right, scale_.Edge(frame.y - v + 1) - bottom);
        case 270: return put(scale_.Edge(frame.x + v) + top, scale_.Edge(frame.y - u + 1) - right);
        default: return put(scale_.Edge(frame.x + u) + left, scale_.Edge(frame.y + v) + top);
    }
}

}  // namespace PrintEngine::Text
