#include "printengine/src/barcode/DataMatrixPlacement.h"

#include <array>

namespace Barcode::Encoder {

namespace {

struct Offset {
    int row;
    int column;
};

/// The eight modules of a codeword, the most significant bit first, from the module of its least significant bit.
constexpr Offset Utah[8] = {{-2, -2}, {-2, -1}, {-1, -2}, {-1, -1}, {-1, 0}, {0, -2}, {0, -1}, {0, 0}};

class Placement {
public:
    Placement(std::vector<std::uint8_t> const& codewords, unsigned rows, unsigned columns)
        : codewords_(codewords),
          rows_(static_cast<int>(rows)),
          columns_(static_cast<int>(columns)),
          modules_(std::size_t{rows} * columns, Unplaced) {
        for (std::size_t i = 0; i < utah_.size(); ++i) utah_[i] = Utah[i].row * columns_ + Utah[i].column;
    }

    std::vector<std::uint8_t> Run() {
        int row = 4;
        int column = 0;
        do {
            PlaceCorners(row, column);
            // Up and to the right.
            do {
                if (row < rows_ && column >= 0 && !IsPlaced(row, column)) PlaceUtah(row, column);
                row -= 2;
                column += 2;
            } while (row >= 0 && column < columns_);
            row += 1;
            column += 3;
            // Down and to the left.
            do {
                if (row >= 0 && column < columns_ && !IsPlaced(row, column)) PlaceUtah(row, column);
                row += 2;
                column -= 2;
            } while (row < rows_ && column >= 0);
            row += 3;
            column += 1;
        } while (row < rows_ || column < columns_);
        // What is left in the lower right corner is a fixed pattern.
        if (!IsPlaced(rows_ - 1, columns_ - 1)) {
            Set(rows_ - 1, columns_ - 1, 1);
            Set(rows_ - 1, columns_ - 2, 0);
            Set(rows_ - 2, columns_ - 1, 0);
            Set(rows_ - 2, columns_ - 2, 1);
        }
        return std::move(modules_);
    }

private:
    static constexpr std::uint8_t Unplaced = 2;

    std::uint8_t& At(int row, int column) { return modules_[static_cast<std::size_t>(row * columns_ + column)]; }
    bool IsPlaced(int row, int column) { return At(row, column) != Unplaced; }
    void Set(int row, int column, unsigned dark) { At(row, column) = static_cast<std::uint8_t>(dark); }

    /// What is placed next; white behind the last one.
    unsigned Codeword() const { return next_ < codewords_.size() ? codewords_[next_] : 0U; }
    unsigned Bit(int index) const { return Codeword() >> (7 - index) & 1U; }

    void PlaceUtah(int row, int column) {
        if (row >= 2 && column >= 2) {
            std::uint8_t* const module = &At(row, column);
            unsigned bits = Codeword();
            for (std::size_t i = utah_.size(); i-- > 0; bits >>= 1) module[utah_[i]] = bits & 1U;
            ++next_;
            return;
        }
        for (int i = 0; i < 8; ++i) {
            int r = row + Utah[i].row;
            int c = column + Utah[i].column;
            // What would stand above or left of the symbol stands at its other end, aside by as much as makes the
            // diagonals meet.
            if (r < 0) {
                r += rows_;
                c += 4 - (rows_ + 4) % 8;
            }
            if (c < 0) {
                c += columns_;
                r += 4 - (columns_ + 4) % 8;
            }
            Set(r, c, Bit(i));
        }
        ++next_;
    }

    /// Negative places count from the end.
    void PlaceCorner(Offset const (&places)[8]) {
        for (int i = 0; i < 8; ++i) {
            Set(places[i].row < 0 ? rows_ + places[i].row : places[i].row,
                places[i].column < 0 ? columns_ + places[i].column : places[i].column, Bit(i));
        }
        ++next_;
    }

    void PlaceCorners(int row, int column) {
        static constexpr Offset First[8] = {{-1, 0}, {-1, 1}, {-1, 2}, {0, -2}, {0, -1}, {1, -1}, {2, -1}, {3, -1}};
        static constexpr Offset Second[8] = {{-3, 0}, {-2, 0}, {-1, 0}, {0, -4}, {0, -3}, {0, -2}, {0, -1}, {1, -1}};
        static constexpr Offset Third[8] = {{-3, 0}, {-2, 0}, {-1, 0}, {0, -2}, {0, -1}, {1, -1}, {2, -1}, {3, -1}};
        static constexpr Offset Fourth[8] = {{-1, 0}, {-1, -1}, {0, -3}, {0, -2}, {0, -1}, {1, -3}, {1, -2}, {1, -1}};
        if (row == rows_ && column == 0) PlaceCorner(First);
        if (row == rows_ - 2 && column == 0 && columns_ % 4 != 0) PlaceCorner(Second);
        if (row == rows_ - 2 && column == 0 && columns_ % 8 == 4) PlaceCorner(Third);
        if (row == rows_ + 4 && column == 2 && columns_ % 8 == 0) PlaceCorner(Fourth);
    }

    std::vector<std::uint8_t> const& codewords_;
    int rows_;
    int columns_;
    std::vector<std::uint8_t> modules_;  ///< row by row
    std::array<int, 8> utah_{};          ///< how far the modules of a codeword are from its last one in them
    std::size_t next_ = 0;
};

}  // namespace

std::vector<std::uint8_t> PlaceDataMatrix(std::vector<std::uint8_t> const& codewords, unsigned rows, unsigned columns) {
    return Placement(codewords, rows, columns).Run();
}

}  // namespace Barcode::Encoder
