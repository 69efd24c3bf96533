#pragma once

#include <atomic>
#include <cstdint>

#include "printengine/src/fonts/Face.h"

namespace PrintEngine::Fonts {

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
    /// Makes the picture of a character at these many pixels a dot; false if it would be larger than a page can be. The
    /// bitmap, which comes empty, stays empty if there is no ink.
    virtual bool Draw(char32_t character, double pixelsX, double pixelsY, GlyphBitmap& bitmap) = 0;

private:
    static inline std::atomic<std::uint64_t> lastId_ = 0;

    std::uint64_t const id_ = ++lastId_;
};

/// Characters that move no pen and leave no ink.
constexpr bool IsControl(char32_t character) { return character < 0x20 || (character >= 0x7F && character < 0xA0); }

}  // namespace PrintEngine::Fonts
