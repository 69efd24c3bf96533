#pragma once

#include <atomic>
#include <cstdint>

#include "printengine/src/fonts/Face.h"
#include "printengine/src/scripts/CharacterKinds.h"

namespace PrintEngine::Fonts {

class FaceChain;

/// What is drawn in the place of a character: the character itself, or a glyph of a face that was chosen for it.
namespace Picture {
inline constexpr char32_t GlyphBit = 0x80000000;
inline constexpr char32_t FittedBit = 0x40000000;
inline constexpr unsigned MostFaces = 1 << 14;

/// `isFitted` says that it is set on whole dots as a character is, and joins no neighbour.
constexpr char32_t OfGlyph(unsigned face, unsigned glyph, bool isFitted) {
    return GlyphBit | (isFitted ? FittedBit : 0) | static_cast<char32_t>(face) << 16 | (glyph & 0xFFFF);
}
constexpr bool IsGlyph(char32_t picture) { return (picture & GlyphBit) != 0; }
constexpr bool IsFitted(char32_t picture) { return (picture & FittedBit) != 0; }
constexpr unsigned FaceOf(char32_t picture) { return picture >> 16 & (MostFaces - 1); }
constexpr unsigned GlyphOf(char32_t picture) { return picture & 0xFFFF; }
}  // namespace Picture

/// An em of a face, in dots.
struct EmDots {
    double width = 0;
    double height = 0;
};

/// A font at one size. Metrics are dots at magnification 1. A character's cell begins with row 0, on which unaccented
/// capitals have their top; their bottom row is Ascent() - 1.
class Typeface {
public:
    virtual ~Typeface() = default;

    /// Never the same for two typefaces of the process, also not for one made where another has gone.
    std::uint64_t Id() const { return id_; }

    virtual int Ascent() const = 0;
    virtual int Descent() const = 0;
    int Height() const { return Ascent() + Descent(); }
    /// How far a character moves the pen.
    virtual int Advance(char32_t character) = 0;
    /// The faces that it is drawn by.
    virtual FaceChain& Faces() = 0;
    /// What the em of one of them measures where whole words are set in it.
    virtual EmDots EmOf(Face const& face) const = 0;
    /// Whether it has a character by itself, without another font that stands in.
    virtual bool HasItself(char32_t character) = 0;
    /// Whether all that it draws stands on whole dots.
    virtual bool StandsOnDots() const = 0;
    /// Makes a picture at these many pixels a dot; false if it would be larger than a page can be. The bitmap, which
    /// comes empty, stays empty if there is no ink.
    virtual bool Draw(char32_t picture, double pixelsX, double pixelsY, GlyphBitmap& bitmap) = 0;

private:
    static inline std::atomic<std::uint64_t> lastId_ = 0;

    std::uint64_t const id_ = ++lastId_;
};

/// Characters that move no pen and leave no ink.
inline bool IsControl(char32_t character) {
    if (character < 0x7F) return character < 0x20;
    return character < 0xA0 || Scripts::IsInvisible(character);
}

/// The advance of a glyph in dots: whole ones, and at least one where it has any.
int GlyphAdvance(double partOfEm, EmDots const& em);
/// How much wider a glyph is drawn than its outline is, so that its ink ends where the next one's begins.
double StretchOf(double partOfEm, EmDots const& em);

}  // namespace PrintEngine::Fonts
