#pragma once

#include <cstddef>
#include <cstdint>
#include <string>
#include <vector>

#include "printengine/src/page/DeflateBlocks.h"

namespace PrintEngine::Pages {

/// Deflates the rows of a page of dots into a zlib stream (RFC 1950).
///
/// On a label a row mostly goes on as the row above it did, or repeats its last byte, which is white; in between stand
/// a few bytes of edges. So only these two kinds of matches are looked for, by comparing eight bytes at once: there are
/// no hashes, no chains and no window. That is an order of magnitude faster than a compressor for all kinds of data,
/// and makes smaller files, as two distances take next to no bits to tell apart.
///
/// Photographs and noise are not such pages: they are better off with a library, and IsPoor and IsPoorAtEnd say so.
class DotRowDeflater {
public:
    static constexpr std::size_t MostRowBytes = DeflateBlocks::FarthestMatch;

    /// Begins a stream of rows of so many bytes, 2 to MostRowBytes.
    void Start(std::size_t rowBytes);
    /// Where the next row is to be written, for Add.
    std::uint8_t* Row() { return row_; }
    /// Takes the row that Row points at.
    void Add();
    /// Takes `count` rows that are like the last one.
    void Repeat(std::size_t count);
    /// Ends the stream and appends it to `out`.
    void Finish(std::string& out);
    /// Whether the rows so far are not what this is good at, and none behind them will change that.
    bool IsPoor() const;
    /// The same, behind the last row.
    bool IsPoorAtEnd() const;

private:
    void SumRows();
    void SumLikeLast(std::size_t count);
    void TakeRow();
    void TakeBytes(std::size_t at);
    std::size_t TakeMatch(std::size_t at, bool isLikeAbove, bool isRun);
    void TakeLiterals(std::size_t at, std::size_t count);

    DeflateBlocks blocks_;
    // One row behind the other. Behind the last one there are bytes that may be read and mean nothing.
    std::vector<std::uint8_t> rows_;
    std::uint8_t* row_ = nullptr;
    std::uint8_t* above_ = nullptr;
    std::uint8_t* unsummed_ = nullptr;  ///< the first row that is not in the check sum yet
    std::uint8_t* end_ = nullptr;       ///< where no further row fits
    std::size_t rowBytes_ = 0;
    bool isFirst_ = true;
    std::size_t likeAbove_ = 0;  ///< bytes before the place under way that are as a row earlier, not put yet
    std::size_t edge_ = 0;       ///< literals since the last match
    std::size_t byteCount_ = 0;  ///< of all rows
    std::size_t literals_ = 0;
    std::size_t strays_ = 0;  ///< literals that are no edge of anything
    std::uint32_t sum_ = 1;   ///< Adler-32 of all rows: RFC 1950, 8.2
};

}  // namespace PrintEngine::Pages
