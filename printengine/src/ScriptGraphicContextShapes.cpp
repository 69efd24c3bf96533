#include <algorithm>

#include "printengine/src/ScriptGraphicContextState.h"
#include "printengine/src/raster/InkOf.h"
#include "printengine/src/raster/ScaledPicture.h"

namespace Scripting {

using PrintEngine::Drawing::BitRows;
using PrintEngine::Drawing::InkOf;
using PrintEngine::Drawing::PixelScale;
using PrintEngine::Drawing::Raster;
using PrintEngine::Drawing::ScaledPicture;
using PrintEngine::Drawing::Turned;

namespace {

constexpr std::int64_t MostCovered = std::int64_t{16} << 30;  // pixels: 256 times the largest page
constexpr std::int64_t PixelsOfCharacter = 1000;              // that take as long as to place one,
constexpr std::int64_t PixelsOfTextPixel = 4;                 // as to make one of a letter that is not kept,
constexpr std::int64_t PixelsOfRow = 500;                     // and to reach one

/// Calls `draw(part)` for bands of a picture of `width` x `height` pixels at (left, top), which are all of it that a
/// raster keeps: an enlarged picture may be many times a page.
template <typename Draw>
void ForBandsKept(int left, int top, int width, int height, Draw const& draw) {
    constexpr int BandRows = 256;
    int const bottom = std::min(height, Raster::MaxHeight - top);
    for (int y = std::max(0, -top); y < bottom; y += BandRows) {
        PixelBox const part{std::max(0, -left), y, std::min(width, Raster::WidthLimit(top + y) - left),
                            std::min(bottom, y + BandRows)};
        if (part.left >= part.right) break;
        draw(part);
    }
}

}  // namespace

PixelBox ScriptGraphicContext::State::PixelBoxOf(std::int64_t left, std::int64_t top, std::int64_t right,
                                                 std::int64_t bottom) const {
    auto const scale = Scale();
    return {scale.Edge(originX + left), scale.Edge(originY + top), scale.Edge(originX + right),
            scale.Edge(originY + bottom)};
}

bool ScriptGraphicContext::State::Spend(std::int64_t width, std::int64_t height, std::size_t characters) {
    // Of something larger than all pages the raster keeps some four times a page.
    std::int64_t const rows = std::clamp<std::int64_t>(height, 0, Raster::MaxHeight);
    std::int64_t const pixels =
        std::min(rows * std::clamp<std::int64_t>(width, 0, Raster::MaxWidth), 4 * Raster::MaxDots);
    bool const hadLeft = spent < MostCovered;
    spent += pixels * (characters > 0 ? PixelsOfTextPixel : 1) + rows * PixelsOfRow +
             static_cast<std::int64_t>(characters) * PixelsOfCharacter;
    if (spent < MostCovered) return true;
    if (hadLeft) fonts.Warn("the label draws more than the largest page 256 times over; the rest is left out");
    return false;
}

void ScriptGraphicContext::State::CountImage(BitRows const& picture, int left, int top, int width, int height) {
    PixelBox* const counted = Counted(&FieldInk::image);
    if (!counted) return;
    PixelBox ink = InkOf(picture);
    if (width != picture.width || height != picture.height) {
        // The first pixel whose middle shows what lies right of an edge of the picture.
        auto const scaled = [](int edge, int to, int from) {
            std::int64_t const doubled = 2 * std::int64_t{edge} * to - from;
            return doubled <= 0 ? 0 : static_cast<int>((doubled + 2 * std::int64_t{from} - 1) / (2 * from));
        };
        ink = {scaled(ink.left, width, picture.width), scaled(ink.top, height, picture.height),
               scaled(ink.right, width, picture.width), scaled(ink.bottom, height, picture.height)};
    }
    ink = Turned(ink, width, height, degrees);
    if (keepsPictures && width == picture.width && height == picture.height) KeepPicture(picture, ink, left, top);
    counted->Add({left + ink.left, top + ink.top, left + ink.right, top + ink.bottom});
}

void ScriptGraphicContext::DrawRect(int x1, int y1, int x2, int y2, unsigned thickness) {
    if (thickness == 0) return;
    state_->NoteContent();
    std::int64_t const line = thickness;
    std::int64_t const left = std::int64_t{std::min(x1, x2)} - line / 2;
    std::int64_t const top = std::int64_t{std::min(y1, y2)} - line / 2;
    std::int64_t const right = std::int64_t{std::max(x1, x2)} - line / 2;
    std::int64_t const bottom = std::int64_t{std::max(y1, y2)} - line / 2;
    PixelBox const outer = state_->CountShape(state_->PixelBoxOf(left, top, right + line, bottom + line));
    PixelBox const inner = state_->PixelBoxOf(left + line, top + line, right, bottom);
    if (!state_->Spend(outer.Width(), outer.Height())) return;
    state_->OnRasters([&](Raster& raster) { FillFrame(raster, outer, inner, state_->Ink()); });
}

void ScriptGraphicContext::DrawBox(int x, int y, unsigned width, unsigned height, unsigned thickness, unsigned radius) {
    if (width == 0 || height == 0 || thickness == 0) return;
    state_->NoteContent();
    auto const scale = state_->Scale();
    PixelBox const box =
        state_->CountShape(state_->PixelBoxOf(x, y, std::int64_t{x} + width, std::int64_t{y} + height));
    if (!state_->Spend(box.Width(), box.Height())) return;
    state_->OnRasters([&](Raster& raster) {
        FillRoundedFrame(raster, box, scale.Length(thickness), scale.Length(radius), state_->Ink());
    });
}

void ScriptGraphicContext::DrawEllipse(int x, int y, unsigned width, unsigned height, unsigned thickness) {
    if (width == 0 || height == 0 || thickness == 0) return;
    state_->NoteContent();
    PixelBox const box =
        state_->CountShape(state_->PixelBoxOf(x, y, std::int64_t{x} + width, std::int64_t{y} + height));
    if (!state_->Spend(box.Width(), box.Height())) return;
    state_->OnRasters(
        [&](Raster& raster) { FillEllipse(raster, box, state_->Scale().Length(thickness), state_->Ink()); });
}

void ScriptGraphicContext::DrawDiagonal(int x, int y, unsigned width, unsigned height, unsigned thickness,
                                        bool leansRight) {
    if (width == 0 || height == 0 || thickness == 0) return;
    state_->NoteContent();
    PixelBox const box =
        state_->CountShape(state_->PixelBoxOf(x, y, std::int64_t{x} + width, std::int64_t{y} + height));
    if (!state_->Spend(box.Width(), box.Height())) return;
    state_->OnRasters([&](Raster& raster) {
        FillDiagonal(raster, box, state_->Scale().Length(thickness), leansRight, state_->Ink());
    });
}

void ScriptGraphicContext::DrawImage(Bitmap const& bitmap, int x, int y, unsigned width, unsigned height, bool scaled) {
    std::size_t const stride = (std::size_t{bitmap.width} + 7) / 8;
    if (stride == 0 || bitmap.width > 1u << 28) return;
    // Rows that the sender did not hand over are white.
    std::size_t const rows = std::min<std::size_t>({bitmap.height, bitmap.rows.size() / stride, 1u << 28});
    if (rows == 0) return;
    state_->NoteContent();
    BitRows const picture{bitmap.rows.data(), stride, static_cast<int>(bitmap.width), static_cast<int>(rows)};
    auto const scale = state_->Scale();
    int const left = scale.Edge(state_->originX + x);
    int const top = scale.Edge(state_->originY + y);
    int const targetWidth = scaled ? scale.Length(width) : picture.width;
    int const targetHeight = scaled ? scale.Length(height) : picture.height;
    state_->CountImage(picture, left, top, targetWidth, targetHeight);
    if (!state_->Spend(targetWidth, targetHeight)) return;
    if (targetWidth == picture.width && targetHeight == picture.height) {
        state_->OnRasters([&](Raster& raster) { raster.Blit(picture, left, top, state_->degrees, state_->Ink()); });
        return;
    }
    bool const isLevel = state_->degrees == 0;
    if (isLevel ? std::max(targetWidth, targetHeight) >= PixelScale::Farthest
                : std::int64_t{targetWidth} * targetHeight > Raster::MaxDots) {
        state_->fonts.Warn("an image is too large to be scaled, left out");
        return;
    }
    auto const blit = [&](PixelBox const& part) {
        ScaledPicture const resized(picture, targetWidth, targetHeight, part);
        state_->OnRasters([&](Raster& raster) {
            raster.Blit(resized.Rows(), left + part.left, top + part.top, state_->degrees, state_->Ink());
        });
    };
    if (isLevel) {
        ForBandsKept(left, top, targetWidth, targetHeight, blit);
    } else if (targetWidth > 0 && targetHeight > 0) {
        blit({0, 0, targetWidth, targetHeight});
    }
}

}  // namespace Scripting
