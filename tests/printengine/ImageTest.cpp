#include <random>

#include "tests/printengine/DeskFixture.h"

class ImageTest : public DeskFixture {
protected:
    static Picture Noise(int width, int height) {
        std::mt19937 random(5);
        Picture picture(width, height);
        for (char& dot : picture.dots) dot = random() & 1;
        picture.At(0, 0) = picture.At(width - 1, 0) = picture.At(0, height - 1) = picture.At(width - 1, height - 1) = 1;
        return picture;
    }

    static void Draw(Scripting::ScriptGraphicContext& target, Picture const& picture, int x, int y, unsigned width,
                     unsigned height, bool scaled) {
        auto const rows = picture.Packed();
        target.DrawImage({rows, static_cast<unsigned>(picture.width), static_cast<unsigned>(picture.height)}, x, y,
                         width, height, scaled);
    }
};

TEST_F(ImageTest, UnscaledPixelsArePrinterPixelsAtEveryResolution) {
    Picture const picture = Noise(77, 41);
    for (unsigned const printerDpi : {203u, 300u, 600u}) {
        for (int const degrees : {0, 90, 180, 270}) {
            auto const target = Target(1, 1, printerDpi, 203);
            target->SetRotation(degrees);
            Draw(*target, picture, 10, 20, 30, 30, false);
            Picture const expected = picture.Turned(degrees);
            int const x = static_cast<int>(std::lround(10.0 * printerDpi / 203));
            int const y = static_cast<int>(std::lround(20.0 * printerDpi / 203));
            EXPECT_EQ(Drawn(*target).Cropped(x, y, expected.width, expected.height), expected) << degrees;
            EXPECT_EQ(Drawn(*target).CountBlack(), expected.CountBlack()) << degrees;
        }
    }
}

TEST_F(ImageTest, ScaledDotsTakeTheNearestPixel) {
    Picture const picture = Noise(77, 41);
    struct Row {
        int width, height;
        int left = 0, top = 0;
    };
    // The large ones reach far over the page, and begin left of it and above it.
    for (auto const& [width, height, left, top] : {Row{77, 41}, Row{154, 123}, Row{40, 41}, Row{100, 30}, Row{1, 1},
                                                   Row{7700, 41000}, Row{770, 4100, -333, -611}, Row{770, 410, 9, 7}}) {
        auto const target = Target(1, 1);
        Draw(*target, picture, left, top, static_cast<unsigned>(width), static_cast<unsigned>(height), true);
        Picture expected(203, 203);
        for (int y = std::max(0, top); y < std::min(203, top + height); ++y)
            for (int x = std::max(0, left); x < std::min(203, left + width); ++x)
                expected.At(x, y) =
                    picture.At((2 * (x - left) + 1) * 77 / (2 * width), (2 * (y - top) + 1) * 41 / (2 * height));
        EXPECT_EQ(Drawn(*target), expected) << width << " x " << height;
    }
}

TEST_F(ImageTest, TwiceReversedIsNothing) {
    auto const target = Target(1, 1);
    Picture const picture = Noise(50, 50);
    target->DrawBox(20, 20, 40, 40, 40, 0);
    Picture const before = Drawn(*target);
    target->SetReverse(true);
    Draw(*target, picture, 10, 10, 50, 50, false);
    EXPECT_NE(Drawn(*target), before);
    Draw(*target, picture, 10, 10, 50, 50, false);
    EXPECT_EQ(Drawn(*target), before);
}

TEST_F(ImageTest, MissingRowsAndImpossibleSizesAreHarmless) {
    auto const target = Target(1, 1);
    std::vector<std::uint8_t> const rows(10, 0xFF);
    target->DrawImage({rows, 16, 100}, 0, 0, 16, 100, false);
    EXPECT_EQ(Drawn(*target).InkBox(), (std::array{0, 0, 16, 5}));
    target->DrawImage({rows, 4'000'000'000u, 4'000'000'000u}, 0, 0, 5, 5, true);
    target->DrawImage({rows, 0, 0}, 0, 0, 5, 5, true);
    target->DrawImage({rows, 8, 8}, 0, 0, 0, 0, true);
    EXPECT_EQ(Drawn(*target).CountBlack(), 80);
    target->DrawImage({rows, 8, 8}, 0, 0, 4'000'000'000u, 4'000'000'000u, true);
    EXPECT_EQ(warnings.size(), 1u);
}
