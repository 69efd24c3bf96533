#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <memory>
#include <unordered_map>
#include <utility>

#include "printengine/src/fonts/Typeface.h"

namespace PrintEngine::Fonts {

/// A glyph ready to be drawn.
struct TurnedGlyph {
    GlyphBitmap upright;  ///< its place and size before it is turned, without pixels
    GlyphBitmap picture;  ///< the turned picture, without a place
    bool isTooLarge = false;
};

/// Glyphs that were drawn before, by font, size and turn; at most MaxBytes of them. All but those of the font in use
/// are dropped when that is reached, and then those too.
class GlyphCache {
public:
    static constexpr std::size_t MaxBytes = std::size_t{16} << 20;

    /// The glyphs of one font at these many pixels a dot, turned clockwise by 0, 90, 180 or 270 degrees.
    class Set {
    public:
        Set(Typeface& typeface, double pixelsX, double pixelsY, int degrees, GlyphCache& cache)
            : typeface_(&typeface), pixelsX_(pixelsX), pixelsY_(pixelsY), degrees_(degrees), cache_(cache) {}

        /// Valid until another glyph is asked for.
        TurnedGlyph const& Get(char32_t character) {
            if (character < ascii_.size() && ascii_[character]) return *ascii_[character];
            if (auto const known = glyphs_.find(character); known != glyphs_.end()) return known->second;
            return Draw(character);
        }

    private:
        friend class GlyphCache;

        TurnedGlyph const& Draw(char32_t character);
        void Clear();

        Typeface* typeface_;
        double pixelsX_;
        double pixelsY_;
        int degrees_;
        GlyphCache& cache_;
        std::array<TurnedGlyph const*, 128> ascii_{};  ///< the most wanted ones
        std::unordered_map<char32_t, TurnedGlyph> glyphs_;
    };

    /// Valid as long as the typeface is, and until a set is asked for again.
    Set& SetOf(Typeface& typeface, double pixelsX, double pixelsY, int degrees);

    void Clear() {
        sets_.clear();
        bytes_ = 0;
    }
    std::size_t Bytes() const { return bytes_; }

private:
    /// About what an entry takes besides its pixels.
    static constexpr std::size_t GlyphBytes = 160;
    static constexpr std::size_t SetBytes = 1280;

    struct Key {
        std::uint64_t typeface = 0;
        std::int32_t width = 0;   ///< 1/64 pixel a dot
        std::int32_t height = 0;  ///< 1/64 pixel a dot
        int degrees = 0;
        friend bool operator==(Key const&, Key const&) = default;
    };
    struct Hash {
        std::size_t operator()(Key const& key) const;
    };

    /// Makes room for so many bytes of a new entry of `inUse`, or of a new set if that is null.
    void Reserve(std::size_t bytes, Set* inUse);

    std::unordered_map<Key, std::unique_ptr<Set>, Hash> sets_;
    std::size_t bytes_ = 0;
};

}  // namespace PrintEngine::Fonts
