#include "printengine/src/page/DeflateBlocks.h"

#include <algorithm>
#include <bit>
#include <cstring>

#include "printengine/src/page/PrefixCode.h"

namespace PrintEngine::Pages {

namespace {

// Symbols and their further bits: RFC 1951, 3.2.5.
constexpr std::size_t EndOfBlock = 256;
constexpr std::size_t FirstLength = 257;
constexpr std::size_t LengthSymbols = 29;
constexpr std::size_t MostSymbols = 288;  // of literals and lengths, two of them unused
constexpr std::size_t DistanceSymbols = 30;
constexpr std::array<std::uint16_t, LengthSymbols> LengthBases = {
    3, 4, 5, 6, 7, 8, 9, 10, 11, 13, 15, 17, 19, 23, 27, 31, 35, 43, 51, 59, 67, 83, 99, 115, 131, 163, 195, 227, 258};
constexpr std::array<std::uint8_t, LengthSymbols> LengthFurtherBits = {0, 0, 0, 0, 0, 0, 0, 0, 1, 1, 1, 1, 2, 2, 2,
                                                                       2, 3, 3, 3, 3, 4, 4, 4, 4, 5, 5, 5, 5, 0};
constexpr int LongestCode = 15;

/// Of each length of a match, from the shortest, less FirstLength.
constexpr auto LengthSymbolOf = [] {
    std::array<std::uint8_t, 256> symbols{};
    std::size_t symbol = 0;
    for (std::size_t i = 0; i < symbols.size(); ++i) {
        while (symbol + 1 < LengthSymbols && LengthBases[symbol + 1] <= i + DeflateBlocks::ShortestMatch) ++symbol;
        symbols[i] = static_cast<std::uint8_t>(symbol);
    }
    return symbols;
}();

// How the lengths of the codes are told: 3.2.7.
constexpr std::size_t LengthKinds = 19;
constexpr int LongestKindCode = 7;
constexpr std::uint8_t RepeatLength = 16;   // 3 to 6 times the one before, two further bits
constexpr std::uint8_t ZerosByThree = 17;   // 3 to 10 zeros, three further bits
constexpr std::uint8_t ZerosByEleven = 18;  // 11 to 138 zeros, seven further bits
constexpr std::array<std::uint8_t, LengthKinds> KindOrder = {16, 17, 18, 0, 8,  7, 9,  6, 10, 5,
                                                             11, 4,  12, 3, 13, 2, 14, 1, 15};

/// Bits for a stream, the first one lowest, and their number above them.
constexpr unsigned CountShift = 56;
constexpr std::uint64_t OnlyBits = (std::uint64_t{1} << CountShift) - 1;

/// The symbol of a distance, and what is told besides to find it.
struct Distance {
    explicit Distance(std::size_t distance) : symbol(distance - 1) {
        if (distance <= 4) return;
        furtherBits = static_cast<unsigned>(std::bit_width(distance - 1)) - 2;
        symbol = 2 * furtherBits + ((distance - 1) >> furtherBits);
        further = (distance - 1) & ((std::size_t{1} << furtherBits) - 1);
    }
    std::size_t symbol;
    unsigned furtherBits = 0;
    std::uint64_t further = 0;
};

/// The lengths of the fixed codes: 3.2.6.
constexpr auto FixedLengths = [] {
    std::array<std::uint8_t, MostSymbols> lengths{};
    for (std::size_t i = 0; i < MostSymbols; ++i) lengths[i] = i < 144 ? 8 : i < 256 ? 9 : i < 280 ? 7 : 8;
    return lengths;
}();

}  // namespace

/// The codes of a block, by the lengths of them. Distances stand behind literals and lengths.
struct DeflateBlocks::Codes {
    std::array<std::uint32_t, MostSymbols> counts{};
    std::array<std::uint32_t, DistanceSymbols> distanceCounts{};
    std::array<std::uint8_t, MostSymbols> lengths{};
    std::array<std::uint8_t, DistanceSymbols> distanceLengths{};

    Codes(std::span<Step const> steps, std::size_t rowBytes) {
        // Twice, as one count would wait for the other where a step comes again at once.
        std::array<std::array<std::uint32_t, StepKinds>, 2> halves{};
        std::size_t const pairs = steps.size() / 2;
        for (std::size_t i = 0; i < pairs; ++i) {
            ++halves[0][steps[2 * i]];
            ++halves[1][steps[2 * i + 1]];
        }
        if (steps.size() % 2 != 0) ++halves[0][steps.back()];
        auto& kinds = halves[0];
        for (std::size_t i = 0; i < StepKinds; ++i) kinds[i] += halves[1][i];
        std::copy_n(kinds.begin(), std::size_t{FirstRun}, counts.begin());
        counts[EndOfBlock] = 1;
        std::size_t const above = Distance(rowBytes).symbol;
        for (std::size_t i = 0; i < MatchLengths; ++i) {
            counts[FirstLength + LengthSymbolOf[i]] += kinds[FirstRun + i] + kinds[FirstLikeAbove + i];
            distanceCounts[0] += kinds[FirstRun + i];
            distanceCounts[above] += kinds[FirstLikeAbove + i];
        }
        MakeCodeLengths(std::span(counts).first(FirstLength + LengthSymbols), LongestCode, lengths);
        MakeCodeLengths(distanceCounts, LongestCode, distanceLengths);
    }
    /// Bits that the symbols take, without the further ones.
    std::size_t Cost() const {
        std::size_t bits = 0;
        for (std::size_t i = 0; i < MostSymbols; ++i) bits += std::size_t{counts[i]} * lengths[i];
        for (std::size_t i = 0; i < DistanceSymbols; ++i) bits += std::size_t{distanceCounts[i]} * distanceLengths[i];
        return bits;
    }
    /// Takes the fixed ones instead.
    void Fix() {
        constexpr std::uint8_t DistanceBits = 5;
        lengths = FixedLengths;
        distanceLengths.fill(DistanceBits);
    }
};

/// What tells the lengths of the codes of a block.
struct DeflateBlocks::Header {
    struct Entry {
        std::uint8_t kind;
        std::uint8_t further;
    };
    std::array<Entry, MostSymbols + DistanceSymbols> entries;
    std::size_t entryCount = 0;
    std::size_t lengthCount;
    std::size_t distanceCount;
    std::array<std::uint32_t, LengthKinds> counts{};
    std::array<std::uint8_t, LengthKinds> kindLengths{};
    std::size_t toldKinds = LengthKinds;

    explicit Header(Codes const& codes) {
        auto const used = [](auto const& lengths, std::size_t least) {
            std::size_t count = lengths.size();
            while (count > least && lengths[count - 1] == 0) --count;
            return count;
        };
        lengthCount = used(codes.lengths, FirstLength);
        distanceCount = used(codes.distanceLengths, 1);
        std::array<std::uint8_t, MostSymbols + DistanceSymbols> all;
        auto const end = std::copy_n(codes.lengths.begin(), lengthCount, all.begin());
        std::copy_n(codes.distanceLengths.begin(), distanceCount, end);
        Pack(std::span(all).first(lengthCount + distanceCount));
        MakeCodeLengths(counts, LongestKindCode, kindLengths);
        while (toldKinds > 4 && kindLengths[KindOrder[toldKinds - 1]] == 0) --toldKinds;
    }
    void Pack(std::span<std::uint8_t const> lengths) {
        for (std::size_t at = 0; at < lengths.size();) {
            std::uint8_t const length = lengths[at];
            std::size_t same = 1;
            while (at + same < lengths.size() && lengths[at + same] == length) ++same;
            at += same;
            if (length != 0) {
                Add(length, 0);
                --same;
            }
            while (same >= 3) {
                std::size_t const most = length != 0 ? 6 : same > 10 ? 138 : 10;
                std::size_t const least = most == 138 ? 11 : 3;
                std::size_t const taken = std::min(same, most);
                Add(length != 0  ? RepeatLength
                    : least == 3 ? ZerosByThree
                                 : ZerosByEleven,
                    static_cast<std::uint8_t>(taken - least));
                same -= taken;
            }
            while (same-- > 0) Add(length, 0);
        }
    }
    void Add(std::uint8_t kind, std::uint8_t further) {
        entries[entryCount++] = {kind, further};
        ++counts[kind];
    }
    static unsigned FurtherBits(std::uint8_t kind) {
        return kind == RepeatLength ? 2 : kind == ZerosByThree ? 3 : kind == ZerosByEleven ? 7 : 0;
    }
    /// Bits that it takes.
    std::size_t Cost() const {
        std::size_t bits = 14 + 3 * toldKinds;
        for (std::size_t i = 0; i < LengthKinds; ++i)
            bits += counts[i] * (std::size_t{kindLengths[i]} + FurtherBits(static_cast<std::uint8_t>(i)));
        return bits;
    }
};

void DeflateBlocks::Start(std::size_t rowBytes) {
    rowBytes_ = rowBytes;
    steps_.resize(StepsInBlock + 2 * MostLiterals);
    stepCount_ = size_ = openBits_ = openBitCount_ = 0;
}

void DeflateBlocks::PutMatch(Step first, std::size_t length) {
    while (length != 0) {
        // What is left must be enough for a match too.
        bool const isRest = length <= LongestMatch;
        std::size_t const taken = isRest ? length : std::min(LongestMatch, length - ShortestMatch);
        steps_[stepCount_++] = static_cast<Step>(first + taken - ShortestMatch);
        length -= taken;
        if (stepCount_ >= StepsInBlock) EndBlock(false);
    }
}

std::string_view DeflateBlocks::Finish() {
    EndBlock(true);
    // The bits of the last byte are there already.
    return std::string_view(stream_).substr(0, size_ + (openBitCount_ != 0 ? 1 : 0));
}

inline void DeflateBlocks::BitSink::Write(std::uint64_t more, unsigned moreCount) {
    bits |= more << count;
    count += moreCount;
    std::uint64_t const word = std::endian::native == std::endian::little ? bits : __builtin_bswap64(bits);
    std::memcpy(at, &word, sizeof word);
    at += count / 8;
    bits >>= count & ~7U;
    count %= 8;
}

/// Writes the steps since the last block as one.
void DeflateBlocks::EndBlock(bool isLast) {
    enum : unsigned { FixedCodes = 1, CountedCodes = 2 };  // 3.2.3
    Codes codes({steps_.data(), stepCount_}, rowBytes_);
    Header const header(codes);
    std::size_t const counted = codes.Cost() + header.Cost();
    Codes fixed = codes;
    fixed.Fix();
    bool const isFixed = fixed.Cost() <= counted;
    // Further bits: at most 18 a match.
    std::size_t const most = std::min(counted, fixed.Cost()) / 8 + stepCount_ * 3 + 64;
    stream_.resize(std::max(stream_.size(), size_ + most));
    BitSink sink{stream_.data() + size_, openBits_, openBitCount_};
    sink.Write((isFixed ? FixedCodes : CountedCodes) << 1 | (isLast ? 1 : 0), 3);
    if (!isFixed) sink = WriteHeader(sink, header);
    sink = WriteSteps(sink, isFixed ? fixed : codes);
    size_ = static_cast<std::size_t>(sink.at - stream_.data());
    openBits_ = sink.bits;
    openBitCount_ = sink.count;
    stepCount_ = 0;
}

DeflateBlocks::BitSink DeflateBlocks::WriteHeader(BitSink sink, Header const& header) {
    sink.Write(header.lengthCount - FirstLength, 5);
    sink.Write(header.distanceCount - 1, 5);
    sink.Write(header.toldKinds - 4, 4);
    for (std::size_t i = 0; i < header.toldKinds; ++i) sink.Write(header.kindLengths[KindOrder[i]], 3);
    std::array<std::uint16_t, LengthKinds> kindCodes{};
    MakeCodes(header.kindLengths, kindCodes);
    for (auto const [kind, further] : std::span(header.entries).first(header.entryCount)) {
        sink.Write(kindCodes[kind], header.kindLengths[kind]);
        sink.Write(further, Header::FurtherBits(kind));
    }
    return sink;
}

DeflateBlocks::BitSink DeflateBlocks::WriteSteps(BitSink sink, Codes const& codes) const {
    std::array<std::uint16_t, MostSymbols> symbols{};
    std::array<std::uint16_t, DistanceSymbols> distances{};
    MakeCodes(codes.lengths, symbols);
    MakeCodes(codes.distanceLengths, distances);

    // Each step's bits in one piece: at most 15 + 5 for the length and 15 + 13 for the distance.
    std::array<std::uint64_t, StepKinds> pieces;
    auto const piece = [](std::uint64_t bits, std::uint64_t count) { return bits | count << CountShift; };
    for (std::size_t i = 0; i < FirstRun; ++i) pieces[i] = piece(symbols[i], codes.lengths[i]);
    Distance const above(rowBytes_);
    for (std::size_t i = 0; i < MatchLengths; ++i) {
        std::size_t const symbol = LengthSymbolOf[i];
        std::uint64_t bits = symbols[FirstLength + symbol];
        unsigned count = codes.lengths[FirstLength + symbol];
        bits |= (i + ShortestMatch - LengthBases[symbol]) << count;
        count += LengthFurtherBits[symbol];
        pieces[FirstRun + i] = piece(bits | std::uint64_t{distances[0]} << count, count + codes.distanceLengths[0]);
        bits |= std::uint64_t{distances[above.symbol]} << count;
        count += codes.distanceLengths[above.symbol];
        pieces[FirstLikeAbove + i] = piece(bits | above.further << count, count + above.furtherBits);
    }
    for (std::size_t i = 0; i < stepCount_; ++i) {
        std::uint64_t bits = pieces[steps_[i]];
        auto count = static_cast<unsigned>(bits >> CountShift);
        bits &= OnlyBits;
        // Two at once, if they are short, as literals are.
        std::uint64_t const next = i + 1 < stepCount_ ? pieces[steps_[i + 1]] : ~OnlyBits;
        if (count + (next >> CountShift) <= CountShift) {
            bits |= (next & OnlyBits) << count;
            count += static_cast<unsigned>(next >> CountShift);
            ++i;
        }
        sink.Write(bits, count);
    }
    sink.Write(symbols[EndOfBlock], codes.lengths[EndOfBlock]);
    return sink;
}

}  // namespace PrintEngine::Pages
