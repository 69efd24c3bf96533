#pragma once

#include <array>
#include <limits>
#include <optional>
#include <vector>

#include "printengine/src/barcode/DataMatrixModes.h"
#include "printengine/src/barcode/DataMatrixTokens.h"

namespace Barcode::Encoder {

/// The ways to switch between the modes of ISO/IEC 16022 that take the fewest codewords.
class DataMatrixWays {
public:
    /// The mode in which a token is taken, and whether it is one with the digit behind it.
    struct Step {
        DataMatrixMode mode;
        std::uint8_t tokens;
    };

    /// The tokens must outlive the object.
    explicit DataMatrixWays(std::vector<DataMatrixToken> const& tokens);

    /// A way that fits in `capacity` codewords, if there is one: how a text may end depends on the room that it leaves.
    std::optional<std::vector<Step>> Into(std::size_t capacity) const;

private:
    static constexpr unsigned Unreached = std::numeric_limits<unsigned>::max() / 2;

    /// How the best way to a mode came there.
    struct Arrival {
        unsigned cost = Unreached;  ///< codewords so far, those of open groups left out
        DataMatrixMode from = DataMatrixMode::Ascii;
        std::uint8_t tokens = 0;  ///< taken by the step; 0 is a change of mode
        std::uint16_t run = 0;    ///< bytes since the length field
    };
    using Arrivals = std::array<Arrival, DataMatrixModeCount>;
    /// Where a way ends; the tokens behind it follow in the mode Tail.
    struct End {
        std::size_t at;
        DataMatrixMode mode;
    };

    void MeasureTail();
    std::size_t TailFrom(std::size_t at) const;
    void LeaveModes(std::size_t at);
    void EnterModes(std::size_t at);
    void TakeAsAscii(std::size_t at);
    void TakeAsBytes(std::size_t at);
    void TakeAsValues(std::size_t at);
    std::optional<End> EndFor(std::size_t capacity) const;
    Arrival& At(std::size_t at, DataMatrixMode mode) { return table_[at][Index(mode)]; }
    unsigned CostAt(std::size_t at, DataMatrixMode mode) const { return table_[at][Index(mode)].cost; }

    std::vector<DataMatrixToken> const& tokens_;
    std::vector<Arrivals> table_;
    std::vector<std::size_t> tail_;  ///< codewords in ASCII of the last tokens, from the last on
};

}  // namespace Barcode::Encoder
