#pragma once

#include <filesystem>
#include <memory>

#include "printengine/src/fonts/Face.h"

namespace PrintEngine::Fonts {

/// A font file that holds ready-made bitmaps of one size.
class Strike {
public:
    /// Null if the file holds none.
    static std::unique_ptr<Strike> Open(FT_LibraryRec_* library, std::filesystem::path const& file);
    ~Strike();
    Strike(Strike const&) = delete;
    Strike& operator=(Strike const&) = delete;

    bool Has(char32_t character) const;
    /// The picture of a character, one pixel a dot; false if the font lacks it.
    bool Load(char32_t character, GlyphBitmap& bitmap);

private:
    explicit Strike(FT_FaceRec_* face) : face_(face) {}

    FT_FaceRec_* face_;
};

}  // namespace PrintEngine::Fonts
