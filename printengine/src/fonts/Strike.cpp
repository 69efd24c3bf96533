#include "printengine/src/fonts/Strike.h"

#include <ft2build.h>
#include FT_FREETYPE_H

#include <algorithm>
#include <cstdlib>

namespace PrintEngine::Fonts {

std::unique_ptr<Strike> Strike::Open(FT_LibraryRec_* library, std::filesystem::path const& file) {
    FT_Face face = nullptr;
    if (FT_New_Face(library, file.c_str(), 0, &face) != 0) return nullptr;
    std::unique_ptr<Strike> strike(new Strike(face));
    if (!FT_HAS_FIXED_SIZES(face) || FT_Select_Size(face, 0) != 0) return nullptr;
    if (FT_Select_Charmap(face, FT_ENCODING_UNICODE) != 0) return nullptr;
    return strike;
}

Strike::~Strike() { FT_Done_Face(face_); }

bool Strike::Has(char32_t character) const { return FT_Get_Char_Index(face_, character) != 0; }

bool Strike::Load(char32_t character, GlyphBitmap& bitmap) {
    unsigned const glyph = FT_Get_Char_Index(face_, character);
    if (glyph == 0 || FT_Load_Glyph(face_, glyph, FT_LOAD_RENDER | FT_LOAD_MONOCHROME) != 0) return false;
    FT_GlyphSlot const slot = face_->glyph;
    if (slot->bitmap.pixel_mode != FT_PIXEL_MODE_MONO) return false;
    bitmap = {slot->bitmap_left,
              slot->bitmap_top,
              static_cast<int>(slot->bitmap.width),
              static_cast<int>(slot->bitmap.rows),
              {}};
    bitmap.bytes.assign(bitmap.RowBytes() * static_cast<std::size_t>(bitmap.height), 0);
    auto const used = static_cast<std::size_t>(bitmap.width + 7) / 8;
    for (std::size_t y = 0; y < static_cast<std::size_t>(bitmap.height); ++y) {
        std::uint8_t const* const row = slot->bitmap.buffer + static_cast<std::ptrdiff_t>(y) * slot->bitmap.pitch;
        std::copy_n(row, used, bitmap.bytes.data() + y * bitmap.RowBytes());
    }
    return true;
}

}  // namespace PrintEngine::Fonts
