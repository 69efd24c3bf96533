#include "fields/placement/Geometry.h"

#include <gtest/gtest.h>

#include <climits>

#include "fields/placement/FieldTransform.h"
#include "fields/placement/RenderPoints.h"
#include "fields/placement/TextRenderPoints.h"
#include "fields/text/TextPlacementCorrection.h"
#include "foundation/Files.h"
#include "frontend/context/ZplContextKeys.h"

using namespace ZplCore;

namespace ZplCore {
inline void PrintTo(ZplPoint p, std::ostream* out) { *out << "(" << p.x << ", " << p.y << ")"; }
}  // namespace ZplCore

namespace {

constexpr auto Top = Baseline::Top;
constexpr auto Bottom = Baseline::Bottom;
constexpr auto Left = Justification::Left;
constexpr auto Right = Justification::Right;
constexpr auto Auto = Justification::Auto;
constexpr ZplOrientation Orientations[] = {ZplOrientation::Normal, ZplOrientation::Rotated, ZplOrientation::Inverted,
                                           ZplOrientation::BottomUp};

ZplOrientation Turn(int degrees) { return static_cast<ZplOrientation>(degrees); }

TEST(LinearTransform, ComposesAsFunctions) {
    LinearTransform const a(2, 3, 5, 7, {11, 13});
    LinearTransform const b(1, -1, 4, 2, {-3, 6});
    for (ZplPoint const p : {ZplPoint(0, 0), ZplPoint(1, 0), ZplPoint(0, 1), ZplPoint(-17, 29)})
        EXPECT_EQ((a * b) * p, a * (b * p));
}

TEST(LinearTransform, WrapsInsteadOfOverflowing) {
    LinearTransform const turn = GetFieldLocalToGlobalTransform({INT_MAX, INT_MAX}, {INT_MAX, INT_MIN}, Turn(180));
    EXPECT_EQ(turn * ZplPoint(INT_MIN, INT_MAX), ZplPoint(INT_MAX - 2, INT_MAX));
    EXPECT_EQ(ZplPoint(INT_MAX, 0) + ZplPoint(1, 0), ZplPoint(INT_MIN, 0));
}

TEST(FieldTransform, TurnsABoxIntoTheBoxThatStartsAtItsOrigin) {
    ZplPoint const origin(100, 50);
    ZplPoint const size(30, 8);
    for (auto const orientation : Orientations) {
        auto const turn = GetFieldLocalToGlobalTransform(origin, size, orientation);
        ZplPoint const a = turn * ZplPoint(0, 0);
        ZplPoint const b = turn * ZplPoint(size.x - 1, size.y - 1);
        bool const isTurned = orientation == Turn(90) || orientation == Turn(270);
        EXPECT_EQ(ZplPoint(std::min(a.x, b.x), std::min(a.y, b.y)), origin);
        EXPECT_EQ(ZplPoint(std::abs(a.x - b.x) + 1, std::abs(a.y - b.y) + 1), isTurned ? ZplPoint(8, 30) : size);
        // A target that turns boxes by itself gets the same corner back.
        EXPECT_EQ(GetGraphicContextOrigin(a, orientation, 30, 8), origin);
    }
}

TEST(FieldTransform, ABoxOfOneDotStaysOnItsOrigin) {
    for (auto const orientation : Orientations)
        EXPECT_EQ(GetFieldLocalToGlobalTransform({7, 9}, {1, 1}, orientation).offset, ZplPoint(7, 9));
}

/// The two ways to the next point of a barcode, as a closure and by the table, have to agree where both are used.
TEST(RenderPoints, LocalNextPointAgreesWithTheTableForTheTopBaseline) {
    ContextProcessor processor("");
    processor.CreateContext(ContextProcessor::ElementContext);
    for (auto const orientation : Orientations) {
        for (auto const justification : {Left, Right, Auto}) {
            processor.set(ContextProcessor::ElementContext, ZplContextKeys::FieldOrientation, orientation);
            processor.set(ContextProcessor::ElementContext, ZplContextKeys::FieldJustification, justification);
            auto const next = Rendering::GenerateRenderPoints(orientation, Top, justification, 30, 8).second;
            EXPECT_EQ(Rendering::CreateLocalNextPoint(processor, 30, 8, {}), next)
                << static_cast<int>(orientation) << " " << static_cast<int>(justification);
            auto const shift = [](auto...) { return ZplPoint(2, 3); };
            EXPECT_EQ(Rendering::CreateLocalNextPoint(processor, 30, 8, shift), next + ZplPoint(2, 3));
        }
    }
}

std::string Text(ZplPoint p) { return std::to_string(p.x) + "," + std::to_string(p.y); }

/// What the tables say of a box, as a line of the file.
std::string BoxLine(ZplOrientation orientation, Baseline baseline, Justification justification) {
    constexpr int W = 1009, H = 211;
    auto const [render, next] = Rendering::GenerateRenderPoints(orientation, baseline, justification, W, H);
    auto const transform = GetFieldLocalToGlobalTransform({100, 50}, {W, H}, orientation, baseline, justification,
                                                          [](auto...) { return ZplPoint(2, 3); });
    return Text(render) + " " + Text(next) + "; " +
           Text(Rendering::GenerateLocalJustificationFactor(orientation, baseline, justification, W, H)) + "; " +
           Text(transform * ZplPoint());
}

/// What they say of text of one direction.
std::string TextLine(ZplOrientation orientation, Baseline baseline, Justification justification, Direction direction) {
    constexpr int W = 1009, H = 211, U = 157, D = 37, T = 7, X = 19, A = 83, S = 5;
    auto const [render, next] =
        Rendering::GenerateTextRenderPoints(orientation, baseline, justification, direction, U, D, W, H, T, X, A, S);
    std::string line = Text(render) + " " + Text(next) + "; " +
                       Text(Rendering::GenerateLocalTextJustificationFactor(orientation, baseline, justification,
                                                                            direction, H, W, A, T, S));
    Sketching::TextMeasures measures{.width = W, .height = H, .ascent = U, .descent = D, .leading = 23};
    measures.averageWidth = A;
    measures.tail = T;
    for (bool const needsGlyphAdjustment : {false, true}) {
        auto const correct = [&](unsigned magnification) {
            return Sketching::CorrectTextPlacement({{}, orientation, baseline, justification}, {direction, S}, measures,
                                                   magnification, needsGlyphAdjustment, {311, 41});
        };
        line += "; " + Text(correct(2).justification) + " " + std::to_string(correct(2).extra) + " " +
                std::to_string(correct(T).extra);
    }
    return line;
}

// A line of Placement.txt is justification, orientation, baseline and what stands there, then where it is drawn, where
// the next field starts, and the factor of justification; for a box also where its corner lands on the page, with a
// shift of its symbology; for text also the factor and the extra shift (with a magnification of 2, and with one of the
// tail) as they are corrected in fonts that fill their cells, and in others.
TEST(Placement, IsThatOfTheFileInEveryCombination) {
    std::string lines;
    for (auto const& [justification, side] : {std::pair(Left, "left"), {Right, "right"}, {Auto, "auto"}}) {
        for (auto const orientation : Orientations) {
            for (auto const& [baseline, row] : {std::pair(Top, "top"), {Bottom, "bottom"}}) {
                std::string const place =
                    std::string(side) + " " + std::to_string(static_cast<int>(orientation)) + " " + row + ", ";
                lines += place + "box: " + BoxLine(orientation, baseline, justification) + "\n";
                for (auto const& [direction, name] : {std::pair(Direction::Horizontal, "horizontal"),
                                                      {Direction::Vertical, "vertical"},
                                                      {Direction::Reverse, "reverse"}})
                    lines += place + name + ": " + TextLine(orientation, baseline, justification, direction) + "\n";
            }
        }
    }
    EXPECT_EQ(lines, ReadRegularFile("tests/fields/Placement.txt"));
}

}  // namespace
