#pragma once

#include <algorithm>
#include <string_view>
#include <vector>

#include "Barcode/Encoder/ValidationStatus.h"
#include "Barcode/Model/BarcodeModels.h"

/// Building of rows from the pattern tables of symbologies.
namespace Barcode::Encoder {

using Blocks = std::vector<Model::Block>;

/// Longer data would not fit on the widest page with the narrowest bars.
inline constexpr std::size_t MaxLinearLength = 6000;

inline constexpr std::string_view Digits = "0123456789";

/// Alternating elements from a bar on; the `count` low bits of `pattern`, the highest first, tell which are wide.
inline void AppendElements(unsigned pattern, int count, Blocks& blocks) {
    for (int i = count - 1; i >= 0; --i) blocks.emplace_back((pattern >> i & 1) != 0, (count - 1 - i) % 2 == 0);
}

/// The patterns of `values` between `start` and `stop`, all of `elements` elements and parted by narrow spaces.
template <typename Patterns>
Blocks PartedPatterns(std::vector<unsigned> const& values, Patterns const& patterns, unsigned start, unsigned stop,
                      int elements) {
    Blocks blocks;
    blocks.reserve((values.size() + 2) * static_cast<std::size_t>(elements + 1));
    AppendElements(start, elements, blocks);
    for (unsigned const value : values) {
        blocks.push_back(Model::Block::NarrowSpace());
        AppendElements(patterns[value], elements, blocks);
    }
    blocks.push_back(Model::Block::NarrowSpace());
    AppendElements(stop, elements, blocks);
    return blocks;
}

/// One narrow block for each of the `count` low bits of `pattern`, the highest first; 1 is dark.
inline void AppendModules(unsigned pattern, int count, Blocks& blocks) {
    for (int i = count - 1; i >= 0; --i) blocks.emplace_back(false, (pattern >> i & 1) != 0);
}

inline ValidationStatus ValidateAlphabet(std::string_view text, std::string_view alphabet, std::size_t shortest,
                                         std::size_t longest) {
    if (text.find_first_not_of(alphabet) != std::string_view::npos) return ValidationStatus::InvalidCharacter;
    if (text.size() < shortest) return ValidationStatus::TooShort;
    return text.size() > longest ? ValidationStatus::TooLong : ValidationStatus::Valid;
}

/// The places of the characters of `text` in `alphabet`; others are left out.
inline std::vector<unsigned> ValuesOf(std::string_view text, std::string_view alphabet) {
    std::vector<unsigned> values;
    values.reserve(text.size() + 2);
    for (char const c : text) {
        if (auto const value = alphabet.find(c); value != std::string_view::npos)
            values.push_back(static_cast<unsigned>(value));
    }
    return values;
}

/// Sum of the values, each times its distance from the end, counted from `first` to `last` and round again.
inline unsigned WeightedSum(std::vector<unsigned> const& values, unsigned first, unsigned last) {
    unsigned sum = 0;
    unsigned weight = first;
    for (std::size_t i = values.size(); i-- > 0; weight = weight == last ? first : weight + 1)
        sum += values[i] * weight;
    return sum;
}

}  // namespace Barcode::Encoder
