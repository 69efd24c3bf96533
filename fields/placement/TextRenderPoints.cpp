#include "fields/placement/TextRenderPoints.h"

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
constexpr auto Horizontal = Direction::Horizontal;
constexpr auto Vertical = Direction::Vertical;
constexpr auto Reverse = Direction::Reverse;

struct TextPointRow {
    Justification justification;
    int orientation;
    Baseline baseline;
    Direction direction;
    PointFormula render;
    PointFormula next;
};

// Where to draw, and where the next field starts; the letters are explained in PlacementFormula.h. The unevenness
// between the orientations is meant: hosts lay out their labels by it.
// clang-format off
constexpr TextPointRow TextPointRows[] = {
    {Left, 0, Top, Horizontal, {0, 0}, {W, -D + H - 1}},
    {Left, 0, Top, Vertical, {0, 0}, {W - A, -D + H - 1}},
    {Left, 0, Top, Reverse, {0, 0}, {-W + A + S, -D + H - 1}},
    {Left, 0, Bottom, Horizontal, {0, -U + 1}, {W, -U - D + H}},
    {Left, 0, Bottom, Vertical, {0, -U + 1}, {W - A, -U - D + H}},
    {Left, 0, Bottom, Reverse, {0, -U + 1}, {-W + A + S, -U - D + H}},
    {Left, 90, Top, Horizontal, {0, 0}, {W, -D + H - 1}},
    {Left, 90, Top, Vertical, {0, 0}, {W - A, -D + H - 1}},
    {Left, 90, Top, Reverse, {0, 0}, {-W + A + S, -D + H - 1}},
    {Left, 90, Bottom, Horizontal, {0, D}, {W, H - 1}},
    {Left, 90, Bottom, Vertical, {0, -U + H}, {W - A, -U - D + 2 * H - 1}},
    {Left, 90, Bottom, Reverse, {0, D}, {-W + A + S, H - 1}},
    {Left, 180, Top, Horizontal, {0, 0}, {W, -D + H - 1}},
    {Left, 180, Top, Vertical, {T + X, 0}, {W + T + X - A, -D + H - 1}},
    {Left, 180, Top, Reverse, {T + X - 1, 0}, {-W + T + X + A + S - 1, -D + H - 1}},
    {Left, 180, Bottom, Horizontal, {W - 1, D}, {2 * W - 1, H - 1}},
    {Left, 180, Bottom, Vertical, {A - 1, -U + H}, {W - 1, -U - D + 2 * H - 1}},
    {Left, 180, Bottom, Reverse, {W - 1, D}, {A + S - 1, H - 1}},
    {Left, 270, Top, Horizontal, {0, 0}, {W, -D + H - 1}},
    {Left, 270, Top, Vertical, {T + X, 0}, {W + T + X - A, -D + H - 1}},
    {Left, 270, Top, Reverse, {T + X - 1, 0}, {-W + T + X + A + S - 1, -D + H - 1}},
    {Left, 270, Bottom, Horizontal, {W - 1, -U + 1}, {2 * W - 1, -U - D + H}},
    {Left, 270, Bottom, Vertical, {W - 1, -U + 1}, {2 * W - A - 1, -U - D + H}},
    {Left, 270, Bottom, Reverse, {W - 1, -U + 1}, {A + S - 1, -U - D + H}},

    {Right, 0, Top, Horizontal, {0, 0}, {0, -D + H - 1}},
    {Right, 0, Top, Vertical, {0, 0}, {A + S, -D + H - 1}},
    {Right, 0, Top, Reverse, {0, 0}, {A + S, -D + H - 1}},
    {Right, 0, Bottom, Horizontal, {0, -U + 1}, {0, -U - D + H}},
    {Right, 0, Bottom, Vertical, {0, -U + 1}, {A + S, -U - D + H}},
    {Right, 0, Bottom, Reverse, {0, -U + 1}, {A + S, -U - D + H}},
    {Right, 90, Top, Horizontal, {0, 0}, {0, -D + H - 2}},
    {Right, 90, Top, Vertical, {0, D}, {A + S, H - 1}},
    {Right, 90, Top, Reverse, {0, 0}, {A + S, -D + H - 1}},
    {Right, 90, Bottom, Horizontal, {0, D}, {S, H - 1}},
    {Right, 90, Bottom, Vertical, {0, -U + H}, {-T + A + S, -U - D + 2 * H - 1}},
    {Right, 90, Bottom, Reverse, {0, D}, {-T + A + S, H - 1}},
    {Right, 180, Top, Horizontal, {0, 0}, {T + S + 2, -D + H - 1}},
    {Right, 180, Top, Vertical, {0, 0}, {A + S, -D + H - 1}},
    {Right, 180, Top, Reverse, {T + X - 1, 0}, {T + X + A + S - 1, -D + H - 1}},
    {Right, 180, Bottom, Horizontal, {W - 1, D}, {W + S - 1, H - 1}},
    {Right, 180, Bottom, Vertical, {A - 1, -U + H}, {-T + 2 * A + S - 1, -U - D + 2 * H - 1}},
    {Right, 180, Bottom, Reverse, {W - T, D}, {W - 2 * T + A + S, H - 1}},
    {Right, 270, Top, Horizontal, {0, 0}, {T + S - 1, -D + H}},
    {Right, 270, Top, Vertical, {0, 0}, {A + S, -D + H}},
    {Right, 270, Top, Reverse, {-T + 1, 0}, {-T + 2 * A + 2 * S + 1, -D + H}},
    {Right, 270, Bottom, Horizontal, {W - 1, -U + 1}, {W + S - 1, -U - D + H}},
    {Right, 270, Bottom, Vertical, {W - 1, -U + 1}, {W - T + A + S - 1, -U - D + H}},
    {Right, 270, Bottom, Reverse, {W - T, -U + 1}, {W - 2 * T + A + S, -U - D + H}},

    {Auto, 0, Top, Horizontal, {0, 0}, {W, -D + H - 1}},
    {Auto, 0, Top, Vertical, {0, 0}, {W - A, -D + H - 1}},
    {Auto, 0, Top, Reverse, {0, 0}, {-W + A + S, -D + H - 1}},
    {Auto, 0, Bottom, Horizontal, {0, -U + 1}, {W, -U - D + H}},
    {Auto, 0, Bottom, Vertical, {0, -U + 1}, {W - A, -U - D + H}},
    {Auto, 0, Bottom, Reverse, {0, -U + 1}, {-W + A + S, -U - D + H}},
    {Auto, 90, Top, Horizontal, {0, 0}, {W, -D + H - 1}},
    {Auto, 90, Top, Vertical, {0, 0}, {W - A, -D + H - 1}},
    {Auto, 90, Top, Reverse, {0, 0}, {-W + A + S, -D + H - 1}},
    {Auto, 90, Bottom, Horizontal, {0, D}, {W, H - 1}},
    {Auto, 90, Bottom, Vertical, {0, -U + H}, {W - A, -U - D + 2 * H - 1}},
    {Auto, 90, Bottom, Reverse, {0, D}, {-W + A + S, H - 1}},
    {Auto, 180, Top, Horizontal, {0, 0}, {W, -D + H - 1}},
    {Auto, 180, Top, Vertical, {T + X, 0}, {W + T + X - A, -D + H - 1}},
    {Auto, 180, Top, Reverse, {0, 0}, {-W + A + S, -D + H - 1}},
    {Auto, 180, Bottom, Horizontal, {W - 1, D}, {2 * W - 1, H - 1}},
    {Auto, 180, Bottom, Vertical, {A - 1, -U + H}, {W - 1, -U - D + 2 * H - 1}},
    {Auto, 180, Bottom, Reverse, {W - 1, D}, {A + S - 1, H - 1}},
    {Auto, 270, Top, Horizontal, {0, 0}, {W, -D + H - 1}},
    {Auto, 270, Top, Vertical, {T + X, 0}, {W + T + X - A, -D + H - 1}},
    {Auto, 270, Top, Reverse, {0, 0}, {-W + A + S, -D + H - 1}},
    {Auto, 270, Bottom, Horizontal, {W - 1, -U + 1}, {2 * W - 1, -U - D + H}},
    {Auto, 270, Bottom, Vertical, {W - 1, -U + 1}, {2 * W - A - 1, -U - D + H}},
    {Auto, 270, Bottom, Reverse, {W - 1, -U + 1}, {A + S - 1, -U - D + H}},
};
// clang-format on
static_assert(std::size(TextPointRows) == 72);

struct TextFactorRow {
    int orientation;
    Baseline baseline;
    Justification justification;
    Direction direction;
    PointFormula factor;
};

// How far justification moves the field: most of all right justified text, by the width of its box. Combinations
// that are not listed have the factor (0, 0).
// clang-format off
constexpr TextFactorRow TextFactorRows[] = {
    {0, Top, Right, Horizontal, {-W, 0}},
    {0, Top, Right, Vertical, {-W - S, 0}},
    {0, Top, Right, Reverse, {W - 2 * A - 2 * S, 0}},
    {0, Bottom, Right, Horizontal, {-W, 0}},
    {0, Bottom, Right, Vertical, {-W - S, 0}},
    {0, Bottom, Right, Reverse, {W - 2 * A - 2 * S, 0}},
    {90, Top, Right, Horizontal, {-H, 0}},
    {90, Top, Right, Vertical, {-H, 0}},
    {90, Top, Right, Reverse, {-H, 0}},
    {90, Bottom, Right, Horizontal, {-W, 0}},
    {90, Bottom, Right, Vertical, {-W - S, 0}},
    {90, Bottom, Right, Reverse, {W - 2 * A - 2 * S, 0}},
    {180, Top, Left, Reverse, {-W + A - 1, 0}},
    {180, Top, Right, Horizontal, {-W + T + S + 2, 0}},
    {180, Top, Right, Vertical, {-W - A + T + 2, 0}},
    {180, Top, Right, Reverse, {-W + T, 0}},
    {180, Top, Auto, Reverse, {-W + A - 1, 0}},
    {180, Bottom, Right, Horizontal, {-W, 0}},
    {180, Bottom, Right, Vertical, {-W - S, 0}},
    {180, Bottom, Right, Reverse, {W - 2 * A - 3 * S - 1, 0}},
    {270, Top, Left, Reverse, {0, -W + A - 1}},
    {270, Top, Right, Horizontal, {-H, 0}},
    {270, Top, Right, Vertical, {-H, S + 1}},
    {270, Top, Right, Reverse, {-H, -2 * W + 2 * A + 3 * S + 2}},
    {270, Bottom, Right, Horizontal, {-W, 0}},
    {270, Bottom, Right, Vertical, {-W - S, 0}},
    {270, Bottom, Right, Reverse, {W - 2 * A - 3 * S - 1, 0}},
};
// clang-format on
static_assert(std::size(TextFactorRows) == 27);

}  // namespace

ZplPoint GenerateLocalTextJustificationFactor(ZplOrientation orientation, Baseline baseline,
                                              Justification justification, Direction direction, int height, int width,
                                              int averageWidth, int tail, int spacing) {
    for (auto const& row : TextFactorRows) {
        if (row.orientation == static_cast<int>(orientation) && row.baseline == baseline &&
            row.justification == justification && row.direction == direction)
            return row.factor(
                {.width = width, .height = height, .tail = tail, .averageWidth = averageWidth, .spacing = spacing});
    }
    return {};
}

std::pair<ZplPoint, ZplPoint> GenerateTextRenderPoints(ZplOrientation orientation, Baseline baseline,
                                                       Justification justification, Direction direction, int ascent,
                                                       int descent, int width, int height, int tail, int extra,
                                                       int averageWidth, int spacing) {
    FieldMeasures const measures{width, height, ascent, descent, tail, extra, averageWidth, spacing};
    for (auto const& row : TextPointRows) {
        if (row.justification == justification && row.orientation == static_cast<int>(orientation) &&
            row.baseline == baseline && row.direction == direction)
            return {row.render(measures), row.next(measures)};
    }
    return {};
}

}  // namespace ZplCore::Rendering
