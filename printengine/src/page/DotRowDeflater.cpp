#include "printengine/src/page/DotRowDeflater.h"

#include <libdeflate.h>

#include <algorithm>
#include <bit>
#include <cstring>
#include <string_view>
#include <utility>

namespace PrintEngine::Pages {

namespace {

constexpr std::size_t WordBytes = 8;
constexpr std::size_t ShortestMatch = DeflateBlocks::ShortestMatch;

/// Eight bytes, the first one lowest.
std::uint64_t Load(std::uint8_t const* bytes) {
    std::uint64_t word = 0;
    std::memcpy(&word, bytes, sizeof word);
    return std::endian::native == std::endian::little ? word : __builtin_bswap64(word);
}

/// How many bytes from two places on are equal, at most `most`; up to seven more are read.
std::size_t EqualBytes(std::uint8_t const* one, std::uint8_t const* other, std::size_t most) {
    std::size_t count = 0;
    for (; count < most; count += WordBytes) {
        std::uint64_t const difference = Load(one + count) ^ Load(other + count);
        if (difference != 0) return std::min(most, count + static_cast<std::size_t>(std::countr_zero(difference)) / 8);
    }
    return most;
}

/// Marks the bytes of a word that are 0 with two more such bytes behind them. For the last two of a word it is not
/// known.
std::uint64_t ThreeZeros(std::uint64_t word) {
    constexpr std::uint64_t LowBits = 0x7F7F7F7F7F7F7F7F;
    std::uint64_t const zeros = ~(((word & LowBits) + LowBits) | word | LowBits);
    return zeros & zeros >> 8 & zeros >> 16;
}
constexpr std::size_t KnownBytes = 6;

/// Check sums of few bytes take nearly as long as those of many. This much stays at hand.
constexpr std::size_t SummedBytes = 4096;

/// So many are never worth another try.
constexpr std::size_t FewLiterals = 4096;

}  // namespace

void DotRowDeflater::Start(std::size_t rowBytes) {
    rowBytes_ = rowBytes;
    std::size_t const rows = std::max<std::size_t>(2, SummedBytes / rowBytes);
    rows_.assign(rows * rowBytes + WordBytes, 0);
    above_ = rows_.data();
    row_ = unsummed_ = above_ + rowBytes;
    end_ = above_ + rows * rowBytes;
    blocks_.Start(rowBytes);
    isFirst_ = true;
    likeAbove_ = edge_ = byteCount_ = literals_ = strays_ = 0;
    sum_ = 1;
}

void DotRowDeflater::Add() {
    TakeRow();
    byteCount_ += rowBytes_;
    isFirst_ = false;
    above_ = std::exchange(row_, row_ + rowBytes_);
    if (row_ != end_) return;
    SumRows();
    std::copy(above_, row_, rows_.begin());
    above_ = rows_.data();
    row_ = unsummed_ = above_ + rowBytes_;
}

/// Adds the rows taken since the last time to the check sum.
void DotRowDeflater::SumRows() {
    sum_ = libdeflate_adler32(sum_, unsummed_, static_cast<std::size_t>(row_ - unsummed_));
    unsummed_ = row_;
}

void DotRowDeflater::Repeat(std::size_t count) {
    if (count == 0) return;
    SumRows();
    SumLikeLast(count);
    byteCount_ += count * rowBytes_;
    likeAbove_ += count * rowBytes_;
    if (likeAbove_ >= ShortestMatch) return;
    // Rows of two bytes are shorter than a match.
    blocks_.PutLiterals(above_, std::exchange(likeAbove_, 0));
}

/// Adds `count` rows like the last one to the check sum: the first half grows by that of a row each time, and the
/// second one by the first for each byte.
void DotRowDeflater::SumLikeLast(std::size_t count) {
    constexpr std::uint64_t Modulus = 65521;
    std::uint64_t const times = count % Modulus;
    std::uint64_t const pairs = (count % 2 == 0 ? count / 2 * (count - 1) : (count - 1) / 2 * count) % Modulus;
    std::uint32_t const rowSum = libdeflate_adler32(1, above_, rowBytes_);
    std::uint64_t const rowA = (rowSum & 0xFFFF) + Modulus - 1;
    std::uint64_t const rowB = (rowSum >> 16) + Modulus - rowBytes_;
    std::uint64_t const sumA = sum_ & 0xFFFF;
    std::uint64_t const sumB = (sum_ >> 16) + times * rowB + rowBytes_ * ((times * sumA + pairs * rowA) % Modulus);
    sum_ = static_cast<std::uint32_t>(sumB % Modulus << 16 | (sumA + times * rowA) % Modulus);
}

void DotRowDeflater::TakeRow() {
    std::size_t at = 0;
    if (likeAbove_ != 0) {
        at = EqualBytes(row_, above_, rowBytes_);
        likeAbove_ += at;
        if (at == rowBytes_) return;
        blocks_.PutLikeAbove(std::exchange(likeAbove_, 0));
    }
    TakeBytes(at);
}

inline void DotRowDeflater::TakeLiterals(std::size_t at, std::size_t count) {
    constexpr std::size_t LongestEdge = 16;
    blocks_.PutLiterals(row_ + at, count);
    literals_ += count;
    edge_ += count;
    if (edge_ > LongestEdge) strays_ += std::exchange(edge_, LongestEdge) - LongestEdge;
}

/// Takes the row from a byte on. A match with the row above that reaches its end goes on in the next row.
void DotRowDeflater::TakeBytes(std::size_t at) {
    std::uint64_t const differs = isFirst_ ? ~std::uint64_t{0} : 0;
    while (at < rowBytes_) {
        std::uint64_t const here = Load(row_ + at);
        std::uint64_t const likeAbove = ThreeZeros((here ^ Load(above_ + at)) | differs);
        // What stands before the row is no byte of it.
        std::uint64_t const before = at != 0 ? Load(row_ + at - 1) : here << 8 | (~here & 0xFF);
        std::uint64_t const runs = ThreeZeros(here ^ before);
        std::uint64_t const matches = likeAbove | runs;
        std::size_t const literals = std::min(
            matches != 0 ? static_cast<std::size_t>(std::countr_zero(matches)) / 8 : KnownBytes, rowBytes_ - at);
        TakeLiterals(at, literals);
        at += literals;
        std::uint64_t const first = matches & -matches;
        if (matches != 0) at += TakeMatch(at, (likeAbove & first) != 0, (runs & first) != 0);
    }
}

/// Takes a match, of which it is known what kinds there are unless the row ends before; gives its length.
inline std::size_t DotRowDeflater::TakeMatch(std::size_t at, bool isLikeAbove, bool isRun) {
    std::size_t const left = rowBytes_ - at;
    if (left < ShortestMatch) {
        TakeLiterals(at, left);
        return left;
    }
    edge_ = 0;
    std::size_t const likeAbove = isLikeAbove ? EqualBytes(row_ + at, above_ + at, left) : 0;
    std::size_t const run = isRun ? EqualBytes(row_ + at, row_ + at - 1, left) : 0;
    // The distance of a run is told in no further bits.
    if (isRun && run + 2 >= likeAbove) {
        blocks_.PutRun(run);
        return run;
    }
    if (likeAbove == left)
        likeAbove_ = likeAbove;
    else
        blocks_.PutLikeAbove(likeAbove);
    return likeAbove;
}

bool DotRowDeflater::IsPoor() const {
    // Strays take about a byte each. On labels they are next to none of the stream, in photographs nearly all.
    return strays_ > FewLiterals && strays_ * 4 > blocks_.Size();
}

bool DotRowDeflater::IsPoorAtEnd() const {
    // Labels dense with small text have a tenth; a photograph that is screened has more, and none of them strays.
    return IsPoor() || (literals_ > FewLiterals && literals_ * 8 > byteCount_);
}

void DotRowDeflater::Finish(std::string& out) {
    using namespace std::string_view_literals;
    SumRows();
    if (likeAbove_ != 0) blocks_.PutLikeAbove(std::exchange(likeAbove_, 0));
    out += "\x78\x01"sv;  // deflate, a window of 32 KiB, the fastest compression: RFC 1950, 2.2
    out += blocks_.Finish();
    for (int shift = 24; shift >= 0; shift -= 8) out.push_back(static_cast<char>(sum_ >> shift));
}

}  // namespace PrintEngine::Pages
