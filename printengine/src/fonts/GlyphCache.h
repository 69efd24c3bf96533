#pragma once

#include <cstdint>
#include <unordered_map>

#include "printengine/src/fonts/Face.h"

namespace PrintEngine::Fonts {

/// What a glyph's picture depends on. Sizes are 1/64 pixel.
struct GlyphKey {
    void const* font = nullptr;
    char32_t character = 0;
    std::int32_t width = 0;
    std::int32_t height = 0;
    friend bool operator==(GlyphKey const&, GlyphKey const&) = default;
};

/// Glyphs that were drawn before, at most MaxBytes of them; all are dropped when that is reached.
class GlyphCache {
public:
    static constexpr std::size_t MaxBytes = std::size_t{16} << 20;

    /// The glyph of a key; `draw` makes it if it is not there. Valid until the next call.
    template <typename Draw>
    GlyphBitmap const& Get(GlyphKey const& key, Draw draw) {
        auto const found = glyphs_.find(key);
        if (found != glyphs_.end()) return found->second;
        GlyphBitmap bitmap = draw();
        std::size_t const bytes = bitmap.bytes.size() + EntryBytes;
        if (bytes_ + bytes > MaxBytes) Clear();
        bytes_ += bytes;
        return glyphs_.insert_or_assign(key, std::move(bitmap)).first->second;
    }

    void Clear() {
        glyphs_.clear();
        bytes_ = 0;
    }
    std::size_t Bytes() const { return bytes_; }

private:
    /// About what an entry takes besides its pixels.
    static constexpr std::size_t EntryBytes = 128;

    struct Hash {
        std::size_t operator()(GlyphKey const& key) const {
            std::uint64_t hash = reinterpret_cast<std::uintptr_t>(key.font);
            for (std::uint64_t const part : {std::uint64_t{key.character}, static_cast<std::uint64_t>(key.width),
                                             static_cast<std::uint64_t>(key.height)}) {
                hash = (hash ^ part) * 0x9E3779B97F4A7C15;
                hash ^= hash >> 29;
            }
            return hash;
        }
    };

    std::unordered_map<GlyphKey, GlyphBitmap, Hash> glyphs_;
    std::size_t bytes_ = 0;
};

}  // namespace PrintEngine::Fonts
