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
    // letter, width, height, ascent, gap, capitals only, hinted, em width, em height, file
    {'A', 5, 9, 7, 1, false, true, 10, 10, "DejaVuSansMono.ttf"},
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

/// Squeezes what lies outside of the rows [-descent, ascent) into them; strokes between the baseline and the height of
/// lower case stay where they are. Units of the outline are 1/64 dot.
void FitRows(FT_Outline& outline, int ascent, int descent, double lowerCaseHeight) {
    FT_BBox box;
    FT_Outline_Get_CBox(&outline, &box);
    double const top = ascent * 64.0;
    double const bottom = descent * 64.0;
    double const knee = std::min(lowerCaseHeight * 64, top);
    double const above = static_cast<double>(box.yMax);
    double const below = static_cast<double>(-box.yMin);
    bool const squeezesTop = above > top && above < top * HighestFitted;
    bool const squeezesBottom = bottom > 0 && below > bottom;
    for (short i = 0; i < outline.n_points; ++i) {
        FT_Pos& y = outline.points[i].y;
        if (squeezesTop && y > knee) y = std::lround(knee + (y - knee) * (top - knee) / (above - knee));
        if (squeezesBottom && y < 0) y = std::lround(y * bottom / below);
    }
}

char32_t Capital(char32_t character) {
    if (character < 0x80) return character >= U'a' && character <= U'z' ? character - U'a' + U'A' : character;
    // Latin-1, whose small letters follow the capitals at a distance of 32.
    bool const isSmall = character >= 0xE0 && character <= 0xFE && character != 0xF7;
    return isSmall ? character - 0x20 : character;
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

CellTypeface::CellTypeface(CellFont const& cell, FaceChain& faces) : cell_(cell), faces_(faces) {}

int CellTypeface::Advance(char32_t character) { return IsControl(character) ? 0 : cell_.width + cell_.gap; }

GlyphBitmap const& CellTypeface::Cell(char32_t character) {
    if (cell_.capitalsOnly) character = Capital(character);
    if (auto const known = cells_.find(character); known != cells_.end()) return known->second;
    if (cells_.size() >= MaxRememberedCells) cells_.clear();
    return cells_[character] = Draw(character);
}

GlyphBitmap CellTypeface::Draw(char32_t character) {
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
    if (!cell_.hinted || emHeight != cell_.emHeight) {
        face.Render(glyph, emWidth, emHeight, bitmap);
        return bitmap;
    }
    face.RenderHinted(
        glyph, emWidth, emHeight,
        [&](FT_Outline& outline) {
            FitRows(outline, cell_.ascent, cell_.height - cell_.ascent, face.LowerCaseHeight() * emHeight);
        },
        bitmap);
    return bitmap;
}

GlyphBitmap const* CellTypeface::Glyph(char32_t character, double pixelsX, double pixelsY, GlyphCache& cache) {
    static GlyphBitmap const nothing;
    if (IsControl(character)) return &nothing;
    // Beyond this no page shows a whole glyph.
    if (pixelsX > 512 || pixelsY > 512) return nullptr;
    GlyphKey const key{this, character, static_cast<int>(std::lround(pixelsX * 64)),
                       static_cast<int>(std::lround(pixelsY * 64))};
    return &cache.Get(key, [&] { return Magnify(Cell(character), pixelsX, pixelsY); });
}

}  // namespace PrintEngine::Fonts
