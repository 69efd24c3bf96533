#include "printengine/src/fonts/Face.h"

#include <ft2build.h>
#include FT_ADVANCES_H
#include FT_FREETYPE_H
#include FT_OUTLINE_H

#include <cmath>

#include "printengine/src/scripts/Modules.h"

namespace PrintEngine::Fonts {

namespace {

/// The rasteriser counts in 16 bits.
constexpr int MaxGlyphSide = 32000;

/// Outlines are kept well inside the rasteriser's numbers.
constexpr double MaxEm = 1 << 17;

/// Of Latin text all letters; of any other as many as a page shows, about 1 kB each.
constexpr std::size_t MostDesigns = 512;

}  // namespace

/// A glyph in units of its design, or scaled to a size.
struct Face::Design {
    explicit Design(FT_GlyphSlotRec_ const& glyph)
        : points(glyph.outline.points, glyph.outline.points + glyph.outline.n_points),
          tags(glyph.outline.tags, glyph.outline.tags + glyph.outline.n_points),
          contours(glyph.outline.contours, glyph.outline.contours + glyph.outline.n_contours),
          flags(glyph.outline.flags),
          advance(static_cast<double>(glyph.advance.x)),
          isOutline(true) {}
    Design() = default;

    std::vector<FT_Vector> points;
    std::vector<char> tags;
    std::vector<short> contours;
    int flags = 0;
    double advance = 0;
    bool isOutline = false;
    FT_Outline outline{};  ///< of the points, of a scaled one
};

std::unique_ptr<Face> Face::Open(FT_LibraryRec_* library, std::filesystem::path const& file) {
    FT_Face face = nullptr;
    if (FT_New_Face(library, file.c_str(), 0, &face) != 0) return nullptr;
    std::unique_ptr<Face> result(new Face(library, face, file));
    if (!FT_IS_SCALABLE(face) || face->units_per_EM == 0) return nullptr;
    FT_Select_Charmap(face, FT_ENCODING_UNICODE);
    result->lineHeight_ = static_cast<double>(face->ascender - face->descender) / face->units_per_EM;
    result->capitalHeight_ = result->HeightOf(U'H', 0.7);
    result->lowerCaseHeight_ = result->HeightOf(U'x', 0.5);
    return result;
}

Face::Face(FT_LibraryRec_* library, FT_FaceRec_* face, std::filesystem::path file)
    : library_(library), face_(face), file_(std::move(file)) {}

Face::~Face() {
    if (shaping_) Scripts::ScriptsModule()->closeFace(shaping_);
    FT_Done_Face(face_);
}

void* Face::ForShaping() {
    if (!isShapingTried_) {
        isShapingTried_ = true;
        if (auto const* const module = Scripts::ScriptsModule()) shaping_ = module->openFace(file_.c_str());
    }
    return shaping_;
}

unsigned Face::GlyphIndex(char32_t character) const { return FT_Get_Char_Index(face_, character); }

double Face::HeightOf(char32_t character, double otherwise) {
    unsigned const glyph = GlyphIndex(character);
    if (glyph == 0 || FT_Load_Glyph(face_, glyph, FT_LOAD_NO_SCALE) != 0) return otherwise;
    FT_BBox box;
    FT_Outline_Get_CBox(&face_->glyph->outline, &box);
    return box.yMax > 0 ? static_cast<double>(box.yMax) / face_->units_per_EM : otherwise;
}

double Face::Advance(unsigned glyph) const {
    // Its outline is not read for that.
    FT_Fixed units = 0;
    if (FT_Get_Advance(face_, glyph, FT_LOAD_NO_SCALE, &units) != 0) return 0;
    return static_cast<double>(units) / face_->units_per_EM;
}

bool Face::Render(unsigned glyph, double emWidth, double emHeight, GlyphBitmap& bitmap, Change const& change) {
    if (emWidth > MaxEm || emHeight > MaxEm) return false;
    FT_Outline_* const outline = LoadOutline(glyph, emWidth, emHeight);
    if (!outline) return true;
    if (change) change(*outline, scaled_->advance / face_->units_per_EM * emWidth);
    return Paint(*outline, bitmap);
}

FT_Outline_* Face::LoadOutline(unsigned glyph, double emWidth, double emHeight) {
    bool const isSize = emWidth > 0 && emHeight > 0 && emWidth <= MaxEm && emHeight <= MaxEm;
    if (!isSize) return nullptr;
    Design const& design = DesignOf(glyph);
    if (!design.isOutline) return nullptr;
    if (!scaled_) scaled_ = std::make_unique<Design>();
    *scaled_ = design;
    double const scaleX = emWidth * 64 / face_->units_per_EM;
    double const scaleY = emHeight * 64 / face_->units_per_EM;
    for (auto& [x, y] : scaled_->points) {
        x = std::lround(static_cast<double>(x) * scaleX);
        y = std::lround(static_cast<double>(y) * scaleY);
    }
    scaled_->outline = {static_cast<short>(scaled_->contours.size()),
                        static_cast<short>(scaled_->points.size()),
                        scaled_->points.data(),
                        scaled_->tags.data(),
                        scaled_->contours.data(),
                        scaled_->flags};
    return &scaled_->outline;
}

Face::Design const& Face::DesignOf(unsigned glyph) {
    if (auto const known = designs_.find(glyph); known != designs_.end()) return *known->second;
    if (designs_.size() >= MostDesigns) designs_.clear();
    auto& design = designs_[glyph];
    bool const isLoaded = FT_Load_Glyph(face_, glyph, FT_LOAD_NO_SCALE) == 0;
    bool const isOutline = isLoaded && face_->glyph->format == FT_GLYPH_FORMAT_OUTLINE;
    design = isOutline ? std::make_unique<Design const>(*face_->glyph) : std::make_unique<Design const>();
    return *design;
}

FT_Outline_* Face::LoadHintedOutline(unsigned glyph, double emWidth, double emHeight) {
    if (FT_Set_Char_Size(face_, std::lround(emWidth * 64), std::lround(emHeight * 64), 0, 0) != 0) return nullptr;
    if (FT_Load_Glyph(face_, glyph, FT_LOAD_TARGET_MONO | FT_LOAD_NO_BITMAP) != 0) return nullptr;
    return face_->glyph->format == FT_GLYPH_FORMAT_OUTLINE ? &face_->glyph->outline : nullptr;
}

bool Face::Paint(FT_Outline_& outline, GlyphBitmap& bitmap) {
    if (outline.n_points == 0) return true;
    FT_BBox box;
    FT_Outline_Get_CBox(&outline, &box);
    // Whole pixels around the outline; an outline thinner than a pixel still gets one by drop-out control.
    FT_Pos const left = box.xMin >> 6;
    FT_Pos const bottom = box.yMin >> 6;
    FT_Pos const width = ((box.xMax + 63) >> 6) - left;
    FT_Pos const height = ((box.yMax + 63) >> 6) - bottom;
    if (width <= 0 || height <= 0) return true;
    if (width > MaxGlyphSide || height > MaxGlyphSide || width * height > Drawing::Raster::MaxDots) return false;

    bitmap.left = static_cast<int>(left);
    bitmap.above = static_cast<int>(bottom + height);
    bitmap.width = static_cast<int>(width);
    bitmap.height = static_cast<int>(height);
    bitmap.bytes.assign(bitmap.RowBytes() * static_cast<std::size_t>(height), 0);
    FT_Outline_Translate(&outline, -left * 64, -bottom * 64);
    FT_Bitmap target{};
    target.rows = static_cast<unsigned>(height);
    target.width = static_cast<unsigned>(width);
    target.pitch = static_cast<int>(bitmap.RowBytes());
    target.buffer = bitmap.bytes.data();
    target.pixel_mode = FT_PIXEL_MODE_MONO;
    target.num_grays = 2;
    if (FT_Outline_Get_Bitmap(library_, &outline, &target) != 0) bitmap = {};
    return true;
}

}  // namespace PrintEngine::Fonts
