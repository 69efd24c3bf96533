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

int MeasureWidth(Fonts::Typeface& typeface, std::string_view text, unsigned magnification, int spacing) {
    std::int64_t width = 0;
    std::int64_t count = 0;
    for (; !text.empty(); ++count) width += typeface.Advance(TakeCharacter(text));
    return count == 0 ? 0 : Clamped(width * std::min(magnification, MaxMagnification) + (count - 1) * spacing);
}

TextPainter::TextPainter(Drawing::Raster& raster, Drawing::PixelScale const& scale, Fonts::GlyphCache& glyphs,
                         Drawing::Ink ink)
    : raster_(raster), scale_(scale), glyphs_(glyphs), ink_(ink) {}

void TextPainter::Draw(Fonts::Typeface& typeface, std::string_view text, TextStyle const& style, TextFrame const& frame,
                       std::int64_t u, std::int64_t v) {
    double const pixelsX = style.magnificationX * scale_.Factor();
    double const pixelsY = style.magnificationY * scale_.Factor();
    std::int64_t const lineHeight = std::int64_t{CharacterLineHeight(typeface)} * style.magnificationY;
    int const ascentPixels = scale_.Edge(std::int64_t{typeface.Ascent()} * style.magnificationY);
    Fonts::GlyphCache::Set& glyphs = glyphs_.SetOf(typeface, pixelsX, pixelsY, frame.degrees);
    for (bool isFirst = true; !text.empty(); isFirst = false) {
        char32_t const character = TakeCharacter(text);
        std::int64_t const advance = std::int64_t{typeface.Advance(character)} * style.magnificationX;
        if (style.flow == ScriptTextFlow::Reverse && !isFirst) u -= advance + style.spacing;
        Fonts::TurnedGlyph const& glyph = glyphs.Get(character);
        hasLeftOut_ |= glyph.isTooLarge;
        if (!glyph.upright.IsEmpty()) Place(glyph, frame, u, v, ascentPixels);
        if (style.flow == ScriptTextFlow::Horizontal) u += advance + style.spacing;
        if (style.flow == ScriptTextFlow::Vertical) v += lineHeight + (character == U' ' ? style.spacing : 0);
    }
}

/// Turns dot for dot: the dot (u, v) of the frame is the dot (x - v, y + u) at 90 degrees, and so on, and a dot that is
/// several pixels wide is entered from the side that the turn makes its first.
void TextPainter::Place(Fonts::TurnedGlyph const& glyph, TextFrame const& frame, std::int64_t u, std::int64_t v,
                        int ascentPixels) {
    int const left = glyph.upright.left;
    int const right = left + glyph.upright.width;
    int const top = ascentPixels - glyph.upright.above;
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
