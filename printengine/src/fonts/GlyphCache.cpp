#include "printengine/src/fonts/GlyphCache.h"

#include <algorithm>
#include <cmath>
#include <cstring>

#include "printengine/src/raster/InkOf.h"

namespace PrintEngine::Fonts {

namespace {

/// The pixels that were drawn in a raster of the size of `bitmap`.
void TakePixels(Drawing::Raster const& raster, GlyphBitmap& bitmap) {
    bitmap.bytes.resize(bitmap.RowBytes() * static_cast<std::size_t>(bitmap.height));
    for (int y = 0; y < bitmap.height; ++y) {
        std::uint8_t* target = bitmap.bytes.data() + bitmap.RowBytes() * static_cast<std::size_t>(y);
        for (Drawing::Word const word : raster.Row(y)) {
            Drawing::Word const packed = Drawing::BigEndian(word);
            std::memcpy(target, &packed, sizeof packed);
            target += sizeof packed;
        }
    }
}

/// A picture turned clockwise.
GlyphBitmap Turned(GlyphBitmap const& upright, int degrees) {
    bool const isUpended = degrees == 90 || degrees == 270;
    GlyphBitmap turned;
    turned.width = isUpended ? upright.height : upright.width;
    turned.height = isUpended ? upright.width : upright.height;
    Drawing::Raster raster;
    raster.Reset(turned.width, turned.height);
    raster.Blit(upright.Rows(), 0, 0, degrees, Drawing::Ink::Black);
    TakePixels(raster, turned);
    return turned;
}

/// Leaves out the white edges of a glyph, which the cells of bitmap fonts have.
void Trim(GlyphBitmap& glyph) {
    auto const ink = Drawing::InkOf(glyph.Rows());
    if (ink == Scripting::PixelBox{0, 0, glyph.width, glyph.height}) return;
    GlyphBitmap trimmed;
    trimmed.left = glyph.left + ink.left;
    trimmed.above = glyph.above - ink.top;
    trimmed.width = ink.Width();
    trimmed.height = ink.Height();
    Drawing::Raster raster;
    raster.Reset(trimmed.width, trimmed.height);
    raster.Blit(glyph.Rows(), -ink.left, -ink.top, 0, Drawing::Ink::Black);
    TakePixels(raster, trimmed);
    glyph = std::move(trimmed);
}

std::int32_t In64ths(double pixels) { return static_cast<std::int32_t>(std::lround(std::min(pixels, 1e7) * 64)); }

}  // namespace

std::size_t GlyphCache::Hash::operator()(Key const& key) const {
    std::uint64_t hash = key.typeface;
    for (auto const part : {key.width, key.height, key.degrees}) {
        hash = (hash ^ static_cast<std::uint64_t>(part)) * 0x9E3779B97F4A7C15;
        hash ^= hash >> 29;
    }
    return hash;
}

GlyphCache::Set& GlyphCache::SetOf(Typeface& typeface, double pixelsX, double pixelsY, int degrees) {
    Key const key{typeface.Id(), In64ths(pixelsX), In64ths(pixelsY), degrees};
    if (auto const known = sets_.find(key); known != sets_.end()) return *known->second;
    Reserve(SetBytes, nullptr);
    return *(sets_[key] = std::make_unique<Set>(typeface, pixelsX, pixelsY, degrees, *this));
}

TurnedGlyph const& GlyphCache::Set::Draw(char32_t character) {
    TurnedGlyph glyph;
    glyph.isTooLarge = !typeface_->Draw(character, pixelsX_, pixelsY_, glyph.upright);
    if (glyph.isTooLarge) glyph.upright = {};
    if (!glyph.upright.IsEmpty()) Trim(glyph.upright);
    if (!glyph.upright.IsEmpty() && degrees_ != 0) glyph.picture = Turned(glyph.upright, degrees_);
    if (degrees_ == 0) glyph.picture = glyph.upright;
    glyph.upright.bytes = {};
    cache_.Reserve(glyph.picture.bytes.size() + GlyphBytes, this);
    TurnedGlyph const& kept = glyphs_[character] = std::move(glyph);
    if (character < ascii_.size()) ascii_[character] = &kept;
    return kept;
}

void GlyphCache::Set::Clear() {
    ascii_.fill(nullptr);
    glyphs_.clear();
}

void GlyphCache::Reserve(std::size_t bytes, Set* inUse) {
    if (bytes_ + bytes > MaxBytes) {
        std::erase_if(sets_, [&](auto const& entry) { return entry.second.get() != inUse; });
        if (inUse) inUse->Clear();
        bytes_ = inUse ? SetBytes : 0;
    }
    bytes_ += bytes;
}

}  // namespace PrintEngine::Fonts
