#pragma once

#include <array>
#include <functional>
#include <unordered_map>

#include "printengine/src/fonts/FaceChain.h"
#include "printengine/src/fonts/Typeface.h"

namespace PrintEngine::Fonts {

/// What an outline font is scaled to, in dots.
struct OutlineSize {
    double emWidth = 0;
    /// Height of an em of fonts whose capitals are to be scaled by the em; 0 if capitals are to be `ascent` dots tall.
    double emHeight = 0;
    int ascent = 0;
    int descent = 0;
};

/// An outline font at a size. Each font that stands in for missing characters is scaled by the same rule.
class OutlineTypeface : public Typeface {
public:
    /// `expectedWidth` gives advances in dots, or 0 for characters that are to have their own; it may be empty.
    OutlineTypeface(FaceChain& faces, OutlineSize const& size, std::function<unsigned(char32_t)> expectedWidth = {});

    int Ascent() const override { return size_.ascent; }
    int Descent() const override { return size_.descent; }
    int Advance(char32_t character) override;
    FaceChain& Faces() override { return faces_; }
    EmDots EmOf(Face const& face) const override { return {size_.emWidth, EmHeight(&face)}; }
    bool HasItself(char32_t character) override;
    bool StandsOnDots() const override { return false; }
    bool Draw(char32_t picture, double pixelsX, double pixelsY, GlyphBitmap& bitmap) override;

private:
    double EmHeight(Face const* face) const;
    int MeasureAdvance(char32_t character);
    bool DrawGlyph(char32_t picture, double pixelsX, double pixelsY, GlyphBitmap& bitmap);
    GlyphBitmap MissingBox(double pixelsX, double pixelsY) const;

    FaceChain& faces_;
    OutlineSize size_;
    std::function<unsigned(char32_t)> expectedWidth_;
    static constexpr int Unknown = -1;
    std::array<int, 128> asciiAdvances_;  ///< the most wanted ones
    std::unordered_map<char32_t, int> advances_;
};

}  // namespace PrintEngine::Fonts
