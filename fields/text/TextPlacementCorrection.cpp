#include "fields/text/TextPlacementCorrection.h"

#include <cmath>
#include <iterator>

namespace ZplCore::Sketching {

namespace {

using Dots = std::int64_t;

struct Shift {
    Dots x;
    Dots y;
};

/// The measures by the letters of the rows, which are those of PlacementFormula.h; L is the leading, jx and jy are the
/// uncorrected factor.
struct Letters {
    Dots W, H, U, D, L, A, T, S, jx, jy;
};

Dots Round(double dots) { return std::lround(dots); }

enum class ExtraRule { None, Inverted, BottomUp };

struct CorrectionRow {
    int orientation;
    Direction direction;
    Justification justification;
    Shift (*factor)(Letters const& m);
    ExtraRule extra;
};

constexpr auto Left = Justification::Left;
constexpr auto Right = Justification::Right;
constexpr auto Auto = Justification::Auto;
constexpr auto Horizontal = Direction::Horizontal;
constexpr auto Vertical = Direction::Vertical;
constexpr auto Reverse = Direction::Reverse;

using M = Letters const&;

// Text with a top baseline. Combinations that are not listed keep their factor and have no extra shift.
// clang-format off
constexpr CorrectionRow CorrectionRows[] = {
    {180, Vertical, Left, [](M m) { return Shift{m.A + 2 * m.T, m.T}; }, ExtraRule::Inverted},
    {180, Vertical, Right, [](M m) { return Shift{Round(-2.5 * static_cast<double>(m.A)), 0}; }, ExtraRule::None},
    {180, Vertical, Auto, [](M m) { return Shift{Round(-2.5 * static_cast<double>(m.A)), 0}; }, ExtraRule::None},
    {180, Reverse, Left, [](M m) { return Shift{3 * m.A - m.W, -m.T}; }, ExtraRule::Inverted},
    {180, Horizontal, Right, [](M m) { return Shift{m.jx - 2 * m.T, m.jy}; }, ExtraRule::None},
    {90, Horizontal, Right, [](M m) { return Shift{m.L - m.H, 0}; }, ExtraRule::None},
    {90, Reverse, Right, [](M m) { return Shift{m.jx + m.L, m.jy + m.T}; }, ExtraRule::None},
    {90, Reverse, Left, [](M m) { return Shift{m.jx + Round(-0.85 * static_cast<double>(m.L) / 3), m.jy}; }, ExtraRule::None},
    {270, Reverse, Left, [](M m) { return Shift{m.jx, m.jy + 3 * m.L + m.D + m.T}; }, ExtraRule::BottomUp},
    {270, Reverse, Right, [](M m) { return Shift{m.jx + Round(1.25 * static_cast<double>(m.L)), m.jy}; }, ExtraRule::None},
    {270, Vertical, Left, [](M m) { return Shift{0, m.U}; }, ExtraRule::BottomUp},
    {270, Vertical, Right, [](M m) { return Shift{m.L - m.H, m.T - m.A + m.S}; }, ExtraRule::None},
};
// clang-format on
static_assert(std::size(CorrectionRows) == 12);

int Extra(ExtraRule rule, TextMeasures const& m, unsigned magnificationX) {
    switch (rule) {
        case ExtraRule::Inverted: return static_cast<int>(5 * (m.tail - Dots{magnificationX}));
        case ExtraRule::BottomUp: return m.tail == Dots{magnificationX} ? 0 : static_cast<int>(m.averageWidth - m.tail);
        case ExtraRule::None: break;
    }
    return 0;
}

/// The rule for fonts that keep their factor.
ExtraRule PlainExtraRule(FieldPlacement const& placement, TextRun const& run) {
    if (placement.baseline != Baseline::Top || placement.justification != Left || run.direction == Horizontal)
        return ExtraRule::None;
    if (placement.orientation == ZplOrientation::Inverted) return ExtraRule::Inverted;
    return placement.orientation == ZplOrientation::BottomUp ? ExtraRule::BottomUp : ExtraRule::None;
}

}  // namespace

CorrectedTextPlacement CorrectTextPlacement(FieldPlacement const& placement, TextRun const& run, TextMeasures const& m,
                                            unsigned magnificationX, bool needsGlyphAdjustment,
                                            ZplPoint justification) {
    if (!needsGlyphAdjustment || placement.baseline == Baseline::Bottom ||
        placement.orientation == ZplOrientation::Normal)
        return {justification, Extra(PlainExtraRule(placement, run), m, magnificationX)};
    for (auto const& row : CorrectionRows) {
        if (row.orientation != static_cast<int>(placement.orientation) || row.direction != run.direction ||
            row.justification != placement.justification)
            continue;
        Shift const shift = row.factor({m.width, m.height, m.ascent, m.descent, m.leading, m.averageWidth, m.tail,
                                        run.spacing, justification.x, justification.y});
        return {{static_cast<int>(shift.x), static_cast<int>(shift.y)}, Extra(row.extra, m, magnificationX)};
    }
    return {justification, 0};
}

}  // namespace ZplCore::Sketching
