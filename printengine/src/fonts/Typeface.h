#pragma once

#include "printengine/src/fonts/Face.h"
#include "printengine/src/fonts/GlyphCache.h"

namespace PrintEngine::Fonts {

/// A font at one size. Metrics are dots at magnification 1. A character's cell begins with row 0, on which unaccented
/// capitals have their top; their bottom row is Ascent() - 1.
class Typeface {
public:
    virtual ~Typeface() = default;

    virtual int Ascent() const = 0;
    virtual int Descent() const = 0;
    int Height() const { return Ascent() + Descent(); }
    /// How far a character moves the pen.
    virtual int Advance(char32_t character) = 0;
    /// The picture of a character at these many pixels a dot; null if it would be larger than a page can be. Valid
    /// until the cache is asked again.
    virtual GlyphBitmap const* Glyph(char32_t character, double pixelsX, double pixelsY, GlyphCache& cache) = 0;
};

/// Characters that move no pen and leave no ink.
constexpr bool IsControl(char32_t character) { return character < 0x20 || (character >= 0x7F && character < 0xA0); }

}  // namespace PrintEngine::Fonts
