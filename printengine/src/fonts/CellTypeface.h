#pragma once

#include <unordered_map>

#include "printengine/src/fonts/FaceChain.h"
#include "printengine/src/fonts/Typeface.h"

namespace PrintEngine::Fonts {

/// A bitmap font letter: its cell in dots, and the outline that fills it.
struct CellFont {
    char letter;
    int width;
    int height;
    int ascent;
    int gap;  ///< dots between cells; 0 where the cell holds its gap
    bool capitalsOnly;
    bool hinted;                   ///< small cells follow the outline font's instructions for few pixels
    double emWidth;                ///< dots; chosen so that the outline's own advance is the cell's
    double emHeight;               ///< dots; chosen so that capitals are `ascent` rows tall; 0 computes it
    char const* file;              ///< name of the outline's file
    char const* strike = nullptr;  ///< name of a file with bitmaps of just this cell, which come before the outline
};

/// The bitmap font of a letter; null if the letter is none.
CellFont const* FindCellFont(std::string_view font);

/// A font of fixed cells. Every character is drawn once at one pixel a dot, and magnified as blocks of its dots.
class CellTypeface : public Typeface {
public:
    /// `strike` may be null.
    CellTypeface(CellFont const& cell, FaceChain& faces, Strike* strike);

    int Ascent() const override { return cell_.ascent; }
    int Descent() const override { return cell_.height - cell_.ascent; }
    int Advance(char32_t character) override;
    FaceChain& Faces() override { return faces_; }
    EmDots EmOf(Face const& face) const override;
    bool HasItself(char32_t character) override;
    bool StandsOnDots() const override { return true; }
    bool Draw(char32_t picture, double pixelsX, double pixelsY, GlyphBitmap& bitmap) override;

private:
    GlyphBitmap const& Cell(char32_t picture);
    GlyphBitmap DrawGlyph(char32_t picture);
    GlyphBitmap DrawCell(char32_t character);
    GlyphBitmap DrawInCell(Face& face, unsigned glyph, double emWidth, double emHeight);

    CellFont const& cell_;
    FaceChain& faces_;
    Strike* strike_;
    std::unordered_map<char32_t, GlyphBitmap> cells_;
};

}  // namespace PrintEngine::Fonts
