#include "fields/data/FieldDataHelper.h"

#include <algorithm>
#include <array>
#include <map>
#include <optional>
#include <string_view>

#include "Scripting/PrinterContextInterface.h"
#include "fields/data/ClockFields.h"
#include "frontend/context/Utf8Text.h"
#include "frontend/context/ZplContextKeys.h"
#include "frontend/stream/Ascii.h"

namespace ZplCore::FieldDataHelper {

namespace {

/// The byte that an indicator and two digits at `at` name.
std::optional<char> HexByteAt(std::string_view data, std::size_t at, char indicator) {
    if (indicator == 0 || data[at] != indicator || at + 2 >= data.size()) return std::nullopt;
    int const high = HexDigit(data[at + 1]);
    int const low = HexDigit(data[at + 2]);
    if (high < 0 || low < 0) return std::nullopt;
    return static_cast<char>(high * 16 + low);
}

/// Text in the character set of the stream, so that it can stand among field data. What the set lacks is left out.
std::string ToStreamBytes(std::string const& text, ZplCodePageConverter const& converter) {
    bool const ascii =
        std::all_of(text.begin(), text.end(), [](char c) { return static_cast<unsigned char>(c) < 0x80; });
    if (ascii || converter.GetEncoding() != Encoding::SingleByte) return text;
    std::map<std::string, char> bytes;
    for (int byte = 0xFF; byte > 0; --byte) {
        char const c = static_cast<char>(byte);
        bytes[converter.ConvertThroughCodePage({&c, 1})] = c;
    }
    std::string result;
    for (char32_t const character : ToCodePoints(text)) {
        if (auto const found = bytes.find(FromCodePoints({&character, 1})); found != bytes.end())
            result += found->second;
    }
    return result;
}

/// Reads the clock indicators of a field.
class ClockReader {
public:
    explicit ClockReader(ContextProcessor const& processor)
        : processor_(processor),
          indicators_{processor.at(ZplContextKeys::ClockIndicator1), processor.at(ZplContextKeys::ClockIndicator2),
                      processor.at(ZplContextKeys::ClockIndicator3)} {}

    /// Whether the field has clock indicators at all.
    bool IsOn() const { return indicators_ != std::array<char, 3>{}; }

    /// The time that an indicator and a code at `at` stand for.
    std::optional<std::string> ReadAt(std::string_view data, std::size_t at) const {
        auto const indicator = std::find(indicators_.begin(), indicators_.end(), data[at]);
        if (data[at] == 0 || indicator == indicators_.end() || at + 1 >= data.size()) return std::nullopt;
        auto const text = ClockFields::Format(data[at + 1], Time(indicator - indicators_.begin()),
                                              processor_.at(ZplContextKeys::CultureId));
        if (!text) return std::nullopt;
        return ToStreamBytes(*text, processor_.at(ZplContextKeys::CodePageConverter));
    }

private:
    /// The first clock shows the time of the label; the other two add their offsets to it.
    ClockFields::TimePoint Time(std::ptrdiff_t clock) const {
        auto time = processor_.at(ZplContextKeys::TimeAtRender);
        if (time == ClockFields::TimePoint{} && processor_.GetPrinterContext())
            time = processor_.GetPrinterContext()->Now();
        if (clock == 1) return ClockFields::Shift(time, processor_.at(ZplContextKeys::ClockOffset2));
        if (clock == 2) return ClockFields::Shift(time, processor_.at(ZplContextKeys::ClockOffset3));
        return time;
    }

    ContextProcessor const& processor_;
    std::array<char, 3> indicators_;
};

}  // namespace

std::string ProcessDelimiterData(ZplCommand const& command, std::size_t first) { return command.Joined(first); }

std::string ExpandHex(std::string data, char indicator) {
    if (indicator == 0 || data.find(indicator) == std::string::npos) return data;
    std::string bytes;
    bytes.reserve(data.size());
    for (std::size_t i = 0; i < data.size(); ++i) {
        auto const byte = HexByteAt(data, i, indicator);
        bytes += byte.value_or(data[i]);
        if (byte) i += 2;
    }
    return bytes;
}

std::string ProcessHexAndClockData(std::string data, ContextProcessor const& processor) {
    char const hex = processor.at(ZplContextKeys::FieldHexIndicator);
    ClockReader const clock(processor);
    if (!clock.IsOn()) return ExpandHex(std::move(data), hex);

    // In one pass: a byte made of hexadecimal digits is never an indicator.
    std::string bytes;
    for (std::size_t i = 0; i < data.size(); ++i) {
        if (auto const byte = HexByteAt(data, i, hex)) {
            bytes += *byte;
            i += 2;
        } else if (auto const time = clock.ReadAt(data, i)) {
            bytes += *time;
            ++i;
        } else {
            bytes += data[i];
        }
    }
    return bytes;
}

}  // namespace ZplCore::FieldDataHelper
