#include "printengine/src/raster/Shapes.h"

#include <cmath>
#include <functional>

#include "tests/printengine/Picture.h"

using namespace PrintEngine::Drawing;

namespace {

constexpr int Side = 160;

Picture Paint(std::function<void(Raster&)> const& draw) {
    Raster raster;
    raster.Reset(Side, Side);
    draw(raster);
    Picture picture(Side, Side);
    for (int y = 0; y < Side; ++y)
        for (int x = 0; x < Side; ++x) {
            auto const row = raster.Row(y);
            auto const word = static_cast<std::size_t>(x / WordBits);
            picture.At(x, y) = word < row.size() && (row[word] >> (WordBits - 1 - x % WordBits) & 1);
        }
    return picture;
}

bool InEllipse(double x, double y, double halfWidth, double halfHeight) {
    return halfWidth > 0 && halfHeight > 0 &&
           x * x / (halfWidth * halfWidth) + y * y / (halfHeight * halfHeight) <= 1 + 1e-9;
}

/// Whether the middle of a pixel lies in a w x h box with corners of radius r.
bool InRounded(double x, double y, double w, double h, double r) {
    if (x < 0 || y < 0 || x > w || y > h) return false;
    double const cx = std::max({r - x, x - (w - r), 0.0});
    double const cy = std::max({r - y, y - (h - r), 0.0});
    return cx * cx + cy * cy <= r * r + 1e-9;
}

}  // namespace

TEST(ShapesTest, RoundedFrameIsTwoExactOutlines) {
    struct Row {
        int width, height, thickness, radius;
    };
    for (auto const [w, h, t, r] : {Row{100, 60, 5, 20},
                                    {100, 60, 5, 0},
                                    {61, 61, 3, 30},
                                    {90, 33, 40, 16},
                                    {50, 50, 12, 5},
                                    {7, 80, 1, 99},
                                    {100, 1, 1, 3},
                                    {40, 40, 20, 20}}) {
        Picture expected(Side, Side);
        double const outer = std::min({r, w / 2, h / 2});
        double const inner = std::max(outer - t, 0.0);
        for (int y = 0; y < h; ++y)
            for (int x = 0; x < w; ++x) {
                bool const isHole =
                    w > 2 * t && h > 2 * t && InRounded(x + 0.5 - t, y + 0.5 - t, w - 2 * t, h - 2 * t, inner);
                expected.At(7 + x, 9 + y) = InRounded(x + 0.5, y + 0.5, w, h, outer) && !isHole;
            }
        EXPECT_EQ(Paint([&](Raster& raster) {
                      FillRoundedFrame(raster, {7, 9, 7 + w, 9 + h}, t, r, Ink::Invert);
                  }),
                  expected)
            << w << "x" << h << " t" << t << " r" << r;
    }
}

TEST(ShapesTest, EllipseIsTwoExactOutlines) {
    struct Row {
        int width, height, thickness;
    };
    for (auto const [w, h, t] : {Row{100, 60, 5}, {61, 61, 1}, {60, 60, 30}, {3, 3, 1}, {150, 4, 2}, {9, 120, 3}}) {
        Picture expected(Side, Side);
        for (int y = 0; y < h; ++y)
            for (int x = 0; x < w; ++x) {
                double const dx = x + 0.5 - w / 2.0, dy = y + 0.5 - h / 2.0;
                expected.At(3 + x, 5 + y) =
                    InEllipse(dx, dy, w / 2.0, h / 2.0) && !InEllipse(dx, dy, w / 2.0 - t, h / 2.0 - t);
            }
        EXPECT_EQ(Paint([&](Raster& raster) {
                      FillEllipse(raster, {3, 5, 3 + w, 5 + h}, t, Ink::Invert);
                  }),
                  expected)
            << w << "x" << h << " t" << t;
    }
}

TEST(ShapesTest, DiagonalJoinsTheCornersOfItsBox) {
    struct Row {
        int width, height, thickness;
    };
    for (auto const [w, h, t] : {Row{100, 60, 5}, {60, 100, 1}, {100, 3, 1}, {3, 100, 2}, {80, 80, 1}, {20, 50, 40}}) {
        PixelBox const box{10, 20, 10 + w, 20 + h};
        Picture const right = Paint([&](Raster& raster) { FillDiagonal(raster, box, t, true, Ink::Invert); });
        Picture const left = Paint([&](Raster& raster) { FillDiagonal(raster, box, t, false, Ink::Invert); });
        EXPECT_EQ(left.Cropped(10, 20, w, h), right.Cropped(10, 20, w, h).Mirrored());
        EXPECT_EQ(right.Cropped(10, 20, w, h), right.Cropped(10, 20, w, h).Turned(180)) << w << "x" << h;
        EXPECT_EQ(right.InkBox(), (std::array{10, 20, 10 + w, 20 + h})) << w << "x" << h << " t" << t;
        for (int y = 20; y + 1 < 20 + h; ++y) {
            bool touches = false;
            for (int x = 10; x < 10 + w; ++x)
                touches |= right.At(x, y) && (right.At(x - 1, y + 1) || right.At(x, y + 1) || right.At(x + 1, y + 1));
            ASSERT_TRUE(touches) << w << "x" << h << " t" << t << " row " << y;
        }
    }
}

TEST(ShapesTest, EnormousShapesEnd) {
    Raster raster;
    raster.Reset(100, 100);
    PixelBox const box{-(1 << 28), -(1 << 28), 1 << 28, 1 << 28};
    FillRoundedFrame(raster, box, 1 << 28, 1 << 28, Ink::Invert);
    FillEllipse(raster, box, 3, Ink::Black);
    FillDiagonal(raster, box, 1, true, Ink::Black);
    FillFrame(raster, box, {5, 5, 6, 6}, Ink::Black);
    EXPECT_LE(raster.Bottom(), Raster::MaxHeight);
}
