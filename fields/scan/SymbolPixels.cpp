#include "fields/scan/SymbolPixels.h"

#include <algorithm>
#include <bit>
#include <limits>
#include <utility>
#include <vector>

namespace ZplCore {

using Scripting::PixelBox;
using Scripting::PixelRows;

namespace {

constexpr int WordBits = 64;

bool IsBlack(std::uint64_t const* row, int x) { return (row[x / WordBits] >> (WordBits - 1 - x % WordBits) & 1) != 0; }

/// Sets the pixels of a box to white.
void Clear(PixelRows& rows, PixelBox const& box) {
    PixelBox const part = box.Within(rows.box);
    if (part.IsEmpty()) return;
    std::size_t const words = rows.WordsPerRow();
    int const left = part.left - rows.box.left;
    int const right = part.right - rows.box.left;
    for (int i = left / WordBits; i <= (right - 1) / WordBits; ++i) {
        std::uint64_t mask = ~std::uint64_t{0};
        if (i == left / WordBits) mask >>= left % WordBits;
        if (i == right / WordBits) mask &= ~(~std::uint64_t{0} >> right % WordBits);
        for (int y = part.top - rows.box.top; y < part.bottom - rows.box.top; ++y)
            rows.words[static_cast<std::size_t>(y) * words + static_cast<std::size_t>(i)] &= ~mask;
    }
}

/// Turns black into white and white into black.
void Invert(PixelRows& rows) {
    std::size_t const words = rows.WordsPerRow();
    int const rest = rows.box.Width() % WordBits;
    std::uint64_t const last = rest == 0 ? ~std::uint64_t{0} : ~(~std::uint64_t{0} >> rest);
    for (std::size_t i = 0; i < rows.words.size(); ++i)
        rows.words[i] = ~rows.words[i] & (i % words == words - 1 ? last : ~std::uint64_t{0});
}

std::size_t CountOf(PixelRows const& rows) {
    std::size_t count = 0;
    // Most are none, of which counting takes longer than looking.
    for (auto const word : rows.words) {
        if (word != 0) count += static_cast<std::size_t>(std::popcount(word));
    }
    return count;
}

/// The rows that have a black pixel, and all rows in one.
struct Projection {
    std::vector<std::uint64_t> columns;
    int first = -1;  ///< row with ink
    int last = -1;
    int rows = 0;  ///< with ink

    explicit Projection(PixelRows const& rows_) : columns(rows_.WordsPerRow()) {
        for (int y = 0; y < rows_.box.Height(); ++y) {
            std::uint64_t any = 0;
            for (std::size_t i = 0; i < columns.size(); ++i) {
                any |= rows_.Row(y)[i];
                columns[i] |= rows_.Row(y)[i];
            }
            if (any == 0) continue;
            if (first < 0) first = y;
            last = y;
            ++rows;
        }
    }

    int Columns() const {
        int count = 0;
        for (auto const word : columns) count += std::popcount(word);
        return count;
    }
    int Left() const {
        for (std::size_t i = 0; i < columns.size(); ++i) {
            if (columns[i] != 0) return static_cast<int>(i) * WordBits + std::countl_zero(columns[i]);
        }
        return -1;
    }
    int Right() const {
        for (std::size_t i = columns.size(); i-- > 0;) {
            if (columns[i] != 0) return static_cast<int>(i) * WordBits + WordBits - 1 - std::countr_zero(columns[i]);
        }
        return -1;
    }
};

int LeastRunOfRow(PixelRows const& picture, int y) {
    std::uint64_t const* const row = picture.Row(y);
    int const length = picture.box.Width();
    int least = std::numeric_limits<int>::max();
    int start = 0;
    std::uint64_t before = row[0] >> (WordBits - 1);
    for (int first = 0; first < length; first += WordBits) {
        std::uint64_t const word = row[first / WordBits];
        std::uint64_t edges = word ^ (word >> 1 | before << (WordBits - 1));
        before = word & 1;
        for (; edges != 0; edges &= ~(std::uint64_t{1} << (WordBits - 1) >> std::countl_zero(edges))) {
            int const x = first + std::countl_zero(edges);
            if (x >= length) break;
            least = std::min(least, x - start);
            start = x;
        }
    }
    return std::min(least, length - start);
}

int LeastRunOfColumn(PixelRows const& picture, int x) {
    int const length = picture.box.Height();
    int least = std::numeric_limits<int>::max();
    int start = 0;
    for (int y = 1; y <= length; ++y) {
        if (y < length && IsBlack(picture.Row(y), x) == IsBlack(picture.Row(y - 1), x)) continue;
        least = std::min(least, y - start);
        start = y;
    }
    return least;
}

}  // namespace

PixelBox Strip(PixelBox const& box, Side side, int depth) {
    switch (side) {
        case Side::Left: return {box.left - depth, box.top, box.left, box.bottom};
        case Side::Right: return {box.right, box.top, box.right + depth, box.bottom};
        case Side::Top: return {box.left, box.top - depth, box.right, box.top};
        case Side::Bottom: break;
    }
    return {box.left, box.bottom, box.right, box.bottom + depth};
}

void Mirror(PixelRows& picture) {
    PixelRows mirrored{picture.box, std::vector<std::uint64_t>(picture.words.size()), picture.starts};
    for (int y = 0; y < picture.box.Height(); ++y) {
        std::size_t const start = picture.starts[static_cast<std::size_t>(y)];
        for (int x = 0; x < picture.box.Width(); ++x) {
            if (!IsBlack(picture.Row(y), x)) continue;
            int const to = picture.box.Width() - 1 - x;
            std::uint64_t const bit = std::uint64_t{1} << (WordBits - 1 - to % WordBits);
            mirrored.words[start + static_cast<std::size_t>(to / WordBits)] |= bit;
        }
    }
    picture = std::move(mirrored);
}

int LeastRun(PixelRows const& picture, bool isLevel, int lines) {
    int const breadth = isLevel ? picture.box.Height() : picture.box.Width();
    int least = std::numeric_limits<int>::max();
    for (int line = 0; line < lines; ++line) {
        int const at = (2 * line + 1) * breadth / (2 * lines);
        least = std::min(least, isLevel ? LeastRunOfRow(picture, at) : LeastRunOfColumn(picture, at));
    }
    return least == std::numeric_limits<int>::max() ? 0 : least;
}

Likeness Compare(Scripting::InkGauge const& gauge, PixelRows const& picture, bool isLevel, PixelBox const& besides) {
    Likeness result;
    PixelBox const hidden = besides.Within(picture.box);
    auto const areaOf = [](PixelBox const& box) {
        return static_cast<std::size_t>(box.Width()) * static_cast<std::size_t>(box.Height());
    };
    result.pixels = areaOf(picture.box) - (hidden.IsEmpty() ? 0 : areaOf(hidden));
    result.lines = isLevel ? picture.box.Height() - (hidden.IsEmpty() ? 0 : hidden.Height())
                           : picture.box.Width() - (hidden.IsEmpty() ? 0 : hidden.Width());
    if (gauge.Shows(picture)) return result;
    PixelRows wrong = gauge.InkIn(picture.box);
    auto word = wrong.words.begin();
    for (int y = 0; y < picture.box.Height(); ++y) {
        for (std::size_t i = 0; i < wrong.WordsPerRow(); ++i) *word++ ^= picture.Row(y)[i];
    }
    Clear(wrong, besides);
    result.wrong = CountOf(wrong);
    if (result.wrong == 0) return result;
    result.isInverted = result.wrong * 10 >= result.pixels * 9;
    if (result.isInverted) {
        Invert(wrong);
        Clear(wrong, besides);
        result.wrong = result.pixels - result.wrong;
    }
    Projection const seen(wrong);
    result.wrongLines = isLevel ? seen.rows : seen.Columns();
    result.wrongBox = {picture.box.left + seen.Left(), picture.box.top + seen.first,
                       picture.box.left + seen.Right() + 1, picture.box.top + seen.last + 1};
    return result;
}

int GroundAt(Scripting::InkGauge const& gauge, Look const& look) {
    if (look.depth <= 0) return 0;
    PixelBox const strip = Strip(look.from, look.side, look.depth);
    if (!look.isInverted && gauge.IsWhite(strip)) return look.depth;
    PixelRows rows = gauge.InkIn(strip);
    if (look.isInverted) Invert(rows);
    Clear(rows, look.besides);
    Projection const seen(rows);
    if (seen.rows == 0) return look.depth;
    switch (look.side) {
        case Side::Left: return look.depth - 1 - seen.Right();
        case Side::Right: return seen.Left();
        case Side::Top: return look.depth - 1 - seen.last;
        case Side::Bottom: break;
    }
    return seen.first;
}

}  // namespace ZplCore
