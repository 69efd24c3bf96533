#pragma once

#include <array>
#include <cstdint>

#include "fields/placement/Geometry.h"

/// The language of the placement tables: sums of multiples of the measures of a field, as `2 * W - A + 1`, so that a
/// row of code reads like a row on paper.
namespace ZplCore::Rendering {

/// The measures of a field in dots, in the order of the formulas' letters below.
struct FieldMeasures {
    int width = 0;
    int height = 0;
    int ascent = 0;
    int descent = 0;
    int tail = 0;
    int extra = 0;
    int averageWidth = 0;
    int spacing = 0;
};

class Formula {
public:
    // A plain number is a formula: rows read as {0, H - 1}.
    constexpr Formula(int constant) : constant_(static_cast<std::int8_t>(constant)) {}  // NOLINT

    static constexpr Formula Measure(std::size_t index) {
        Formula result(0);
        result.factors_[index] = 1;
        return result;
    }

    friend constexpr Formula operator+(Formula a, Formula const& b) { return a.Add(b, 1); }
    friend constexpr Formula operator-(Formula a, Formula const& b) { return a.Add(b, -1); }
    friend constexpr Formula operator-(Formula const& a) { return Formula(0) - a; }
    friend constexpr Formula operator*(int factor, Formula const& a) { return Formula(0).Add(a, factor); }

    constexpr int operator()(FieldMeasures const& m) const {
        std::array const values{m.width, m.height, m.ascent, m.descent, m.tail, m.extra, m.averageWidth, m.spacing};
        int sum = constant_;
        for (std::size_t i = 0; i < values.size(); ++i) sum = WrapAdd(sum, WrapMultiply(factors_[i], values[i]));
        return sum;
    }

private:
    constexpr Formula& Add(Formula const& other, int factor) {
        for (std::size_t i = 0; i < factors_.size(); ++i)
            factors_[i] = static_cast<std::int8_t>(factors_[i] + factor * other.factors_[i]);
        constant_ = static_cast<std::int8_t>(constant_ + factor * other.constant_);
        return *this;
    }

    std::array<std::int8_t, 8> factors_{};
    std::int8_t constant_ = 0;
};

struct PointFormula {
    Formula x;
    Formula y;

    constexpr ZplPoint operator()(FieldMeasures const& m) const { return {x(m), y(m)}; }
};

/// The letters of the tables.
namespace Letters {
inline constexpr Formula W = Formula::Measure(0);  // width of the text or symbol
inline constexpr Formula H = Formula::Measure(1);  // its height
inline constexpr Formula U = Formula::Measure(2);  // ascent: rows up from the baseline
inline constexpr Formula D = Formula::Measure(3);  // descent
inline constexpr Formula T = Formula::Measure(4);  // tail: a part of the average character width
inline constexpr Formula X = Formula::Measure(5);  // extra shift of some text right of its origin
inline constexpr Formula A = Formula::Measure(6);  // average character width
inline constexpr Formula S = Formula::Measure(7);  // spacing between characters
}  // namespace Letters

}  // namespace ZplCore::Rendering
