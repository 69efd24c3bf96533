#include "printengine/src/raster/Raster.h"

#include <random>

#include "tests/printengine/Picture.h"

using namespace PrintEngine::Drawing;

namespace {

Picture PictureOf(Raster const& raster, int width, int height) {
    Picture picture(width, height);
    for (int y = 0; y < height; ++y) {
        auto const row = raster.Row(y);
        for (int x = 0; x < std::min(width, static_cast<int>(row.size()) * WordBits); ++x)
            picture.At(x, y) = row[static_cast<std::size_t>(x / WordBits)] >> (WordBits - 1 - x % WordBits) & 1;
    }
    return picture;
}

void Draw(Picture& picture, int x, int y, Ink ink) {
    if (!picture.Contains(x, y)) return;
    char& dot = picture.At(x, y);
    dot = ink == Ink::Black ? 1 : ink == Ink::White ? 0 : !dot;
}

void Blit(Picture& picture, Picture const& source, int x, int y, int degrees, Ink ink) {
    Picture const turned = source.Turned(degrees);
    for (int v = 0; v < turned.height; ++v) {
        for (int u = 0; u < turned.width; ++u) {
            if (turned.At(u, v)) Draw(picture, x + u, y + v, ink);
        }
    }
}

class Random {
public:
    explicit Random(unsigned seed) : engine_(seed) {}
    int Between(int low, int high) { return std::uniform_int_distribution<int>(low, high)(engine_); }
    Ink AnyInk() { return static_cast<Ink>(Between(0, 2)); }
    Picture AnyPicture(int maxSide) {
        Picture picture(Between(1, maxSide), Between(1, maxSide));
        int const density = Between(1, 3);
        for (char& dot : picture.dots) dot = Between(0, density) == 0;
        return picture;
    }

private:
    std::mt19937 engine_;
};

}  // namespace

TEST(RasterTest, WholeWordsDrawAsDotByDot) {
    constexpr int Width = 300, Height = 200;
    for (unsigned seed = 1; seed <= 60; ++seed) {
        Random random(seed);
        Raster raster;
        // Smaller than what is drawn on, so that rows grow while drawing.
        raster.Reset(random.Between(1, Width), random.Between(1, Height));
        Picture twin(Width, Height);
        for (int step = 0; step < 40; ++step) {
            int const x = random.Between(-150, Width);
            int const y = random.Between(-150, Height);
            Ink const ink = random.AnyInk();
            if (random.Between(0, 2) == 0) {
                int const right = x + random.Between(-5, 200);
                int const bottom = y + random.Between(-5, 100);
                raster.Fill(x, y, right, bottom, ink);
                for (int v = y; v < bottom; ++v)
                    for (int u = x; u < right; ++u) Draw(twin, u, v, ink);
            } else {
                Picture const source = random.AnyPicture(150);
                auto const packed = source.Packed();
                int const degrees = random.Between(0, 3) * 90;
                raster.Blit(
                    {packed.data(), static_cast<std::size_t>(source.width + 7) / 8, source.width, source.height}, x, y,
                    degrees, ink);
                Blit(twin, source, x, y, degrees, ink);
            }
        }
        ASSERT_EQ(PictureOf(raster, Width, Height), twin) << "seed " << seed;
    }
}

TEST(RasterTest, BitsBeyondThePictureAreNotDrawn) {
    std::vector<std::uint8_t> const rows(16, 0xFF);
    for (int const degrees : {0, 90, 180, 270}) {
        Raster raster;
        raster.Reset(64, 64);
        raster.Blit({rows.data(), 8, 59, 2}, 1, 1, degrees, Ink::Black);
        EXPECT_EQ(PictureOf(raster, 64, 64).CountBlack(), 59 * 2) << degrees;
    }
}

TEST(RasterTest, ResetLeavesNothingBehind) {
    Raster raster;
    raster.Reset(100, 100);
    for (int round = 0; round < 3; ++round) {
        raster.Fill(0, 0, 500, 500, Ink::Black);
        raster.Reset(100 + round % 2, 100);
        EXPECT_EQ(raster.Top(), raster.Bottom());
        raster.Fill(10, 400, 11, 401, Ink::Black);
        EXPECT_EQ(PictureOf(raster, 600, 600).CountBlack(), 1) << round;
    }
}

// Whatever a page of the largest size can show is kept, even when ink far outside it was drawn before.
TEST(RasterTest, InkOutsideDoesNotPushOutInkInside) {
    Raster raster;
    raster.Reset(812, 1218);
    raster.Fill(60000, 0, 61000, 900, Ink::Black);
    raster.Fill(0, 70000, 900, 70001, Ink::Black);
    raster.Fill(0, 0, 1 << 28, 1 << 28, Ink::Invert);
    EXPECT_EQ(raster.Row(70000).front(), 0u);
    EXPECT_EQ(raster.Row(69999).front(), ~Word{0});
    EXPECT_EQ(raster.Row(899)[60500 / WordBits], 0u);
    for (int y = raster.Top(); y < raster.Bottom(); ++y) {
        ASSERT_LE(static_cast<std::int64_t>(raster.Row(y).size()) * WordBits * (y + 1), Raster::MaxDots) << y;
    }
}

TEST(RasterTest, WhiteMakesNoRows) {
    Raster raster;
    raster.Reset(10, 10);
    std::vector<std::uint8_t> const rows(1, 0xFF);
    raster.Fill(0, 0, 1000, 1000, Ink::White);
    raster.Blit({rows.data(), 1, 8, 1}, 500, 500, 0, Ink::White);
    EXPECT_EQ(raster.Bottom(), 0);
}
