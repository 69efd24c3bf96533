#pragma once

#include <cstdint>
#include <filesystem>
#include <functional>
#include <memory>
#include <unordered_map>
#include <vector>

#include "printengine/src/raster/Raster.h"

struct FT_FaceRec_;
struct FT_LibraryRec_;
struct FT_Outline_;

namespace PrintEngine::Fonts {

/// A 1-bit picture of a character and where it stands.
struct GlyphBitmap {
    int left = 0;   ///< pixels from the pen to the first column
    int above = 0;  ///< pixels from the first row down to the baseline; negative if all of it lies below
    int width = 0;
    int height = 0;
    std::vector<std::uint8_t> bytes;  ///< rows of RowBytes(), packed most significant bit first

    /// Whole words, which are the quickest to draw.
    std::size_t RowBytes() const { return static_cast<std::size_t>(width + 63) / 64 * 8; }
    Drawing::BitRows Rows() const { return {bytes.data(), RowBytes(), width, height}; }
    bool IsEmpty() const { return width <= 0 || height <= 0; }
};

/// An opened font file. All measures are parts of an em.
class Face {
public:
    /// Null if the file is no font that can be read.
    static std::unique_ptr<Face> Open(FT_LibraryRec_* library, std::filesystem::path const& file);
    ~Face();
    Face(Face const&) = delete;
    Face& operator=(Face const&) = delete;

    /// Where it stands among the faces of its store.
    unsigned Number() const { return number_; }
    void SetNumber(unsigned number) { number_ = number; }

    /// 0 if the font lacks the character.
    unsigned GlyphIndex(char32_t character) const;
    /// The same file for the module of scripts, opened when it is first asked for; null if it cannot be.
    void* ForShaping();
    /// Height of an unaccented capital.
    double CapitalHeight() const { return capitalHeight_; }
    double LowerCaseHeight() const { return lowerCaseHeight_; }
    /// From the highest to the lowest reach of the font, as the file states them.
    double LineHeight() const { return lineHeight_; }
    double Advance(unsigned glyph) const;

    /// Draws a glyph at an em of these many pixels. Unhinted: the picture is as exact as its advance, at any ratio of
    /// width to height. False if it would be larger than a page can be; the bitmap stays empty if there is no ink.
    /// `change` may move the points of the outline before it is painted; it is told the advance in pixels.
    using Change = std::function<void(FT_Outline_& outline, double advance)>;
    bool Render(unsigned glyph, double emWidth, double emHeight, GlyphBitmap& bitmap, Change const& change = {});

    /// The outline of a glyph at an em of these many pixels, in 1/64 pixel with y upwards; null if it has none. Hinted
    /// it follows the font's own instructions for few pixels. It may be changed before it is painted, and is valid
    /// until the next call.
    FT_Outline_* LoadOutline(unsigned glyph, double emWidth, double emHeight);
    FT_Outline_* LoadHintedOutline(unsigned glyph, double emWidth, double emHeight);
    bool Paint(FT_Outline_& outline, GlyphBitmap& bitmap);

private:
    Face(FT_LibraryRec_* library, FT_FaceRec_* face, std::filesystem::path file);

    struct Design;

    double HeightOf(char32_t character, double otherwise);
    Design const& DesignOf(unsigned glyph);

    FT_LibraryRec_* library_;
    FT_FaceRec_* face_;
    std::filesystem::path file_;
    unsigned number_ = 0;
    void* shaping_ = nullptr;
    bool isShapingTried_ = false;
    /// Glyphs as the file holds them: a label shows the same letters in many sizes, and reading one from its file takes
    /// longer than painting it.
    std::unordered_map<unsigned, std::unique_ptr<Design const>> designs_;
    std::unique_ptr<Design> scaled_;  ///< that of the last LoadOutline
    double capitalHeight_ = 0;
    double lowerCaseHeight_ = 0;
    double lineHeight_ = 0;
};

}  // namespace PrintEngine::Fonts
