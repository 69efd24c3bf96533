#include "printengine/src/raster/Shapes.h"

#include <cmath>
#include <functional>

#include "tests/printengine/Picture.h"

using namespace PrintEngine::Drawing;

namespace {

constexpr int Side = 160;

Picture Dots(Raster const& raster) {
    Picture picture(Side, Side);
    for (int y = 0; y < Side; ++y)
        for (int x = 0; x < Side; ++x) {
            auto const row = raster.Row(y);
            auto const word = static_cast<std::size_t>(x / WordBits);
            picture.At(x, y) = word < row.size() && (row[word] >> (WordBits - 1 - x % WordBits) & 1);
        }
    return picture;
}

Picture Paint(std::function<void(Raster&)> const& draw) {
    Raster raster;
    raster.Reset(Side, Side);
    draw(raster);
    return Dots(raster);
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

// A pen as wide as the line is thick goes from one side of the box to the other; in a row it stands where the line is
// in the middle of the row, or, flatter than 45 degrees, wherever the line is.
TEST(ShapesTest, DiagonalIsThePathOfAPen) {
    struct Row {
        int width, height, thickness;
    };
    for (auto const [w, h, t] : {Row{100, 60, 5}, {60, 100, 1}, {100, 3, 1}, {3, 100, 2}, {80, 80, 1}, {20, 50, 40}}) {
        for (bool const leansRight : {false, true}) {
            Picture expected(Side, Side);
            int const pen = std::min(t, w), places = w - pen + 1;
            for (int y = 0; y < h; ++y) {
                double const above = 1.0 * y * places / h, below = (y + 1.0) * places / h;
                for (int x = 0; x < w; ++x) {
                    for (int place = std::max(0, x - pen + 1); place <= std::min(x, places - 1); ++place) {
                        bool const isOn = places > h ? place + 1 > above && place < below
                                                     : place == static_cast<int>((y + 0.5) * places / h);
                        if (isOn) expected.At(10 + (leansRight ? w - 1 - x : x), 20 + y) = 1;
                    }
                }
            }
            EXPECT_EQ(Paint([&](Raster& raster) {
                          FillDiagonal(raster, {10, 20, 10 + w, 20 + h}, t, leansRight, Ink::Invert);
                      }),
                      expected)
                << w << "x" << h << " t" << t;
        }
    }
}

TEST(ShapesTest, EnormousShapesEnd) {
    Raster raster;
    raster.Reset(100, 100);
    PixelBox const box{-(1 << 28), -(1 << 28), 1 << 28, 1 << 28};
    FillEllipse(raster, box, 3, Ink::Black);
    FillRoundedFrame(raster, box, 3, 1 << 28, Ink::Invert);
    EXPECT_EQ(Dots(raster).CountBlack(), 0) << "their lines are far away";
    FillDiagonal(raster, box, 1, false, Ink::Black);
    EXPECT_EQ(Dots(raster).CountBlack(), Side);
    EXPECT_TRUE(Dots(raster).At(7, 7));
    FillFrame(raster, box, {5, 5, 6, 6}, Ink::Black);
    EXPECT_EQ(Dots(raster).CountBlack(), Side * Side);
    EXPECT_LE(raster.Bottom(), Raster::MaxHeight);
}
