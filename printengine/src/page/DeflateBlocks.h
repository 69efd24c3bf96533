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
    void PutLiterals(std::uint8_t const* bytes, std::size_t count) {
        for (std::size_t i = 0; i < count; ++i) Put(bytes[i]);
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

    void Put(std::size_t step) {
        ++counts_[step];
        steps_[stepCount_++] = static_cast<Step>(step);
    }
    void PutMatch(Step first, std::size_t length);
    void EndBlock(bool isLast);
    void WriteHeader(Header const& header);
    void WriteSteps(Codes const& codes);
    void WriteBits(std::uint64_t bits, unsigned count);

    std::size_t rowBytes_ = 0;
    std::vector<Step> steps_;
    std::size_t stepCount_ = 0;
    std::array<std::uint32_t, StepKinds> counts_{};

    std::string stream_;          ///< with room behind what is written
    std::size_t size_ = 0;        ///< bytes written
    std::uint64_t openBits_ = 0;  ///< those that fill no byte yet, the first one lowest
    unsigned openBitCount_ = 0;
};

}  // namespace PrintEngine::Pages
