#include "printengine/src/barcode/DataMatrixModes.h"

#include "printengine/src/barcode/DataMatrixTokens.h"

namespace Barcode::Encoder {

namespace {

/// ISO/IEC 16022, table C.1: the basic set, and three sets behind the shifts 0 to 2. Text has the cases exchanged.
constexpr DataMatrixValues TextValues(unsigned value, bool isText) {
    DataMatrixValues result;
    if (value == DataMatrixToken::Fnc1) {
        result.Add(1);
        result.Add(27);
        return result;
    }
    if (value >= 128) {
        result.Add(1);
        result.Add(30);
        value -= 128;
    }
    bool const isUpper = value >= 'A' && value <= 'Z';
    bool const isLower = value >= 'a' && value <= 'z';
    if (isText && (isUpper || isLower)) value ^= 0x20U;
    auto const add = [&](unsigned shift, unsigned inSet) {
        result.Add(shift);
        result.Add(inSet);
    };
    if (value == ' ') {
        result.Add(3);
    } else if (value >= '0' && value <= '9') {
        result.Add(value - '0' + 4);
    } else if (value >= 'A' && value <= 'Z') {
        result.Add(value - 'A' + 14);
    } else if (value < 32) {
        add(0, value);
    } else if (value <= '/') {
        add(1, value - '!');
    } else if (value <= '@') {
        add(1, value - ':' + 15);
    } else if (value <= '_') {
        add(1, value - '[' + 22);
    } else {
        add(2, value - '`');
    }
    return result;
}

/// ISO/IEC 16022, table 6.
constexpr DataMatrixValues X12Values(unsigned value) {
    constexpr unsigned Separators[] = {'\r', '*', '>', ' '};
    DataMatrixValues result;
    for (unsigned i = 0; i < std::size(Separators); ++i) {
        if (value == Separators[i]) result.Add(i);
    }
    if (value >= '0' && value <= '9') result.Add(value - '0' + 4);
    if (value >= 'A' && value <= 'Z') result.Add(value - 'A' + 14);
    return result;
}

/// The lower six bits of the characters from the blank to the circumflex.
constexpr DataMatrixValues EdifactValues(unsigned value) {
    DataMatrixValues result;
    if (value >= ' ' && value <= '^') result.Add(value & 0x3FU);
    return result;
}

constexpr DataMatrixValues ValuesOf(unsigned value, DataMatrixMode mode) {
    switch (Emptied(mode)) {
        case DataMatrixMode::C40: return TextValues(value, false);
        case DataMatrixMode::Text: return TextValues(value, true);
        case DataMatrixMode::X12: return X12Values(value);
        case DataMatrixMode::Edifact: return EdifactValues(value);
        default: return {};
    }
}

}  // namespace

DataMatrixValues DataMatrixValuesOf(unsigned value, DataMatrixMode mode) { return ValuesOf(value, mode); }

std::size_t DataMatrixValueCount(unsigned value, DataMatrixMode mode) {
    static constexpr auto Counts = [] {
        std::array<std::array<std::uint8_t, DataMatrixToken::Fnc1 + 1>, DataMatrixModeCount> counts{};
        for (auto const packed :
             {DataMatrixMode::C40, DataMatrixMode::Text, DataMatrixMode::X12, DataMatrixMode::Edifact}) {
            for (unsigned i = 0; i <= DataMatrixToken::Fnc1; ++i)
                counts[Index(packed)][i] = static_cast<std::uint8_t>(ValuesOf(i, packed).count);
        }
        return counts;
    }();
    return Counts[Index(Emptied(mode))][value];
}

}  // namespace Barcode::Encoder
