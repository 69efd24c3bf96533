#include <cmath>

#include "foundation/Files.h"
#include "tests/printengine/DeskFixture.h"
#include "tests/support/PngPicture.h"

using Scripting::LabelSettings;

namespace {

struct DecodedPage {
    Picture picture;
    int dpi = 0;
};

/// A page file: one bit of grey for each dot, and the resolution.
DecodedPage Decode(std::filesystem::path const& path) {
    std::string const file = ReadRegularFile(path);
    EXPECT_EQ(file.substr(24, 2), std::string("\1\0", 2));
    EXPECT_EQ(file.substr(37, 4), "pHYs");
    double perMeter = 0;
    for (std::size_t i = 41; i < 45; ++i) perMeter = perMeter * 256 + static_cast<std::uint8_t>(file.at(i));
    return {ReadPng(path), static_cast<int>(std::lround(perMeter * 0.0254))};
}

}  // namespace

class PageTest : public DeskFixture {
protected:
    /// Draws a lopsided label, and ends it with these settings.
    static void DrawLabel(Scripting::ScriptGraphicContext& target, LabelSettings const& settings) {
        target.StartLabel();
        target.DrawBox(3, 5, 40, 20, 4, 6);
        target.DrawDiagonal(50, 30, 60, 25, 5, true);
        target.SelectFont("A", 2, 2);
        target.DrawText(10, 60, "Page", Left, 0, false, false);
        target.EndLabel(settings);
    }

    Picture Rendered(Scripting::ScriptGraphicContext& target) {
        std::filesystem::create_directories(folder);
        target.RenderPage(folder, 7, true);
        EXPECT_EQ(target.FileError(), "");
        return Decode(folder / "7").picture;
    }
};

TEST_F(PageTest, FileHoldsTheDotsAndTheResolution) {
    for (unsigned const dpi : {203u, 300u, 600u}) {
        auto const target = Target(0.7, 0.55, dpi);
        DrawLabel(*target, {});
        EXPECT_EQ(Rendered(*target), Drawn(*target)) << dpi;
        EXPECT_EQ(Decode(folder / "7").dpi, static_cast<int>(dpi));
        EXPECT_EQ(target->PageSize(), (Scripting::Extent{static_cast<int>(std::lround(0.7 * dpi)),
                                                         static_cast<int>(std::lround(0.55 * dpi))}));
    }
}

TEST_F(PageTest, TurnsMirrorsAndMovesTheFinishedPage) {
    auto const target = Target(0.7, 0.5);
    for (unsigned const width : {101u, 128u, 142u, 8u}) {
        LabelSettings settings;
        settings.labelWidth = width;
        settings.labelLength = 90;
        DrawLabel(*target, settings);
        Picture const plain = Rendered(*target);
        ASSERT_EQ(plain, Drawn(*target));
        ASSERT_EQ(plain.width, static_cast<int>(width));

        settings.upright = false;
        DrawLabel(*target, settings);
        EXPECT_EQ(Rendered(*target), plain.Turned(180)) << width;
        settings.mirror = true;
        DrawLabel(*target, settings);
        EXPECT_EQ(Rendered(*target), plain.Turned(180).Mirrored()) << width;
        settings.adjustY = -12;
        DrawLabel(*target, settings);
        EXPECT_EQ(Rendered(*target), plain.Turned(180).Mirrored().Cropped(0, 12, plain.width, plain.height)) << width;
        settings = {.labelLength = 90, .labelWidth = width, .adjustY = 20};
        DrawLabel(*target, settings);
        EXPECT_EQ(Rendered(*target), plain.Cropped(0, -20, plain.width, plain.height)) << width;
        // What lies below the page does not come up with it.
        settings = {.labelLength = 50, .labelWidth = width, .adjustY = -12};
        DrawLabel(*target, settings);
        EXPECT_EQ(Rendered(*target), plain.Cropped(0, 0, plain.width, 50).Cropped(0, 12, plain.width, 50)) << width;
    }
}

TEST_F(PageTest, FormatScaleEnlargesEveryDot) {
    auto const target = Target(0.7, 0.55);
    DrawLabel(*target, {});
    Picture const plain = Drawn(*target);
    DrawLabel(*target, {.formatScale = 2});
    Picture const large = Rendered(*target);
    for (int y = 0; y < plain.height; ++y)
        for (int x = 0; x < plain.width; ++x) ASSERT_EQ(large.At(x, y), plain.At(x / 2, y / 2)) << x << ", " << y;
}

TEST_F(PageTest, InkBeyondTheLabelPartIsThereWhenThePageTurnsOutLarger) {
    auto const target = Target(0.5, 0.5);
    target->StartLabel();
    target->DrawBox(900, 4000, 10, 10, 10, 0);
    target->SetLabelLength(4100);
    target->EndLabel({.labelLength = 4100, .labelWidth = 1000});
    EXPECT_EQ(Rendered(*target).InkBox(), (std::array{900, 4000, 910, 4010}));
}

TEST_F(PageTest, TooLongAPageIsRefusedWithAWarning) {
    auto const target = Target(4, 6);
    target->StartLabel();
    target->EndLabel({.labelLength = 4'000'000'000u, .labelWidth = 32000});
    Picture const page = Rendered(*target);
    EXPECT_EQ(page.width, 32000);
    EXPECT_EQ(page.height, (64 << 20) / 32000);
    EXPECT_EQ(warnings.size(), 1u);
}

TEST_F(PageTest, StoredImageLiesUnderTheNextPage) {
    auto const target = Target(0.5, 0.5);
    auto const box = [&](int x, bool keep) {
        target->StartLabel();
        target->SetFieldVariable(true);
        target->DrawBox(x, 20, 10, 10, 10, 0);
        target->SetFieldVariable(false);
        target->DrawBox(x, 0, 10, 10, 10, 0);
        target->EndLabel({.useStoredImage = keep});
    };
    box(0, true);
    Rendered(*target);
    box(50, true);  // drawn, and not rendered: leaves no trace
    box(20, false);
    auto const page = Rendered(*target);
    EXPECT_EQ(page.InkBox(), (std::array{0, 0, 30, 30}));
    EXPECT_FALSE(page.At(5, 25));  // variable fields leave with their page
    box(40, false);
    EXPECT_EQ(Rendered(*target).InkBox(), (std::array{40, 0, 50, 30}));
}

TEST_F(PageTest, OriginMovesWhatIsDrawnAfterIt) {
    auto const target = Target(1, 1);
    target->StartLabel();
    target->DrawBox(0, 0, 5, 5, 5, 0);
    target->SetLabelOriginX(100);
    target->SetLabelOriginY(static_cast<unsigned>(-10));
    target->DrawBox(0, 20, 5, 5, 5, 0);
    target->EndLabel({});
    Picture const page = Drawn(*target);
    EXPECT_EQ(page.Cropped(0, 0, 50, 50).InkBox(), (std::array{0, 0, 5, 5}));
    EXPECT_EQ(page.Cropped(50, 0, 100, 50).InkBox(), (std::array{50, 10, 55, 15}));
}

TEST_F(PageTest, NothingOfALabelStaysForTheNext) {
    auto const target = Target(0.7, 0.5);
    auto const draw = [&] {
        target->StartLabel();
        target->DrawBox(3, 5, 40, 20, 20, 0);
        target->DrawBox(10, 8, 40, 20, 20, 0);
        target->SelectFont("A", 2, 2);
        target->DrawText(60, 60, "Page", Left, 0, false, false);
        target->EndLabel({.useStoredImage = true});
        return Rendered(*target);
    };
    Picture const plain = draw();
    target->EndLabel({});
    Rendered(*target);
    target->DrawBox(100, 50, 9, 9, 9, 0);
    target->SetLabelOriginX(7);
    target->SetLabelOriginY(9);
    target->SetRotation(90);
    target->SetReverse(true);
    target->SetColor(1);
    target->SetTextFlow(Scripting::ScriptTextFlow::Vertical);
    target->SetFieldVariable(true);
    target->DrawBox(0, 0, 5, 5, 5, 0);
    EXPECT_EQ(draw(), plain);
    target->StartLabel();
    EXPECT_EQ(Drawn(*target), plain) << "the picture that is kept";
}

TEST_F(PageTest, APrinterOfTwiceTheResolutionDrawsAllOfItTwiceAsLarge) {
    Picture sent(9, 7);
    for (int i = 0; i < 7; ++i) sent.At(i, i) = sent.At(8 - i, i) = 1;
    auto const packed = sent.Packed();
    // In steps of `n` dots.
    auto const page = [&](unsigned designDpi, int n) {
        auto const target = Target(1, 1, 600, designDpi);
        auto const u = static_cast<unsigned>(n);
        target->StartLabel();
        target->SetLabelOriginX(5 * u);
        target->SetLabelOriginY(3 * u);
        target->DrawBox(3 * n, 5 * n, 60 * u, 40 * u, 5 * u, 12 * u);
        target->DrawRect(80 * n, 10 * n, 110 * n, 40 * n, 4 * u);
        target->DrawEllipse(10 * n, 60 * n, 50 * u, 30 * u, 3 * u);
        target->DrawDiagonal(80 * n, 60 * n, 30 * u, 50 * u, 7 * u, true);
        target->DrawImage({packed, 9, 7}, 120 * n, 9 * n, 27 * u, 35 * u, true);
        target->DrawImage({packed, 9, 7}, 120 * n, 99 * n, 9, 7, false);
        target->EndLabel({.labelLength = 140 * u, .labelWidth = 150 * u, .adjustY = 7 * n});
        return Rendered(*target);
    };
    Picture const small = page(300, 1);
    EXPECT_EQ(small.width, 300);
    EXPECT_EQ(small.height, 280);
    EXPECT_EQ(small, page(600, 2));
}

TEST_F(PageTest, AFrameStandsOnItsLineAlsoWhereThatIsOdd) {
    auto const target = Target(0.5, 0.5);
    target->DrawRect(10, 10, 20, 30, 3);
    auto const page = Drawn(*target);
    EXPECT_EQ(page.InkBox(), (std::array{9, 9, 22, 32}));
    EXPECT_EQ(page.Cropped(12, 12, 7, 17).CountBlack(), 0);
    EXPECT_EQ(page.CountBlack(), 13 * 23 - 7 * 17);
}

TEST_F(PageTest, ContentAndTextOfALabel) {
    auto const target = Target(1, 1);
    EXPECT_FALSE(target->HasContent());
    target->DrawBox(0, 0, 0, 5, 5, 0);
    target->DrawText(0, 0, "", Left, 0, false, false);
    EXPECT_FALSE(target->HasContent());
    target->DrawBox(0, 0, 5, 5, 5, 0);
    EXPECT_TRUE(target->HasContent());
    EXPECT_EQ(target->GetLabelText(), "");
    std::string text;
    for (int i = 0; i < 70; ++i) text += "\xC3\xA4";
    target->DrawText(0, 0, text, Left, 0, false, false);
    target->DrawText(0, 0, "second", Left, 0, false, false);
    EXPECT_EQ(target->GetLabelText(), text.substr(0, 128));
    target->StartLabel();
    EXPECT_FALSE(target->HasContent());
    EXPECT_EQ(target->GetLabelText(), "");
}

TEST_F(PageTest, TellsWhereTheInkOfAFieldStandsOnIt) {
    // An L of 5 x 3 pixels with blank pixels about it.
    Picture sent(9, 7);
    for (int i = 0; i < 5; ++i) sent.At(2 + i, 4) = 1;
    sent.At(2, 2) = sent.At(2, 3) = 1;
    auto const packed = sent.Packed();
    for (unsigned const dpi : {203u, 300u}) {
        auto const target = Target(0.7, 0.5, dpi, 203);
        auto* const gauge = Scripting::InkGauge::Of(target.get());
        for (int i = 0; i < 4 * 2 * 2 * 5; ++i) {
            int const degrees = i % 4 * 90;
            target->StartLabel();
            target->SetLabelOriginX(7);
            gauge->StartField();
            target->SetRotation(degrees);
            target->SetReverse(i % 3 == 0);
            target->SelectFont("D", 1, 2);
            int const kind = i / 16;
            if (kind == 0) target->DrawText(30, 25, " Ink. ", Left, 2, false, false);
            if (kind == 1) target->DrawImage({packed, 9, 7}, 30, 25, 9, 7, false);
            if (kind == 2) target->DrawImage({packed, 9, 7}, 30, 25, 27, 35, true);
            if (kind == 3) target->DrawBox(30, 25, 40, 20, 4, 8);
            if (kind == 4) target->DrawRect(30, 25, 60, 40, 3);
            auto const ink = gauge->EndField();
            LabelSettings settings;
            settings.labelLength = 96;
            settings.upright = i / 4 % 2 == 0;
            settings.mirror = i / 8 % 2 == 0;
            settings.adjustY = 3;
            target->EndLabel(settings);
            auto const page = Rendered(*target);
            auto const [left, top, right, bottom] = page.InkBox();
            EXPECT_EQ(gauge->OnPage(ink.All()), (Scripting::PixelBox{left, top, right, bottom})) << i << " at " << dpi;
            EXPECT_EQ(ink.text.IsEmpty(), kind != 0);
            EXPECT_EQ(ink.image.IsEmpty(), kind != 1 && kind != 2);
            EXPECT_FALSE(gauge->IsPageBlank());
        }
    }
}

TEST_F(PageTest, CountsNoWhiteInkAndShowsNoneWhereItIsMoved) {
    auto const target = Target(0.7, 0.5);
    auto* const gauge = Scripting::InkGauge::Of(target.get());
    target->StartLabel();
    gauge->StartField();
    target->SetColor(1);
    target->DrawBox(3, 5, 40, 20, 4, 6);
    EXPECT_TRUE(gauge->EndField().All().IsEmpty());
    target->SetColor(0);
    target->DrawBox(3, 5, 40, 2, 2, 0);
    LabelSettings settings;
    settings.labelLength = 90;
    settings.adjustY = -10;
    target->EndLabel(settings);
    EXPECT_EQ(gauge->PrintArea(), (Scripting::PixelBox{0, 0, 142, 80}));
    EXPECT_TRUE(gauge->IsPageBlank());
}
