#include "barcodes/stacked/CodaBlockRows.h"

#include <algorithm>
#include <limits>

namespace ZplCore {

using namespace Barcode::Encoder;

namespace {

constexpr std::size_t A = 0, B = 1, C = 2;
/// In the order of preference where symbols would be equally long.
constexpr std::size_t Subsets[] = {B, A, C};
constexpr int Fnc4[] = {101, 100};
constexpr int ShiftValue = 98;
constexpr std::size_t Far = std::numeric_limits<std::size_t>::max() / 2;

/// The character that switches to a subset; it is the same in both other subsets.
constexpr int SwitchValue(std::size_t subset) { return 101 - static_cast<int>(subset); }

/// The best way to a place in the data with a subset in force.
struct Step {
    enum Kind { Start, Plain, Shift, Pair, Switch, NextRow };
    std::size_t place = Far;  ///< characters used up to here, counted through all rows
    Kind kind = Start;
    std::size_t from = B;  ///< the subset before
};
using Steps = std::array<Step, 3>;

class RowBreaker {
public:
    RowBreaker(std::vector<CodaBlockToken> const& tokens, std::size_t columns)
        : tokens_(tokens), columns_(columns), steps_(tokens.size() + 2) {}

    std::vector<CodaBlockRow> Run() {
        for (Step& step : steps_[0]) step.place = 0;
        for (std::size_t at = 0; at < tokens_.size(); ++at) {
            ChangeSubsets(steps_[at]);
            Take(at);
        }
        return Write(Path());
    }

private:
    struct Move {
        Step::Kind kind;
        std::size_t subset;  ///< in force behind it
        std::size_t token;
    };

    static void Improve(Step& step, std::size_t place, Step::Kind kind, std::size_t from) {
        if (place < step.place) step = {place, kind, from};
    }

    std::size_t RowStart(std::size_t place) const { return (place + columns_ - 1) / columns_ * columns_; }
    /// Behind `width` characters that stay in one row.
    std::size_t Behind(std::size_t place, std::size_t width) const {
        return (place % columns_ + width <= columns_ ? place : RowStart(place)) + width;
    }

    /// A row starts in any subset without a switch, but what is left of the row before is lost.
    void ChangeSubsets(Steps& steps) const {
        Steps const before = steps;
        for (std::size_t const from : Subsets) {
            if (before[from].place == Far) continue;
            for (std::size_t const to : Subsets) {
                Improve(steps[to], RowStart(before[from].place), Step::NextRow, from);
                Improve(steps[to], before[from].place + 1, Step::Switch, from);
            }
        }
    }

    void Take(std::size_t at) {
        CodaBlockToken const& token = tokens_[at];
        for (std::size_t const subset : Subsets) {
            std::size_t const place = steps_[at][subset].place;
            if (token.values[subset] >= 0)
                Improve(steps_[at + 1][subset], Behind(place, token.Width()), Step::Plain, subset);
            bool const isShiftable = subset != C && !token.isExtended && token.values[1 - subset] >= 0;
            if (isShiftable) Improve(steps_[at + 1][subset], Behind(place, 2), Step::Shift, subset);
        }
        bool const isPair = token.digit != 0 && at + 1 < tokens_.size() && tokens_[at + 1].digit != 0;
        if (isPair) Improve(steps_[at + 2][C], steps_[at][C].place + 1, Step::Pair, C);
    }

    std::vector<Move> Path() const {
        std::vector<Move> path;
        std::size_t at = tokens_.size();
        std::size_t subset = B;
        for (std::size_t const end : Subsets) {
            if (steps_[at][end].place < steps_[at][subset].place) subset = end;
        }
        while (steps_[at][subset].kind != Step::Start) {
            Step const& step = steps_[at][subset];
            bool const stays = step.kind == Step::Switch || step.kind == Step::NextRow;
            at -= stays ? 0 : step.kind == Step::Pair ? 2 : 1;
            path.push_back({step.kind, subset, at});
            subset = step.from;
        }
        path.push_back({Step::NextRow, subset, 0});
        std::reverse(path.begin(), path.end());
        return path;
    }

    std::vector<int> ValuesOf(Move const& move) const {
        if (move.kind == Step::Switch) return {SwitchValue(move.subset)};
        CodaBlockToken const& token = tokens_[move.token];
        if (move.kind == Step::Pair) return {(token.digit - '0') * 10 + (tokens_[move.token + 1].digit - '0')};
        if (move.kind == Step::Shift) return {ShiftValue, token.values[1 - move.subset]};
        if (token.isExtended) return {Fnc4[move.subset], token.values[move.subset]};
        return {token.values[move.subset]};
    }

    std::vector<CodaBlockRow> Write(std::vector<Move> const& path) const {
        std::vector<CodaBlockRow> rows;
        for (Move const& move : path) {
            auto const subset = static_cast<CodaBlockSubset>(move.subset);
            if (move.kind == Step::NextRow) {
                rows.push_back({subset, subset, {}});
                continue;
            }
            auto const values = ValuesOf(move);
            if (rows.back().values.size() + values.size() > columns_)
                rows.push_back({rows.back().last, rows.back().last, {}});
            rows.back().values.insert(rows.back().values.end(), values.begin(), values.end());
            rows.back().last = subset;
        }
        return rows;
    }

    std::vector<CodaBlockToken> const& tokens_;
    std::size_t columns_;
    std::vector<Steps> steps_;
};

}  // namespace

std::vector<CodaBlockRow> BreakCodaBlockRows(std::vector<CodaBlockToken> const& tokens, std::size_t columns) {
    return RowBreaker(tokens, columns).Run();
}

}  // namespace ZplCore
