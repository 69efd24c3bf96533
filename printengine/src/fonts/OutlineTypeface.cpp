#include "printengine/src/fonts/OutlineTypeface.h"

#include <algorithm>
#include <cmath>

#include "printengine/src/fonts/EmSize.h"
#include "printengine/src/fonts/PixelFit.h"
#include "printengine/src/raster/Raster.h"

namespace PrintEngine::Fonts {

namespace {

constexpr std::size_t MaxRememberedAdvances = 16384;

// Shape of the box that stands for a character no font has, in parts of an em's width.
constexpr double BoxAdvance = 0.6;
constexpr double BoxWidth = 0.5;

}  // namespace

int GlyphAdvance(double partOfEm, EmDots const& em) {
    if (partOfEm <= 0) return 0;
    return std::max(1, AdvanceInDots(partOfEm, em.width));
}

double StretchOf(double partOfEm, EmDots const& em) {
    double const dots = partOfEm * em.width;
    return dots > 0 ? GlyphAdvance(partOfEm, em) / dots : 1;
}

OutlineTypeface::OutlineTypeface(FaceChain& faces, OutlineSize const& size,
                                 std::function<unsigned(char32_t)> expectedWidth)
    : faces_(faces), size_(size), expectedWidth_(std::move(expectedWidth)) {
    asciiAdvances_.fill(Unknown);
}

double OutlineTypeface::EmHeight(Face const* face) const {
    return size_.emHeight > 0 ? size_.emHeight : size_.ascent / face->CapitalHeight();
}

int OutlineTypeface::Advance(char32_t character) {
    if (IsControl(character)) return 0;
    if (character < asciiAdvances_.size()) {
        int& advance = asciiAdvances_[character];
        return advance == Unknown ? advance = MeasureAdvance(character) : advance;
    }
    if (auto const known = advances_.find(character); known != advances_.end()) return known->second;
    if (advances_.size() >= MaxRememberedAdvances) advances_.clear();
    return advances_[character] = MeasureAdvance(character);
}

int OutlineTypeface::MeasureAdvance(char32_t character) {
    // A width of 0 says that the tables do not know the character; drawn on top of its neighbour it would be lost.
    unsigned const expected = expectedWidth_ ? expectedWidth_(character) : 0;
    if (expected != 0) return static_cast<int>(std::min(expected, 1u << 20));
    auto const [face, glyph] = faces_.Find(character);
    return AdvanceInDots(face ? face->Advance(glyph) : BoxAdvance, size_.emWidth);
}

bool OutlineTypeface::HasItself(char32_t character) {
    Face* const primary = faces_.Primary();
    return primary && primary->GlyphIndex(character) != 0;
}

bool OutlineTypeface::DrawGlyph(char32_t picture, double pixelsX, double pixelsY, GlyphBitmap& bitmap) {
    Face& face = faces_.FaceOf(picture);
    unsigned const glyph = Picture::GlyphOf(picture);
    EmDots const em = EmOf(face);
    double const partOfEm = face.Advance(glyph);
    if (!Picture::IsFitted(picture))
        return face.Render(glyph, em.width * pixelsX * StretchOf(partOfEm, em), em.height * pixelsY, bitmap);
    double const pixels = std::floor(GlyphAdvance(partOfEm, em) * pixelsX);
    auto const fit = [pixels](FT_Outline_& outline, double ownAdvance) {
        FitToPixels(outline, U'\0', static_cast<int>(std::min(pixels, 1e6)), ownAdvance);
    };
    return face.Render(glyph, em.width * pixelsX, em.height * pixelsY, bitmap, fit);
}

bool OutlineTypeface::Draw(char32_t character, double pixelsX, double pixelsY, GlyphBitmap& bitmap) {
    if (Picture::IsGlyph(character)) return DrawGlyph(character, pixelsX, pixelsY, bitmap);
    if (IsControl(character)) return true;
    auto const [face, glyph] = faces_.Find(character);
    if (!face) {
        bitmap = MissingBox(pixelsX, pixelsY);
        return true;
    }
    // Pens are rounded to pixels, so that some advances are a pixel wider than this.
    int const advance = static_cast<int>(std::min(std::floor(Advance(character) * pixelsX), 1e6));
    auto const fit = [=](FT_Outline_& outline, double ownAdvance) {
        FitToPixels(outline, character, advance, ownAdvance);
    };
    return face->Render(glyph, size_.emWidth * pixelsX, EmHeight(face) * pixelsY, bitmap, fit);
}

GlyphBitmap OutlineTypeface::MissingBox(double pixelsX, double pixelsY) const {
    GlyphBitmap bitmap;
    double const em = std::min(size_.emWidth * pixelsX, 16384.0);
    bitmap.left = static_cast<int>(em * (BoxAdvance - BoxWidth) / 2);
    bitmap.width = static_cast<int>(std::clamp(em * BoxWidth, 1.0, 8192.0));
    bitmap.height = bitmap.above = static_cast<int>(std::clamp(size_.ascent * pixelsY, 1.0, 8192.0));
    bitmap.bytes.assign(bitmap.RowBytes() * static_cast<std::size_t>(bitmap.height), 0);
    int const line = std::max(1, bitmap.height / 12);
    for (int y = 0; y < bitmap.height; ++y) {
        bool const isEdge = y < line || y >= bitmap.height - line;
        std::uint8_t* const row = bitmap.bytes.data() + bitmap.RowBytes() * static_cast<std::size_t>(y);
        for (int x = 0; x < bitmap.width; ++x) {
            if (isEdge || x < line || x >= bitmap.width - line)
                row[x / 8] |= static_cast<std::uint8_t>(0x80 >> (x % 8));
        }
    }
    return bitmap;
}

}  // namespace PrintEngine::Fonts
