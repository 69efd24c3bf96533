#include "fields/placement/RenderPoints.h"

#include <iterator>

#include "fields/placement/PlacementFormula.h"

namespace ZplCore::Rendering {

namespace {

using namespace Letters;
constexpr auto Top = Baseline::Top;
constexpr auto Bottom = Baseline::Bottom;
constexpr auto Left = Justification::Left;
constexpr auto Right = Justification::Right;
constexpr auto Auto = Justification::Auto;

struct RenderPointRow {
    int orientation;
    Baseline baseline;
    Justification justification;
    PointFormula render;
    PointFormula next;
};

// Where to draw, and where the next field starts: behind the width of a left justified field; a right justified one has
// moved left by its width already. At 90 degrees the baseline counts for nothing. Turned back (180, 270) a box starts
// at its last dot, so the next field starts one dot nearer. That one row has H without - 1 is meant.
// clang-format off
constexpr RenderPointRow RenderPointRows[] = {
    {0, Top, Left, {0, 0}, {W, H - 1}},
    {0, Top, Right, {0, 0}, {0, H - 1}},
    {0, Top, Auto, {0, 0}, {0, H - 1}},
    {0, Bottom, Left, {0, -H + 1}, {W, 0}},
    {0, Bottom, Right, {0, -H + 1}, {0, 0}},
    {0, Bottom, Auto, {0, -H + 1}, {0, 0}},
    {90, Top, Left, {0, 0}, {W, H - 1}},
    {90, Top, Right, {0, 0}, {0, H - 1}},
    {90, Top, Auto, {0, 0}, {0, H - 1}},
    {90, Bottom, Left, {0, 0}, {W, H - 1}},
    {90, Bottom, Right, {0, 0}, {0, H - 1}},
    {90, Bottom, Auto, {0, 0}, {0, H - 1}},
    {180, Top, Left, {0, 0}, {W - 1, H - 1}},
    {180, Top, Right, {0, 0}, {-1, H - 1}},
    {180, Top, Auto, {0, 0}, {-1, H - 1}},
    {180, Bottom, Left, {W, 0}, {2 * W - 1, H - 1}},
    {180, Bottom, Right, {W, 0}, {W - 1, H - 1}},
    {180, Bottom, Auto, {W, 0}, {W - 1, H - 1}},
    {270, Top, Left, {0, 0}, {W - 1, H - 1}},
    {270, Top, Right, {0, 0}, {-1, H}},
    {270, Top, Auto, {0, 0}, {-1, H - 1}},
    {270, Bottom, Left, {W, -H + 1}, {2 * W - 1, 0}},
    {270, Bottom, Right, {W, -H + 1}, {W - 1, 0}},
    {270, Bottom, Auto, {W, -H + 1}, {W - 1, 0}},
};
// clang-format on
static_assert(std::size(RenderPointRows) == 24);

}  // namespace

ZplPoint GenerateLocalJustificationFactor(ZplOrientation orientation, Baseline baseline, Justification justification,
                                          int width, int height) {
    if (justification != Right) return {};
    // 90 and 270 degrees differ by one dot.
    if (baseline == Top && orientation == ZplOrientation::Rotated) return {WrapSubtract(1, height), 0};
    if (baseline == Top && orientation == ZplOrientation::BottomUp) return {WrapSubtract(0, height), 0};
    return {WrapSubtract(0, width), 0};
}

std::pair<ZplPoint, ZplPoint> GenerateRenderPoints(ZplOrientation orientation, Baseline baseline,
                                                   Justification justification, int width, int height) {
    FieldMeasures const measures{.width = width, .height = height};
    for (auto const& row : RenderPointRows) {
        if (row.orientation == static_cast<int>(orientation) && row.baseline == baseline &&
            row.justification == justification)
            return {row.render(measures), row.next(measures)};
    }
    return {};
}

ZplPoint PreOrPostRotationShift(LinearTransform const& transform, ZplPoint point, ZplPoint shift, Baseline baseline) {
    return baseline == Top ? transform * point + shift : transform * (point + shift);
}

ZplPoint CreateLocalNextPoint(ContextProcessor const& processor, int width, int height, ShiftFunction const& shift) {
    auto const field = FieldPlacement::From(processor);
    ZplPoint next = shift ? shift(field.orientation, field.baseline, field.justification) : ZplPoint();
    if (field.justification == Left) next = next + ZplPoint(width, 0);
    bool const turnedBack =
        field.orientation == ZplOrientation::Inverted || field.orientation == ZplOrientation::BottomUp;
    if (turnedBack) next = next + ZplPoint(-1, 0);
    if (field.baseline == Top && field.justification == Right && field.orientation == ZplOrientation::BottomUp)
        next = next + ZplPoint(0, 1);
    return next + ZplPoint(0, WrapSubtract(height, 1));
}

}  // namespace ZplCore::Rendering
