#include "barcodes/matrix/MaxiCodeSketch.h"

#include <algorithm>
#include <cmath>

#include "barcodes/frame/BitmapPainter.h"

namespace Scripting {

namespace {

constexpr double MillimetresPerInch = 25.4;
/// ISO/IEC 16023: the distance of neighbouring modules, and the radii of the edges of the bull's-eye from the inside.
constexpr double ModulePitch = 0.88;
constexpr double RingRadii[] = {0.51, 1.18, 1.86, 2.53, 3.20, 3.87};
/// Beside the dark hexagons stays a seam of this part of them, so that print gain does not close the light ones.
constexpr double HexagonShrink = 0.94;
constexpr std::size_t Rows = 33;
constexpr std::size_t Columns = 30;
/// The bull's-eye stands in the middle of this module.
constexpr double CentreRow = 16;
constexpr double CentreColumn = 14;

/// Sizes in pixels of the target.
struct MaxiCodeGeometry {
    double pitch;   ///< of modules in a row
    double row;     ///< of rows
    double radius;  ///< of a hexagon's corners
    double millimetre;

    explicit MaxiCodeGeometry(Dpi dpi)
        : pitch(ModulePitch * dpi.Value() / MillimetresPerInch),
          row(pitch * std::sqrt(3.0) / 2),
          radius(pitch / std::sqrt(3.0)),
          millimetre(dpi.Value() / MillimetresPerInch) {}

    double CentreX(double r, double c) const { return (c + 0.5 + (std::lround(r) % 2 != 0 ? 0.5 : 0)) * pitch; }
    double CentreY(double r) const { return radius + r * row; }
};

/// The columns that a hexagon with upright sides covers, as far as a line `dy` above or below its centre.
double HalfWidthAt(double dy, double halfPitch, double radius) {
    return std::min(halfPitch, (radius - std::abs(dy)) * std::sqrt(3.0));
}

void PaintSpan(SketchedBitmap& bitmap, std::size_t y, double begin, double end) {
    auto const first = static_cast<std::int64_t>(std::ceil(begin - 0.5));
    auto const last = static_cast<std::int64_t>(std::ceil(end - 0.5));
    if (last > first && last > 0)
        PaintRun(RowAt(bitmap, y), static_cast<std::uint64_t>(std::max<std::int64_t>(first, 0)),
                 std::min(static_cast<std::uint64_t>(last), std::uint64_t{bitmap.bitmapWidth}));
}

void DrawMaxiCodeModule(SketchedBitmap& bitmap, MaxiCodeGeometry const& geometry, std::size_t r, std::size_t c) {
    double const radius = geometry.radius * HexagonShrink;
    // Whole pixels for the centre keep all hexagons alike.
    double const x = std::floor(geometry.CentreX(static_cast<double>(r), static_cast<double>(c))) + 0.5;
    double const y = std::floor(geometry.CentreY(static_cast<double>(r))) + 0.5;
    auto const top = static_cast<std::int64_t>(std::floor(y - radius));
    for (std::int64_t line = std::max<std::int64_t>(top, 0);
         line < static_cast<std::int64_t>(bitmap.bitmapHeight) && static_cast<double>(line) < y + radius; ++line) {
        double const half =
            HalfWidthAt(static_cast<double>(line) + 0.5 - y, geometry.pitch / 2 * HexagonShrink, radius);
        if (half > 0) PaintSpan(bitmap, static_cast<std::size_t>(line), x - half, x + half);
    }
}

void DrawBullsEye(SketchedBitmap& bitmap, MaxiCodeGeometry const& geometry) {
    double const x = geometry.CentreX(CentreRow, CentreColumn);
    double const y = geometry.CentreY(CentreRow);
    for (std::size_t line = 0; line < bitmap.bitmapHeight; ++line) {
        double const dy = std::abs(static_cast<double>(line) + 0.5 - y);
        auto const half = [&](double millimetres) {
            double const r = millimetres * geometry.millimetre;
            return dy < r ? std::sqrt(r * r - dy * dy) : 0.0;
        };
        for (std::size_t ring = 0; ring < std::size(RingRadii); ring += 2) {
            double const inner = half(RingRadii[ring]);
            double const outer = half(RingRadii[ring + 1]);
            PaintSpan(bitmap, line, x - outer, x - inner);
            PaintSpan(bitmap, line, x + inner, x + outer);
        }
    }
}

}  // namespace

SketchedBitmap GraphicHelper::SketchMaxiCodeBarcode(Barcode::Model::MaxiCodeBarcodeModel const& model, Dpi dpi,
                                                    unsigned long designResolution) {
    MaxiCodeGeometry const geometry(dpi);
    auto const width = static_cast<std::uint64_t>(std::ceil(geometry.pitch * Columns));
    auto const height = static_cast<std::uint64_t>(std::ceil(geometry.row * (Rows - 1) + 2 * geometry.radius));
    auto bitmap = MakeBitmap(width, height);
    double const scale =
        static_cast<double>(dpi.Value()) / static_cast<double>(designResolution ? designResolution : dpi.Value());
    bitmap.logicalWidth = static_cast<unsigned long>(std::lround(static_cast<double>(width) / scale));
    bitmap.logicalHeight = static_cast<unsigned long>(std::lround(static_cast<double>(height) / scale));
    auto const& modules = model.GetModules();
    for (std::size_t r = 0; r < std::min(Rows, modules.size()); ++r) {
        for (std::size_t c = 0; c + r % 2 < std::min(Columns, modules[r].size()); ++c) {
            if (modules[r][c]) DrawMaxiCodeModule(bitmap, geometry, r, c);
        }
    }
    DrawBullsEye(bitmap, geometry);
    return bitmap;
}

}  // namespace Scripting
