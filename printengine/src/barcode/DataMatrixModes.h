#pragma once

#include <array>
#include <cstddef>
#include <cstdint>

namespace Barcode::Encoder {

/// The modes of ISO/IEC 16022, and how far a group of values is filled in them: C40, Text and X12 pack three values
/// into two codewords, EDIFACT four into three. Bytes are Base 256.
enum class DataMatrixMode : std::uint8_t {
    Ascii,
    C40,
    C40One,
    C40Two,
    Text,
    TextOne,
    TextTwo,
    X12,
    X12One,
    X12Two,
    Edifact,
    EdifactOne,
    EdifactTwo,
    EdifactThree,
    Bytes,      ///< with a length of one codeword
    LongBytes,  ///< with a length of two
    LastBytes,  ///< up to the end of the symbol, with a length of 0
    Tail,       ///< ASCII where too little room is left for a group: without an unlatch
};
/// Those that a text can be in with room behind it.
constexpr std::size_t DataMatrixModeCount = static_cast<std::size_t>(DataMatrixMode::Tail);

constexpr std::size_t Index(DataMatrixMode mode) { return static_cast<std::size_t>(mode); }
/// The mode with `values` in its group, of one without any.
constexpr DataMatrixMode Filled(DataMatrixMode mode, std::size_t values) {
    return static_cast<DataMatrixMode>(Index(mode) + values);
}
/// The mode without the values in its group.
constexpr DataMatrixMode Emptied(DataMatrixMode mode) {
    using enum DataMatrixMode;
    for (auto const group : {C40, Text, X12}) {
        if (mode >= group && mode < Filled(group, 3)) return group;
    }
    return mode >= Edifact && mode <= EdifactThree ? Edifact : mode;
}
constexpr bool IsPacked(DataMatrixMode mode) { return mode >= DataMatrixMode::C40 && mode <= DataMatrixMode::X12Two; }

/// Up to four values of one token; none where the mode lacks it.
struct DataMatrixValues {
    std::array<std::uint8_t, 4> values{};
    std::size_t count = 0;

    constexpr void Add(unsigned value) { values[count++] = static_cast<std::uint8_t>(value); }
};

/// The values of a byte or an FNC1 in C40, Text, X12 or EDIFACT.
DataMatrixValues DataMatrixValuesOf(unsigned value, DataMatrixMode mode);
/// How many they are.
std::size_t DataMatrixValueCount(unsigned value, DataMatrixMode mode);

}  // namespace Barcode::Encoder
