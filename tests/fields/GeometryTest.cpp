#include "fields/placement/Geometry.h"

#include <gtest/gtest.h>

#include <climits>

#include "fields/placement/FieldTransform.h"
#include "fields/placement/RenderPoints.h"
#include "fields/placement/TextRenderPoints.h"
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

struct CompleteRow {
    int orientation;
    Baseline baseline;
    Justification justification;
    ZplPoint corner;  ///< where the local corner (0, 0) lands
};

// A box of 30 x 8 at (100, 50), with a shift of (2, 3).
constexpr CompleteRow CompleteRows[] = {
    {0, Top, Left, {102, 53}},      {0, Top, Right, {72, 53}},      {0, Bottom, Left, {102, 46}},
    {0, Bottom, Right, {72, 46}},   {90, Top, Left, {104, 52}},     {90, Top, Right, {97, 52}},
    {90, Bottom, Left, {104, 52}},  {90, Bottom, Right, {104, 22}}, {180, Top, Left, {127, 54}},
    {180, Top, Right, {97, 54}},    {180, Bottom, Left, {97, 54}},  {180, Bottom, Right, {127, 54}},
    {270, Top, Left, {103, 77}},    {270, Top, Right, {95, 77}},    {270, Bottom, Left, {96, 47}},
    {270, Bottom, Right, {96, 77}}, {0, Top, Auto, {102, 53}},
};

TEST(FieldTransform, PlacesByBaselineJustificationAndShift) {
    for (auto const& row : CompleteRows) {
        auto const transform =
            GetFieldLocalToGlobalTransform({100, 50}, {30, 8}, Turn(row.orientation), row.baseline, row.justification,
                                           [](auto...) { return ZplPoint(2, 3); });
        EXPECT_EQ(transform * ZplPoint(), row.corner)
            << row.orientation << " baseline " << static_cast<int>(row.baseline) << " justification "
            << static_cast<int>(row.justification);
    }
}

struct RenderRow {
    int orientation;
    Baseline baseline;
    Justification justification;
    ZplPoint render;
    ZplPoint next;
};

TEST(RenderPoints, KeepTheUnevennessOfTheirTable) {
    constexpr RenderRow Rows[] = {
        {0, Top, Left, {0, 0}, {30, 7}},        {0, Bottom, Auto, {0, -7}, {0, 0}},
        {90, Bottom, Left, {0, 0}, {30, 7}},    {180, Top, Right, {0, 0}, {-1, 7}},
        {180, Bottom, Left, {30, 0}, {59, 7}},  {270, Top, Right, {0, 0}, {-1, 8}},
        {270, Top, Auto, {0, 0}, {-1, 7}},      {270, Bottom, Right, {30, -7}, {29, 0}},
        {270, Bottom, Left, {30, -7}, {59, 0}}, {180, Bottom, Auto, {30, 0}, {29, 7}},
    };
    for (auto const& row : Rows) {
        auto const [render, next] =
            Rendering::GenerateRenderPoints(Turn(row.orientation), row.baseline, row.justification, 30, 8);
        EXPECT_EQ(render, row.render) << row.orientation;
        EXPECT_EQ(next, row.next) << row.orientation;
    }
}

TEST(RenderPoints, JustifyRightByOneDotMoreAt270Degrees) {
    EXPECT_EQ(Rendering::GenerateLocalJustificationFactor(Turn(90), Top, Right, 30, 8), ZplPoint(-7, 0));
    EXPECT_EQ(Rendering::GenerateLocalJustificationFactor(Turn(270), Top, Right, 30, 8), ZplPoint(-8, 0));
    EXPECT_EQ(Rendering::GenerateLocalJustificationFactor(Turn(270), Bottom, Right, 30, 8), ZplPoint(-30, 0));
    EXPECT_EQ(Rendering::GenerateLocalJustificationFactor(Turn(90), Top, Auto, 30, 8), ZplPoint());
}

/// The two ways to the next point of a barcode, as a closure and by the table, have to agree where both are used.
TEST(RenderPoints, LocalNextPointAgreesWithTheTableForTheTopBaseline) {
    ContextProcessor processor("");
    processor.CreateContext(ContextProcessor::ElementContext);
    for (auto const orientation : Orientations) {
        for (auto const justification : {Left, Right, Auto}) {
            processor.set(ContextProcessor::ElementContext, ZplContextKeys::FieldOrientation, orientation);
            processor.set(ContextProcessor::ElementContext, ZplContextKeys::FieldJustification, justification);
            EXPECT_EQ(Rendering::CreateLocalNextPoint(processor, 30, 8, {}),
                      Rendering::GenerateRenderPoints(orientation, Top, justification, 30, 8).second)
                << static_cast<int>(orientation) << " " << static_cast<int>(justification);
        }
    }
}

struct TextRow {
    Justification justification;
    int orientation;
    Baseline baseline;
    Direction direction;
    ZplPoint render;
    ZplPoint next;
};

constexpr auto Horizontal = Direction::Horizontal;
constexpr auto Vertical = Direction::Vertical;
constexpr auto Reverse = Direction::Reverse;

TEST(TextRenderPoints, KeepTheUnevennessOfTheirTable) {
    // U 15, D 5, W 100, H 20, T 2, X 3, A 10, S 4
    constexpr TextRow Rows[] = {
        {Left, 0, Top, Horizontal, {0, 0}, {100, 14}},       {Left, 0, Bottom, Reverse, {0, -14}, {-86, 0}},
        {Left, 90, Bottom, Vertical, {0, 5}, {90, 19}},      {Left, 180, Top, Reverse, {4, 0}, {-82, 14}},
        {Left, 180, Bottom, Horizontal, {99, 5}, {199, 19}}, {Left, 270, Bottom, Reverse, {99, -14}, {13, 0}},
        {Right, 90, Top, Horizontal, {0, 0}, {0, 13}},       {Right, 90, Bottom, Vertical, {0, 5}, {12, 19}},
        {Right, 180, Top, Horizontal, {0, 0}, {8, 14}},      {Right, 180, Bottom, Reverse, {98, 5}, {110, 19}},
        {Right, 270, Top, Horizontal, {0, 0}, {5, 15}},      {Right, 270, Top, Reverse, {-1, 0}, {27, 15}},
        {Auto, 180, Top, Reverse, {0, 0}, {-86, 14}},        {Auto, 270, Bottom, Vertical, {99, -14}, {189, 0}},
    };
    for (auto const& row : Rows) {
        auto const [render, next] = Rendering::GenerateTextRenderPoints(
            Turn(row.orientation), row.baseline, row.justification, row.direction, 15, 5, 100, 20, 2, 3, 10, 4);
        EXPECT_EQ(render, row.render) << row.orientation << " " << static_cast<int>(row.direction);
        EXPECT_EQ(next, row.next) << row.orientation << " " << static_cast<int>(row.direction);
    }
}

TEST(TextRenderPoints, EveryCombinationHasItsRow) {
    for (auto const justification : {Left, Right, Auto}) {
        for (auto const orientation : Orientations) {
            for (auto const baseline : {Top, Bottom}) {
                for (auto const direction : {Horizontal, Vertical, Reverse}) {
                    auto const points = Rendering::GenerateTextRenderPoints(
                        orientation, baseline, justification, direction, 1000, 100, 50000, 20000, 3, 7, 11, 13);
                    EXPECT_NE(points.second, ZplPoint());
                }
            }
        }
    }
}

TEST(TextRenderPoints, JustificationFactors) {
    struct Row {
        int orientation;
        Baseline baseline;
        Justification justification;
        Direction direction;
        ZplPoint factor;
    };
    // W 100, H 20, A 10, T 2, S 4
    constexpr Row Rows[] = {
        {0, Top, Left, Reverse, {0, 0}},         {0, Top, Right, Reverse, {72, 0}},
        {90, Top, Right, Vertical, {-20, 0}},    {180, Top, Left, Reverse, {-91, 0}},
        {180, Top, Auto, Reverse, {-91, 0}},     {180, Top, Right, Horizontal, {-92, 0}},
        {180, Bottom, Right, Reverse, {67, 0}},  {270, Top, Left, Reverse, {0, -91}},
        {270, Top, Auto, Reverse, {0, 0}},       {270, Top, Right, Vertical, {-20, 5}},
        {270, Top, Right, Reverse, {-20, -166}}, {270, Bottom, Right, Vertical, {-104, 0}},
    };
    for (auto const& row : Rows) {
        EXPECT_EQ(Rendering::GenerateLocalTextJustificationFactor(Turn(row.orientation), row.baseline,
                                                                  row.justification, row.direction, 20, 100, 10, 2, 4),
                  row.factor)
            << row.orientation << " " << static_cast<int>(row.direction);
    }
}

}  // namespace
