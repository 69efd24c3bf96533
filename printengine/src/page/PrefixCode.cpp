#include "printengine/src/page/PrefixCode.h"

#include <algorithm>
#include <array>
#include <cstddef>

namespace PrintEngine::Pages {

namespace {

constexpr std::size_t MostSymbols = 288;
constexpr int LongestTree = 32;  // counts of 32 bits make no deeper one
constexpr int SymbolBits = 9;

/// A node of the tree: how often what is below it occurs, and the symbol in the low bits while it is a leaf.
using Leaf = std::uint64_t;
using PerLength = std::array<unsigned, LongestTree + 1>;

std::uint64_t CountOf(Leaf leaf) { return leaf >> SymbolBits; }

/// How many leaves of the Huffman tree lie how deep; `leaves` grow in their counts. Both the leaves and the inner nodes
/// come up in the order of their counts, so that two queues need no heap.
PerLength DepthsOf(std::span<Leaf const> leaves) {
    std::array<std::uint64_t, MostSymbols> inner{};
    std::array<std::uint16_t, 2 * MostSymbols> parent{};
    std::size_t const count = leaves.size();
    std::size_t leaf = 0;
    std::size_t oldest = 0;
    for (std::size_t made = 0; made + 1 < count; ++made) {
        for (int child = 0; child < 2; ++child) {
            bool const isLeaf = leaf < count && (oldest == made || CountOf(leaves[leaf]) <= inner[oldest]);
            inner[made] += isLeaf ? CountOf(leaves[leaf]) : inner[oldest];
            parent[isLeaf ? leaf++ : count + oldest++] = static_cast<std::uint16_t>(count + made);
        }
    }
    PerLength depths{};
    std::array<std::uint8_t, 2 * MostSymbols> depth{};
    for (std::size_t node = 2 * count - 2; node-- > 0;) {
        depth[node] = static_cast<std::uint8_t>(std::min(depth[parent[node]] + 1, LongestTree));
        if (node < count) ++depths[depth[node]];
    }
    return depths;
}

/// Lifts what is too deep, and sinks the deepest others until the code is complete again (Kraft's sum is 1).
void Limit(PerLength& depths, int mostBits) {
    auto const most = static_cast<std::size_t>(mostBits);
    for (std::size_t i = most + 1; i < depths.size(); ++i) depths[most] += depths[i];
    std::uint64_t sum = 0;
    for (std::size_t i = 1; i <= most; ++i) sum += std::uint64_t{depths[i]} << (most - i);
    for (; sum > std::uint64_t{1} << most; --sum) {
        std::size_t split = most - 1;
        while (depths[split] == 0) --split;
        --depths[most];
        --depths[split];
        depths[split + 1] += 2;
    }
}

}  // namespace

void MakeCodeLengths(std::span<std::uint32_t const> counts, int mostBits, std::span<std::uint8_t> lengths) {
    std::array<Leaf, MostSymbols> leaves;
    std::size_t used = 0;
    for (std::size_t symbol = 0; symbol < counts.size(); ++symbol) {
        if (counts[symbol] != 0) leaves[used++] = Leaf{counts[symbol]} << SymbolBits | symbol;
    }
    for (std::size_t symbol = 0; used < 2; ++symbol) {
        if (counts[symbol] == 0) leaves[used++] = symbol;
    }
    std::span const sorted(leaves.data(), used);
    std::sort(sorted.begin(), sorted.end());
    auto depths = DepthsOf(sorted);
    Limit(depths, mostBits);
    std::fill(lengths.begin(), lengths.end(), std::uint8_t{0});
    std::size_t next = 0;
    for (auto length = static_cast<std::size_t>(mostBits); length > 0; --length) {
        for (unsigned i = 0; i < depths[length]; ++i)
            lengths[sorted[next++] & ((1 << SymbolBits) - 1)] = static_cast<std::uint8_t>(length);
    }
}

void MakeCodes(std::span<std::uint8_t const> lengths, std::span<std::uint16_t> codes) {
    std::array<unsigned, 17> next{};
    for (auto const length : lengths) ++next[length + 1U];
    next[1] = 0;
    for (std::size_t i = 1; i < next.size(); ++i) next[i] = (next[i - 1] + next[i]) << 1;
    for (std::size_t symbol = 0; symbol < lengths.size(); ++symbol) {
        unsigned const length = lengths[symbol];
        if (length == 0) continue;
        unsigned code = next[length]++;
        unsigned turned = 0;
        for (unsigned i = 0; i < length; ++i, code >>= 1) turned = turned << 1 | (code & 1);
        codes[symbol] = static_cast<std::uint16_t>(turned);
    }
}

}  // namespace PrintEngine::Pages
