#include "printengine/src/raster/Shapes.h"

#include <algorithm>
#include <cmath>
#include <cstdint>

namespace PrintEngine::Drawing {

namespace {

/// Columns [left, right) of one row of a shape.
struct Span {
    int left = 0;
    int right = 0;
};

/// Fills what lies in the outer but not in the inner span.
void FillBetween(Raster& raster, int y, Span outer, Span inner, Ink ink) {
    if (inner.left >= inner.right) {
        raster.Fill(outer.left, y, outer.right, y + 1, ink);
        return;
    }
    raster.Fill(outer.left, y, inner.left, y + 1, ink);
    raster.Fill(inner.right, y, outer.right, y + 1, ink);
}

/// How far an ellipse's edge stands in from the side of its box, in a row `row` below the top. A pixel belongs to the
/// ellipse when its centre does. The half axes are in pixels.
int EllipseInset(double halfWidth, double halfHeight, int row) {
    double const y = (halfHeight - row - 0.5) / halfHeight;
    double const half = halfWidth * std::sqrt(std::max(0.0, 1 - y * y));
    // The small amount keeps a centre that lies on the edge inside, whatever the last bit of the root.
    return static_cast<int>(std::ceil(halfWidth - half - 0.5 - 1e-9));
}

/// One row of a box whose corners are quarter circles.
Span RoundedSpan(PixelBox box, int radius, int y) {
    if (y < box.top || y >= box.bottom) return {};
    int const fromEdge = std::min(y - box.top, box.bottom - 1 - y);
    int const inset = fromEdge < radius ? EllipseInset(radius, radius, fromEdge) : 0;
    return {box.left + inset, box.right - inset};
}

/// One row of an ellipse that fills its box.
Span EllipseSpan(PixelBox box, int y) {
    if (y < box.top || y >= box.bottom) return {};
    int const inset = EllipseInset(box.Width() / 2.0, box.Height() / 2.0, y - box.top);
    return {box.left + inset, box.right - inset};
}

PixelBox Inset(PixelBox box, int amount) {
    return {box.left + amount, box.top + amount, box.right - amount, box.bottom - amount};
}

/// Calls `paintRow` for the rows of the box that a raster can hold.
template <typename PaintRow>
void ForRows(PixelBox box, PaintRow paintRow) {
    int const bottom = std::min(box.bottom, Raster::MaxHeight);
    for (int y = std::max(box.top, 0); y < bottom; ++y) paintRow(y);
}

}  // namespace

void FillFrame(Raster& raster, PixelBox outer, PixelBox inner, Ink ink) {
    if (outer.IsEmpty()) return;
    if (inner.IsEmpty()) {
        raster.Fill(outer.left, outer.top, outer.right, outer.bottom, ink);
        return;
    }
    raster.Fill(outer.left, outer.top, outer.right, inner.top, ink);
    raster.Fill(outer.left, inner.top, inner.left, inner.bottom, ink);
    raster.Fill(inner.right, inner.top, outer.right, inner.bottom, ink);
    raster.Fill(outer.left, inner.bottom, outer.right, outer.bottom, ink);
}

void FillRoundedFrame(Raster& raster, PixelBox box, int thickness, int radius, Ink ink) {
    radius = std::min({radius, box.Width() / 2, box.Height() / 2});
    PixelBox const inner = Inset(box, std::min(thickness, 1 << 20));
    if (radius <= 0) return FillFrame(raster, box, inner, ink);
    int const innerRadius = std::max(radius - thickness, 0);
    ForRows(box, [&](int y) {
        Span const hole = inner.IsEmpty() ? Span{} : RoundedSpan(inner, innerRadius, y);
        FillBetween(raster, y, RoundedSpan(box, radius, y), hole, ink);
    });
}

void FillEllipse(Raster& raster, PixelBox box, int thickness, Ink ink) {
    if (box.IsEmpty()) return;
    PixelBox const inner = Inset(box, std::min(thickness, 1 << 20));
    ForRows(box, [&](int y) {
        FillBetween(raster, y, EllipseSpan(box, y), inner.IsEmpty() ? Span{} : EllipseSpan(inner, y), ink);
    });
}

void FillDiagonal(Raster& raster, PixelBox box, int thickness, bool leansRight, Ink ink) {
    if (box.IsEmpty() || thickness <= 0) return;
    thickness = std::min(thickness, box.Width());
    // The pen, `thickness` wide, has this many places from one side of the box to the other.
    std::int64_t const places = box.Width() - thickness + 1;
    std::int64_t const rows = box.Height();
    ForRows(box, [&](int y) {
        std::int64_t const row = y - box.top;
        std::int64_t first = (2 * row + 1) * places / (2 * rows);
        std::int64_t last = first;
        if (places > rows) {
            // Flatter than 45 degrees: all places that the line passes within the row.
            first = row * places / rows;
            last = ((row + 1) * places + rows - 1) / rows - 1;
        }
        if (leansRight) {
            std::int64_t const mirrored = places - 1 - last;
            last = places - 1 - first;
            first = mirrored;
        }
        raster.Fill(box.left + static_cast<int>(first), y, box.left + static_cast<int>(last) + thickness, y + 1, ink);
    });
}

}  // namespace PrintEngine::Drawing
