#include "printengine/src/fonts/CellTypeface.h"

#include <ft2build.h>
#include FT_OUTLINE_H

#include <algorithm>
#include <array>
#include <cmath>
#include <cwctype>

namespace PrintEngine::Fonts {

namespace {

constexpr std::array<CellFont, 7> CellFonts{{
    // letter, width, height, ascent, gap, capitals only, hinted, em width, em height, file, strike
    {'A', 5, 9, 7, 1, false, true, 10, 10, "DejaVuSansMono.ttf", "6x12.pcf.gz"},
    {'B', 7, 11, 11, 2, true, true, 15, 15, "DejaVuSansMono-Bold.ttf"},
    {'D', 10, 18, 14, 2, false, true, 20, 19, "DejaVuSansMono.ttf"},
    {'E', 20, 41, 34, 0, false, false, 0, 0, "OCRB.otf"},
    {'F', 13, 26, 21, 3, false, true, 26, 29, "DejaVuSansMono.ttf"},
    {'G', 40, 60, 48, 8, false, true, 80, 66, "DejaVuSansMono.ttf"},
    {'H', 19, 30, 30, 0, false, false, 0, 0, "OCRA.ttf"},
}};

constexpr std::size_t MaxRememberedCells = 4096;

/// Accented capitals stand out above the cell; whatever is lower than this many ascents is fitted into it.
constexpr double HighestFitted = 1.15;

/// Changes the heights of an outline's points, in 1/64 dot above the baseline.
template <typename Change>
void ChangeHeights(FT_Outline& outline, Change change) {
    for (short i = 0; i < outline.n_points; ++i)
        outline.points[i].y = std::lround(change(static_cast<double>(outline.points[i].y)));
}

/// Fits an outline into the rows above and below the baseline, so that lines of cells do not touch. What reaches too
/// high is squeezed above `knee` (dots), what reaches too low below the baseline. In a cell without rows below the
/// baseline a character stands on it as a whole.
void FitRows(FT_Outline& outline, int ascent, int descent, double knee) {
    FT_BBox box;
    FT_Outline_Get_CBox(&outline, &box);
    double const top = ascent * 64.0;
    double const bottom = descent * 64.0;
    double const above = static_cast<double>(box.yMax);
    double const below = static_cast<double>(-box.yMin);
    if (bottom == 0 && below > 32) {
        double const raise = std::ceil(below / 64) * 64;
        double const shrink = std::min(1.0, top / (above + raise));
        ChangeHeights(outline, [&](double y) { return (y + raise) * shrink; });
        return;
    }
    if (bottom > 0 && below > bottom) ChangeHeights(outline, [&](double y) { return y < 0 ? y * bottom / below : y; });
    if (above <= top || above >= top * HighestFitted) return;
    double const fixed = std::min(knee * 64, top);
    ChangeHeights(outline,
                  [&](double y) { return y > fixed ? fixed + (y - fixed) * (top - fixed) / (above - fixed) : y; });
}

char32_t Capital(char32_t character) {
    if (character < 0x80) return character >= U'a' && character <= U'z' ? character - U'a' + U'A' : character;
    // Latin-1, whose small letters follow the capitals at a distance of 32.
    bool const isSmall = character >= 0xE0 && character <= 0xFE && character != 0xF7;
    return isSmall ? character - 0x20 : character;
}

/// Takes the empty rows off the top of a picture.
void TrimTop(GlyphBitmap& bitmap) {
    auto const ink =
        std::find_if(bitmap.bytes.begin(), bitmap.bytes.end(), [](std::uint8_t byte) { return byte != 0; });
    auto const rows = static_cast<int>((ink - bitmap.bytes.begin()) / static_cast<std::ptrdiff_t>(bitmap.RowBytes()));
    bitmap.bytes.erase(bitmap.bytes.begin(),
                       bitmap.bytes.begin() + rows * static_cast<std::ptrdiff_t>(bitmap.RowBytes()));
    bitmap.above -= rows;
    bitmap.height -= rows;
}

/// Makes each pixel a block, whose edges are rounded from the same place for every glyph, the pen and the baseline.
GlyphBitmap Magnify(GlyphBitmap const& cell, double pixelsX, double pixelsY) {
    auto const edgeX = [&](int x) { return static_cast<int>(std::lround(x * pixelsX)); };
    auto const edgeY = [&](int y) { return static_cast<int>(std::lround(y * pixelsY)); };
    GlyphBitmap result;
    if (cell.IsEmpty()) return result;
    result.left = edgeX(cell.left);
    result.above = edgeY(cell.above);
    result.width = edgeX(cell.left + cell.width) - result.left;
    result.height = result.above - edgeY(cell.above - cell.height);
    if (result.IsEmpty()) return {};
    result.bytes.assign(result.RowBytes() * static_cast<std::size_t>(result.height), 0);
    for (int y = 0; y < cell.height; ++y) {
        int const top = result.above - edgeY(cell.above - y);
        int const bottom = result.above - edgeY(cell.above - y - 1);
        if (top >= bottom) continue;
        std::uint8_t const* const source = cell.bytes.data() + cell.RowBytes() * static_cast<std::size_t>(y);
        std::uint8_t* const row = result.bytes.data() + result.RowBytes() * static_cast<std::size_t>(top);
        for (int x = 0; x < cell.width; ++x) {
            if (!(source[x / 8] & (0x80 >> (x % 8)))) continue;
            int const right = edgeX(cell.left + x + 1) - result.left;
            for (int i = edgeX(cell.left + x) - result.left; i < right; ++i)
                row[i / 8] |= static_cast<std::uint8_t>(0x80 >> (i % 8));
        }
        for (int copy = top + 1; copy < bottom; ++copy)
            std::copy_n(row, result.RowBytes(), row + result.RowBytes() * static_cast<std::size_t>(copy - top));
    }
    return result;
}

}  // namespace

CellFont const* FindCellFont(std::string_view font) {
    if (font.size() != 1) return nullptr;
    auto const found =
        std::find_if(CellFonts.begin(), CellFonts.end(), [&](auto& cell) { return cell.letter == font[0]; });
    return found == CellFonts.end() ? nullptr : &*found;
}

CellTypeface::CellTypeface(CellFont const& cell, FaceChain& faces, Strike* strike)
    : cell_(cell), faces_(faces), strike_(strike) {}

int CellTypeface::Advance(char32_t character) { return IsControl(character) ? 0 : cell_.width + cell_.gap; }

EmDots CellTypeface::EmOf(Face const& face) const {
    // What is shaped does not keep to cells, but to the ratio of width to height that they have.
    double const height = cell_.ascent / face.CapitalHeight();
    return {cell_.emHeight > 0 ? height * cell_.emWidth / cell_.emHeight : height, height};
}

bool CellTypeface::HasItself(char32_t character) {
    if (strike_ && strike_->Has(character)) return true;
    Face* const primary = faces_.Primary();
    return primary && primary->GlyphIndex(character) != 0;
}

GlyphBitmap CellTypeface::DrawGlyph(char32_t picture) {
    Face& face = faces_.FaceOf(picture);
    unsigned const glyph = Picture::GlyphOf(picture);
    EmDots const em = EmOf(face);
    GlyphBitmap bitmap;
    face.Render(glyph, em.width * StretchOf(face.Advance(glyph), em), em.height, bitmap);
    return bitmap;
}

GlyphBitmap const& CellTypeface::Cell(char32_t character) {
    if (cell_.capitalsOnly && !Picture::IsGlyph(character)) character = Capital(character);
    if (auto const known = cells_.find(character); known != cells_.end()) return known->second;
    if (cells_.size() >= MaxRememberedCells) cells_.clear();
    return cells_[character] = Picture::IsGlyph(character) ? DrawGlyph(character) : DrawCell(character);
}

GlyphBitmap CellTypeface::DrawCell(char32_t character) {
    if (GlyphBitmap bitmap; strike_ && strike_->Load(character, bitmap)) {
        TrimTop(bitmap);
        // Only the accents of capitals stand out above the cell.
        if (character < 0xC0) bitmap.above = std::min(bitmap.above, cell_.ascent);
        return bitmap;
    }
    auto const [face, glyph] = faces_.Find(character);
    if (!face) {
        // An empty cell's outline, as wide as the letters.
        GlyphBitmap box{0, cell_.ascent, cell_.width, cell_.ascent, {}};
        box.bytes.assign(box.RowBytes() * static_cast<std::size_t>(box.height), 0);
        for (int y = 0; y < box.height; ++y) {
            for (int x = 0; x < box.width; ++x) {
                if (y % (box.height - 1) != 0 && x % (box.width - 1) != 0) continue;
                box.bytes[box.RowBytes() * static_cast<std::size_t>(y) + static_cast<std::size_t>(x) / 8] |=
                    static_cast<std::uint8_t>(0x80 >> (x % 8));
            }
        }
        return box;
    }
    int const advance = cell_.width + cell_.gap;
    double const exact = cell_.ascent / face->CapitalHeight();
    double const emHeight = cell_.hinted && std::abs(cell_.emHeight - exact) < 1 ? cell_.emHeight : exact;
    double emWidth = cell_.emWidth;
    // A font that stands in may be wider; every character has to keep to its cell.
    double const natural = face->Advance(glyph);
    if (natural > 0 && (emWidth == 0 || natural * emWidth > advance + 0.5)) emWidth = advance / natural;

    GlyphBitmap bitmap = DrawInCell(*face, glyph, emWidth, emHeight);
    if (bitmap.width > advance) bitmap = DrawInCell(*face, glyph, emWidth * (advance - 1) / bitmap.width, emHeight);
    bitmap.left = std::clamp(bitmap.left, 0, std::max(0, advance - bitmap.width));
    return bitmap;
}

GlyphBitmap CellTypeface::DrawInCell(Face& face, unsigned glyph, double emWidth, double emHeight) {
    GlyphBitmap bitmap;
    // Instructions for few pixels help only at the size that the cell was laid out for.
    bool const isHinted = cell_.hinted && emHeight == cell_.emHeight;
    FT_Outline_* const outline =
        isHinted ? face.LoadHintedOutline(glyph, emWidth, emHeight) : face.LoadOutline(glyph, emWidth, emHeight);
    if (!outline) return bitmap;
    // Hinted strokes at the height of small letters lie on whole rows, and stay there.
    FitRows(*outline, cell_.ascent, cell_.height - cell_.ascent, isHinted ? face.LowerCaseHeight() * emHeight : 0);
    face.Paint(*outline, bitmap);
    return bitmap;
}

bool CellTypeface::Draw(char32_t character, double pixelsX, double pixelsY, GlyphBitmap& bitmap) {
    if (!Picture::IsGlyph(character) && IsControl(character)) return true;
    // Beyond this no page shows a whole glyph.
    if (pixelsX > 512 || pixelsY > 512) return false;
    bitmap = Magnify(Cell(character), pixelsX, pixelsY);
    return true;
}

}  // namespace PrintEngine::Fonts
