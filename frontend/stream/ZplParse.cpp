#include "frontend/stream/ZplParse.h"

#include <algorithm>

#include "frontend/stream/Ascii.h"
#include "frontend/stream/PlainNumber.h"

namespace {

/// The first run of digits in `text`, with a minus sign that touches it if `withSign`; nothing if there is no digit.
std::optional<int> ScanNumber(std::string const& text, bool withSign) {
    auto first = std::find_if(text.begin(), text.end(), IsAsciiDigit);
    if (first == text.end()) return std::nullopt;
    auto const last = std::find_if_not(first, text.end(), IsAsciiDigit);
    if (withSign && first != text.begin() && *(first - 1) == '-') --first;
    try {
        return std::stoi(std::string(first, last));
    } catch (std::out_of_range const& error) {
        throw NumberOutOfRange(error.what(), text);
    }
}

/// The value of the letter that `text` starts with.
template <typename T, std::size_t Count>
ZplParseResult<T> ParseLetter(std::string const& text, std::pair<char, T> const (&letters)[Count]) {
    if (text.empty()) return {};
    for (auto const& [letter, value] : letters) {
        if (letter == ToAsciiUpper(text[0])) return value;
    }
    return {};
}

}  // namespace

template <>
ZplParseResult<std::string> ZplParse<std::string>(std::string const& text) {
    return text;
}

template <>
ZplParseResult<char> ZplParse<char>(std::string const& text) {
    if (text.empty()) return {};
    return text[0];
}

template <>
ZplParseResult<bool> ZplParse<bool>(std::string const& text) {
    return ParseLetter<bool>(text, {{'Y', true}, {'N', false}});
}

// The range is that of a signed number here too: what is beyond it is no size of anything on a label.
template <>
ZplParseResult<unsigned> ZplParse<unsigned>(std::string const& text) {
    auto const number = ScanNumber(text, false);
    if (!number) return {};
    return static_cast<unsigned>(*number);
}

template <>
ZplParseResult<int> ZplParse<int>(std::string const& text) {
    auto const number = ScanNumber(text, true);
    if (!number) return {};
    return *number;
}

template <>
ZplParseResult<double> ZplParse<double>(std::string const& text) {
    // Nearly all are a few digits, which take no library to read.
    constexpr std::size_t ShortLength = 9;
    if (!text.empty() && text.size() <= ShortLength && std::all_of(text.begin(), text.end(), IsAsciiDigit)) {
        int number = 0;
        for (char const digit : text) number = number * 10 + (digit - '0');
        return number;
    }
    auto const first = text.find_first_of(".0123456789");
    if (first == std::string::npos) return {};
    return ToPlainNumber<double>(text.substr(first), text);
}

template <>
ZplParseResult<unsigned char> ZplParse<unsigned char>(std::string const& text) {
    return ZplParse<unsigned>(text).Map([](unsigned number) { return static_cast<unsigned char>(number); });
}

template <>
ZplParseResult<std::optional<int>> ZplParse<std::optional<int>>(std::string const& text) {
    return ScanNumber(text, true);
}

template <>
ZplParseResult<ZplOrientation> ZplParse<ZplOrientation>(std::string const& text) {
    using enum ZplOrientation;
    return ParseLetter<ZplOrientation>(text, {{'N', Normal}, {'R', Rotated}, {'I', Inverted}, {'B', BottomUp}});
}

template <>
ZplParseResult<Direction> ZplParse<Direction>(std::string const& text) {
    using enum Direction;
    return ParseLetter<Direction>(text, {{'H', Horizontal}, {'V', Vertical}, {'R', Reverse}});
}

template <>
ZplParseResult<Justification> ZplParse<Justification>(std::string const& text) {
    constexpr auto Last = static_cast<unsigned>(Justification::Auto);
    return ZplParse<unsigned>(text).Where([](unsigned number) { return number <= Last; }).Map([](unsigned number) {
        return static_cast<Justification>(number);
    });
}

template <>
ZplParseResult<Scripting::ScriptTextJustification> ZplParse<Scripting::ScriptTextJustification>(
    std::string const& text) {
    using enum Scripting::ScriptTextJustification;
    return ParseLetter<Scripting::ScriptTextJustification>(
        text, {{'L', Left}, {'R', Right}, {'C', Center}, {'J', Justified}});
}

template <>
ZplParseResult<ZplPrintOrientation> ZplParse<ZplPrintOrientation>(std::string const& text) {
    using enum ZplPrintOrientation;
    return ParseLetter<ZplPrintOrientation>(text, {{'N', Normal}, {'I', Inverted}});
}

template <>
ZplParseResult<ZplUnitOfMeasure> ZplParse<ZplUnitOfMeasure>(std::string const& text) {
    using enum ZplUnitOfMeasure;
    return ParseLetter<ZplUnitOfMeasure>(text, {{'D', Dots}, {'I', Inches}, {'M', Millimeters}});
}

template <>
ZplParseResult<ZplPrintMode> ZplParse<ZplPrintMode>(std::string const& text) {
    using enum ZplPrintMode;
    return ParseLetter<ZplPrintMode>(text, {{'T', TearOff}, {'C', Cutter}, {'P', PeelOff}, {'A', Applicator}});
}

template <>
ZplParseResult<CompressionType> ZplParse<CompressionType>(std::string const& text) {
    using enum CompressionType;
    return ParseLetter<CompressionType>(text, {{'A', Ascii}, {'B', Binary}, {'C', Compressed}});
}
