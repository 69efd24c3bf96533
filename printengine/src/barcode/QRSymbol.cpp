#include "printengine/src/barcode/QRSymbol.h"

#include <algorithm>
#include <array>
#include <bit>
#include <span>
#include <string_view>

#include "printengine/src/barcode/Cells.h"
#include "printengine/src/barcode/ReedSolomon.h"

namespace Barcode::Encoder {

namespace {

constexpr unsigned Levels = 4;
constexpr unsigned MostSide = 177;        // modules
constexpr unsigned FirstWithVersion = 7;  // that tells its version

unsigned LevelIndex(char level) { return static_cast<unsigned>(std::string_view("LMQH").find(level)); }
unsigned SideOf(unsigned version) { return 4 * version + 17; }
unsigned AlignmentLines(unsigned version) { return version == 1 ? 0 : version / 7 + 2; }

// --- Codewords --------------------------------------------------------------------------------------------------

/// How the codewords are divided. The last blocks hold a codeword of data more where they do not come out even.
struct Blocks {
    std::size_t codewords;  ///< of data and checks
    std::size_t count;
    std::size_t checks;  ///< codewords of each
};

/// ISO/IEC 18004, table 9.
Blocks BlocksOf(unsigned version, char level) {
    // clang-format off
    static constexpr std::uint8_t Checks[Levels][MostQRVersion] = {
        { 7, 10, 15, 20, 26, 18, 20, 24, 30, 18, 20, 24, 26, 30, 22, 24, 28, 30, 28, 28,
         28, 28, 30, 30, 26, 28, 30, 30, 30, 30, 30, 30, 30, 30, 30, 30, 30, 30, 30, 30},
        {10, 16, 26, 18, 24, 16, 18, 22, 22, 26, 30, 22, 22, 24, 24, 28, 28, 26, 26, 26,
         26, 28, 28, 28, 28, 28, 28, 28, 28, 28, 28, 28, 28, 28, 28, 28, 28, 28, 28, 28},
        {13, 22, 18, 26, 18, 24, 18, 22, 20, 24, 28, 26, 24, 20, 30, 24, 28, 28, 26, 30,
         28, 30, 30, 30, 30, 28, 30, 30, 30, 30, 30, 30, 30, 30, 30, 30, 30, 30, 30, 30},
        {17, 28, 22, 16, 22, 28, 26, 26, 24, 28, 24, 28, 22, 24, 24, 30, 28, 28, 26, 28,
         30, 24, 30, 30, 30, 30, 30, 30, 30, 30, 30, 30, 30, 30, 30, 30, 30, 30, 30, 30},
    };
    static constexpr std::uint8_t Counts[Levels][MostQRVersion] = {
        { 1,  1,  1,  1,  1,  2,  2,  2,  2,  4,  4,  4,  4,  4,  6,  6,  6,  6,  7,  8,
          8,  9,  9, 10, 12, 12, 12, 13, 14, 15, 16, 17, 18, 19, 19, 20, 21, 22, 24, 25},
        { 1,  1,  1,  2,  2,  4,  4,  4,  5,  5,  5,  8,  9,  9, 10, 10, 11, 13, 14, 16,
         17, 17, 18, 20, 21, 23, 25, 26, 28, 29, 31, 33, 35, 37, 38, 40, 43, 45, 47, 49},
        { 1,  1,  2,  2,  4,  4,  6,  6,  8,  8,  8, 10, 12, 16, 12, 17, 16, 18, 21, 20,
         23, 23, 25, 27, 29, 34, 34, 35, 38, 40, 43, 45, 48, 51, 53, 56, 59, 62, 65, 68},
        { 1,  1,  2,  4,  4,  4,  5,  6,  8,  8, 11, 11, 16, 16, 18, 16, 19, 21, 25, 25,
         25, 34, 30, 32, 35, 37, 40, 42, 45, 48, 51, 54, 57, 60, 63, 66, 70, 74, 77, 81},
    };
    // clang-format on
    // All modules but those of finders, timing, format, alignment patterns (where they stand on the timing, those are
    // counted twice) and version.
    std::size_t const lines = AlignmentLines(version);
    std::size_t modules = (16 * std::size_t{version} + 128) * version + 64;
    if (lines != 0) modules -= (25 * lines - 10) * lines - 55;
    if (version >= FirstWithVersion) modules -= 36;
    unsigned const row = LevelIndex(level);
    return {modules / 8, Counts[row][version - 1], Checks[row][version - 1]};
}

/// The codewords of all blocks in turns: first their data, then their checks.
std::vector<std::uint8_t> Interleaved(std::vector<std::uint8_t> const& data, Blocks const& blocks) {
    constexpr unsigned Polynomial = 0x11D, FirstRoot = 0, MostChecks = 30;
    std::vector<std::uint8_t> result(blocks.codewords);
    std::size_t const least = data.size() / blocks.count;
    std::size_t const shortBlocks = blocks.count - data.size() % blocks.count;
    ReedSolomon<Polynomial, FirstRoot, MostChecks> const code(blocks.checks);
    std::array<std::uint8_t, MostChecks> room{};
    std::span const checks(room.data(), blocks.checks);
    auto const* next = data.data();
    for (std::size_t block = 0; block < blocks.count; ++block) {
        std::span const words(next, least + (block < shortBlocks ? 0 : 1));
        next += words.size();
        for (std::size_t i = 0; i < least; ++i) result[i * blocks.count + block] = words[i];
        if (words.size() > least) result[least * blocks.count + block - shortBlocks] = words.back();
        code.Check(words, 1, checks);
        for (std::size_t i = 0; i < checks.size(); ++i) result[data.size() + i * blocks.count + block] = checks[i];
    }
    return result;
}

// --- Modules ----------------------------------------------------------------------------------------------------

/// The modules that a mask turns over, of each row modulo 12, and in it of each column modulo 6 (ISO/IEC 18004,
/// table 10).
constexpr unsigned MaskRows = 12, MaskColumns = 6;
constexpr bool IsTurned(unsigned mask, unsigned i, unsigned j) {
    switch (mask) {
        case 0: return (i + j) % 2 == 0;
        case 1: return i % 2 == 0;
        case 2: return j % 3 == 0;
        case 3: return (i + j) % 3 == 0;
        case 4: return (i / 2 + j / 3) % 2 == 0;
        case 5: return i * j % 2 + i * j % 3 == 0;
        case 6: return (i * j % 2 + i * j % 3) % 2 == 0;
        default: return ((i + j) % 2 + i * j % 3) % 2 == 0;
    }
}

/// The columns from 0 on that a mask turns over in a row, a bit each.
unsigned TurnedColumns(unsigned mask, unsigned row) {
    constexpr unsigned Masks = 8;
    static constexpr auto Columns = [] {
        std::array<std::array<std::uint8_t, MaskRows>, Masks> columns{};
        for (unsigned m = 0; m < Masks; ++m) {
            for (unsigned i = 0; i < MaskRows; ++i) {
                for (unsigned j = 0; j < MaskColumns; ++j)
                    columns[m][i] = static_cast<std::uint8_t>(columns[m][i] | unsigned{IsTurned(m, i, j)} << j);
            }
        }
        return columns;
    }();
    return Columns[mask][row % MaskRows];
}

/// Appends the remainder of its division by `generator`, a polynomial of degree `checks` over the field of two
/// elements.
constexpr unsigned WithRemainder(unsigned value, unsigned checks, unsigned generator) {
    unsigned rest = value << checks;
    for (int bit = std::bit_width(rest) - 1; bit >= static_cast<int>(checks); bit = std::bit_width(rest) - 1)
        rest ^= generator << (static_cast<unsigned>(bit) - checks);
    return value << checks | rest;
}

/// A symbol under way. Its rows are words, so that a mask turns over 64 modules at a time.
class Canvas {
public:
    explicit Canvas(unsigned version) : version_(version), side_(SideOf(version)) {
        FixOutside();
        DrawFinder(0, 0);
        DrawFinder(0, side_ - FinderSide);
        DrawFinder(side_ - FinderSide, 0);
        DrawTiming();
        DrawAlignment();
        if (version >= FirstWithVersion) DrawVersion();
    }

    /// Both copies, around the finders (ISO/IEC 18004, 7.9).
    void DrawFormat(char level, unsigned mask) {
        constexpr unsigned Codes[Levels] = {1, 0, 3, 2};
        constexpr unsigned Checks = 10, Generator = 0x537, Pattern = 0x5412;
        unsigned const format = WithRemainder(Codes[LevelIndex(level)] << 3 | mask, Checks, Generator) ^ Pattern;
        for (unsigned i = 0; i < 15; ++i) {
            bool const dark = (format >> i & 1) != 0;
            // Down column 8 and to the left on row 8, past the timing; and from the other ends.
            unsigned const along = i < 6 ? i : i < 8 ? i + 1 : 14 - i + (i == 8 ? 1 : 0);
            if (i < 8) {
                Set(along, 8, dark);
                Set(8, side_ - 1 - i, dark);
            } else {
                Set(8, along, dark);
                Set(side_ - 15 + i, 8, dark);
            }
        }
        Set(side_ - 8, 8, true);
    }

    /// Fills what is left by bits, in columns of two modules from the right, up and down in turns.
    void Place(std::vector<std::uint8_t> const& codewords) {
        Bits bits(codewords);
        bool goesUp = true;
        for (unsigned right = side_ - 1; right < side_; right -= 2, goesUp = !goesUp) {
            if (right == TimingLine) --right;
            for (unsigned i = 0; i < side_; ++i) PlacePair(goesUp ? side_ - 1 - i : i, right, bits);
        }
    }

    void Mask(unsigned mask) {
        for (unsigned r = 0; r < side_; ++r) {
            Row& row = dark_[r];
            // A word is not a whole number of periods: the next one begins amid one.
            constexpr unsigned FirstBit = MaskColumns - Lead, NextBit = WordBits % MaskColumns;
            std::uint64_t period = Turned(TurnedColumns(mask, r), FirstBit);
            for (std::size_t w = 0; w < row.size(); ++w, period = Turned(period, NextBit))
                row[w] ^= period * EverySixth & ~fixed_[r][w];
        }
    }

    Model::MatrixBarcodeModel Model() const {
        Model::MatrixBarcodeModel model(side_, side_);
        for (unsigned r = 0; r < side_; ++r) {
            auto& cells = model.GetCells()[r];
            DarkenCells(cells, 0, dark_[r][0] >> Lead);
            for (std::size_t w = 1; w < dark_[r].size(); ++w) DarkenCells(cells, w * WordBits - Lead, dark_[r][w]);
        }
        return model;
    }

private:
    static constexpr unsigned WordBits = 64;
    /// Module c stands at bit c + Lead of its row, the lowest first, so that no pair of columns crosses a word.
    static constexpr unsigned Lead = 1;
    using Row = std::array<std::uint64_t, (MostSide + Lead + WordBits - 1) / WordBits>;

    static constexpr unsigned FinderSide = 7, TimingLine = 6;
    static constexpr std::uint64_t EverySixth = 0x1041041041041041;

    /// The bits of all codewords, and white behind them.
    class Bits {
    public:
        explicit Bits(std::vector<std::uint8_t> const& codewords) : codewords_(codewords) {}

        /// The next `count`, 1 or 2, the first of them the upper one.
        std::uint64_t Take(unsigned count) {
            if (left_ < count) Refill();
            left_ -= count;
            return rest_ >> left_ & ((1U << count) - 1);
        }

    private:
        void Refill() {
            for (; left_ <= WordBits - 8; left_ += 8)
                rest_ = rest_ << 8 | (at_ < codewords_.size() ? codewords_[at_++] : 0U);
        }

        std::vector<std::uint8_t> const& codewords_;
        std::size_t at_ = 0;
        std::uint64_t rest_ = 0;
        unsigned left_ = 0;  ///< how many of its low bits are not taken yet
    };

    static constexpr std::uint64_t Turned(std::uint64_t period, unsigned by) {
        return (period >> by | period << (MaskColumns - by)) & ((1U << MaskColumns) - 1);
    }

    void Set(unsigned row, unsigned column, bool dark) { SetRun(row, column, 1, dark ? 1 : 0); }

    /// Fixes `count` modules from `column` on, the first in the lowest of the bits.
    void SetRun(unsigned row, unsigned column, unsigned count, std::uint64_t bits) {
        std::size_t const word = (column + Lead) / WordBits;
        unsigned const shift = (column + Lead) % WordBits;
        std::uint64_t const all = (std::uint64_t{1} << count) - 1;
        fixed_[row][word] |= all << shift;
        dark_[row][word] = (dark_[row][word] & ~(all << shift)) | bits << shift;
        if (shift + count <= WordBits) return;
        fixed_[row][word + 1] |= all >> (WordBits - shift);
        dark_[row][word + 1] = (dark_[row][word + 1] & ~(all >> (WordBits - shift))) | bits >> (WordBits - shift);
    }

    void PlacePair(unsigned row, unsigned right, Bits& bits) {
        std::size_t const word = (right - 1 + Lead) / WordBits;
        unsigned const shift = (right - 1 + Lead) % WordBits;
        std::uint64_t& dark = dark_[row][word];
        switch (fixed_[row][word] >> shift & 3) {
            case 0: dark |= bits.Take(2) << shift; break;
            case 1: dark |= bits.Take(1) << (shift + 1); break;
            case 2: dark |= bits.Take(1) << shift; break;
            default: break;
        }
    }

    /// What stands beside the modules takes no bits and is not turned over.
    void FixOutside() {
        for (unsigned r = 0; r < side_; ++r) {
            Row& row = fixed_[r];
            std::size_t const last = (side_ + Lead) / WordBits;
            row[0] = (std::uint64_t{1} << Lead) - 1;
            row[last] |= ~std::uint64_t{0} << (side_ + Lead) % WordBits;
            std::fill(row.begin() + static_cast<std::ptrdiff_t>(last) + 1, row.end(), ~std::uint64_t{0});
        }
    }

    void DrawTiming() {
        for (unsigned i = FinderSide + 1; i < side_ - FinderSide - 1; ++i) {
            Set(TimingLine, i, i % 2 == 0);
            Set(i, TimingLine, i % 2 == 0);
        }
    }

    /// With the white around it, and the modules that the format takes.
    void DrawFinder(unsigned top, unsigned left) {
        constexpr std::uint64_t Rows[FinderSide] = {0x7F, 0x41, 0x5D, 0x5D, 0x5D, 0x41, 0x7F};
        unsigned const lead = left == 0 ? 0 : 1;
        auto const draw = [&](unsigned row, std::uint64_t dark) {
            SetRun(row, left - lead, FinderSide + 2 - lead, dark << lead);
        };
        for (unsigned r = 0; r < FinderSide; ++r) draw(top + r, Rows[r]);
        draw(top == 0 ? FinderSide : top - 1, 0);
        if (top == 0) draw(FinderSide + 1, 0);
    }

    /// Where the lines that are evenly apart cross, but in the corners of the finders (ISO/IEC 18004, annex E).
    void DrawAlignment() {
        unsigned const lines = AlignmentLines(version_);
        if (lines == 0) return;
        constexpr unsigned Uneven = 32;
        unsigned const step = version_ == Uneven ? 26 : (version_ * 4 + lines * 2 + 1) / (lines * 2 - 2) * 2;
        unsigned const last = side_ - 7;
        auto const place = [&](unsigned line) { return line == 0 ? TimingLine : last - (lines - 1 - line) * step; };
        for (unsigned i = 0; i < lines; ++i) {
            for (unsigned j = 0; j < lines; ++j) {
                bool const isFinder = (i == 0 && (j == 0 || j == lines - 1)) || (i == lines - 1 && j == 0);
                if (!isFinder) DrawAlignmentPattern(place(i), place(j));
            }
        }
    }

    void DrawAlignmentPattern(unsigned row, unsigned column) {
        constexpr std::uint64_t Rows[] = {0x1F, 0x11, 0x15, 0x11, 0x1F};
        for (unsigned r = 0; r < 5; ++r) SetRun(row - 2 + r, column - 2, 5, Rows[r]);
    }

    /// Both copies, beside the finders (ISO/IEC 18004, 7.10).
    void DrawVersion() {
        constexpr unsigned Checks = 12, Generator = 0x1F25;
        unsigned const bits = WithRemainder(version_, Checks, Generator);
        for (unsigned i = 0; i < 18; ++i) {
            bool const dark = (bits >> i & 1) != 0;
            Set(i / 3, side_ - 11 + i % 3, dark);
            Set(side_ - 11 + i % 3, i / 3, dark);
        }
    }

    unsigned version_;
    unsigned side_;
    std::array<Row, MostSide> dark_{};
    std::array<Row, MostSide> fixed_{};  ///< modules that hold no data
};

}  // namespace

std::size_t QRCapacity(QRShape const& shape) {
    auto const blocks = BlocksOf(shape.version, shape.level);
    return blocks.codewords - blocks.count * blocks.checks;
}

Model::MatrixBarcodeModel QRSymbol(std::vector<std::uint8_t> const& data, QRShape const& shape) {
    Canvas canvas(shape.version);
    canvas.DrawFormat(shape.level, shape.mask);
    canvas.Place(Interleaved(data, BlocksOf(shape.version, shape.level)));
    canvas.Mask(shape.mask);
    return canvas.Model();
}

}  // namespace Barcode::Encoder
