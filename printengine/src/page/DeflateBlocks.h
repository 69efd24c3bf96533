#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

namespace PrintEngine::Pages {

/// Writes blocks of a deflate stream (RFC 1951) of literal bytes and of matches at two distances: 1, a run of the byte
/// before, and the length of a row. The codes of a block are counted on its steps, or the fixed ones where these are
/// shorter, as they are for next to nothing.
class DeflateBlocks {
public:
    static constexpr std::size_t ShortestMatch = 3;
    static constexpr std::size_t LongestMatch = 258;
    static constexpr std::size_t FarthestMatch = 32768;
    /// The most literals that may be put at once.
    static constexpr std::size_t MostLiterals = 8;

    /// Begins a stream of which nothing is written yet; `rowBytes` is at most FarthestMatch.
    void Start(std::size_t rowBytes);
    /// At most MostLiterals, which may all be read.
    void PutLiterals(std::uint8_t const* bytes, std::size_t count) {
        // That many are taken always: it is done in one go, and the rest is overwritten.
        for (std::size_t i = 0; i < MostLiterals; ++i) steps_[stepCount_ + i] = bytes[i];
        stepCount_ += count;
        if (stepCount_ >= StepsInBlock) EndBlock(false);
    }
    /// A run of the byte before, ShortestMatch or longer.
    void PutRun(std::size_t length) { PutMatch(FirstRun, length); }
    /// As many bytes as stand a row earlier, ShortestMatch or more.
    void PutLikeAbove(std::size_t length) { PutMatch(FirstLikeAbove, length); }
    /// Ends the stream; what was written is valid until the next Start.
    std::string_view Finish();
    /// Bytes written so far; the block under way is not among them.
    std::size_t Size() const { return size_; }

private:
    static constexpr std::size_t StepsInBlock = std::size_t{1} << 15;
    static constexpr std::size_t MatchLengths = LongestMatch - ShortestMatch + 1;

    /// A step: below 256 the literal byte, then runs and what is like above, each from the shortest on.
    using Step = std::uint16_t;
    static constexpr Step FirstRun = 256;
    static constexpr Step FirstLikeAbove = FirstRun + MatchLengths;
    static constexpr Step StepKinds = FirstLikeAbove + MatchLengths;

    struct Codes;
    struct Header;

    void PutMatch(Step first, std::size_t length);
    void EndBlock(bool isLast);
    /// Where bits go, the first one lowest; a word of room is needed behind them.
    struct BitSink {
        char* at;
        std::uint64_t bits;  ///< those that fill no byte yet
        unsigned count;

        void Write(std::uint64_t more, unsigned moreCount);
    };
    static BitSink WriteHeader(BitSink sink, Header const& header);
    BitSink WriteSteps(BitSink sink, Codes const& codes) const;

    std::size_t rowBytes_ = 0;
    std::vector<Step> steps_;
    std::size_t stepCount_ = 0;

    std::string stream_;    ///< with room behind what is written
    std::size_t size_ = 0;  ///< bytes written
    std::uint64_t openBits_ = 0;
    unsigned openBitCount_ = 0;
};

}  // namespace PrintEngine::Pages
