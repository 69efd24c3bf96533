#include "library/forms/Template.h"

#include <algorithm>
#include <array>

#include "frontend/context/Utf8Text.h"
#include "frontend/stream/Ascii.h"

namespace {

struct SymbologyChecks {
    std::string_view symbology;
    std::size_t least;  ///< digits
    std::size_t most;   ///< 0: any number
};

/// Symbologies of digits alone. Of those with a check digit it may be sent or left out.
constexpr std::array DigitSymbologies = std::to_array<SymbologyChecks>({
    {"EAN-13", 12, 13},
    {"EAN-8", 7, 8},
    {"UPC-A", 11, 12},
    {"UPC-E", 6, 10},
    {"EAN/UPC supplement", 2, 5},
    {"Interleaved 2 of 5", 0, 0},
    {"Industrial 2 of 5", 0, 0},
    {"Standard 2 of 5", 0, 0},
    {"MSI", 0, 14},
    {"POSTNET", 0, 0},
    {"PLANET", 0, 0},
    {"Intelligent Mail", 20, 31},
});

SymbologyChecks const* ChecksOf(std::string_view symbology) {
    auto const* const row = std::find_if(DigitSymbologies.begin(), DigitSymbologies.end(),
                                         [symbology](auto const& entry) { return entry.symbology == symbology; });
    return row == DigitSymbologies.end() ? nullptr : row;
}

/// Those of tags get theirs when the label prints.
bool WaitsForData(DrawnField const& field) {
    return field.isWaiting && field.details.notes.kind != ZplCore::FieldKind::Tag;
}

std::string Characters(std::size_t count) {
    return std::to_string(count) + (count == 1 ? " character" : " characters");
}

/// Data of a field, with all that could be taken for something else as hexadecimal digits: the characters that begin
/// commands, the one that announces the digits, and what is no character to see.
std::string Escaped(std::string_view text) {
    constexpr std::string_view Special = "^~_";
    constexpr std::string_view Digits = "0123456789ABCDEF";
    constexpr unsigned char Delete = 0x7F;
    std::string escaped;
    for (char const c : text) {
        auto const byte = static_cast<unsigned char>(c);
        bool const isPlain = byte >= ' ' && byte != Delete && Special.find(c) == Special.npos;
        if (isPlain) {
            escaped += c;
        } else {
            escaped.append(1, '_').append(1, Digits[byte >> 4U]).append(1, Digits[byte & 0xFU]);
        }
    }
    return escaped;
}

/// The parameter of the last `^CI` of a stored format; empty without one.
std::string LastCharacterSet(std::string_view format) {
    constexpr std::string_view Command = "^CI";
    auto const command = format.rfind(Command);
    if (command == format.npos) return {};
    auto const parameter = format.substr(command + Command.size());
    return std::string(parameter.substr(0, parameter.find_first_not_of("0123456789")));
}

}  // namespace

std::vector<TemplateField> VariableFields(DrawnFormat const& drawn) {
    std::vector<TemplateField> fields;
    for (auto const& place : drawn.fields) {
        if (!WaitsForData(place)) continue;
        auto const& details = place.details;
        auto found = std::find_if(fields.begin(), fields.end(),
                                  [&](auto const& field) { return field.number == *details.number; });
        if (found == fields.end()) found = fields.insert(fields.end(), TemplateField{*details.number, {}, {}, {}, {}});
        if (found->prompt.empty()) found->prompt = HandleInvalidUTF8(details.prompt);
        if (auto const* const checks = ChecksOf(details.notes.symbology))
            found->checks = {false, true, checks->least, checks->most};
    }
    for (auto& field : fields)
        field.name = field.prompt.empty() ? "Field " + std::to_string(field.number) : field.prompt;
    return fields;
}

std::string FaultOf(TemplateField const& field, std::string_view value) {
    auto const& checks = field.checks;
    if (value.empty()) return checks.isRequired ? "a value is needed here" : "";
    if (value.size() > LongestValue) return "the text is longer than a label can hold";
    if (HandleInvalidUTF8(value) != value) return "the text is not UTF-8";
    bool const isDigits = std::all_of(value.begin(), value.end(), IsAsciiDigit);
    if (checks.digitsOnly && !isDigits) return "only digits may stand here";
    auto const count = CountCodePoints(value);
    if (count < checks.least)
        return "at least " + Characters(checks.least) + ", and there are " + std::to_string(count);
    if (checks.most > 0 && count > checks.most)
        return "at most " + Characters(checks.most) + ", and there are " + std::to_string(count);
    return {};
}

std::string SampleOf(TemplateField const& field) {
    if (!field.value.empty()) return field.value;
    if (!field.checks.digitsOnly) return field.name;
    constexpr std::string_view Digits = "1234567890";
    auto const& [isRequired, digitsOnly, least, most] = field.checks;
    std::size_t const count =
        std::min(std::max(least, most > 0 ? std::min(most, Digits.size()) : Digits.size()), LongestValue);
    std::string sample;
    while (sample.size() < count) sample += Digits[sample.size() % Digits.size()];
    return sample;
}

void FilledStream::Add(StoredFormat const& format, std::string_view bytes, ValuesByNumber const& values,
                       unsigned labels) {
    // The mark chooses the encoding of this stream alone. A format may choose another one, from there on.
    if (stream_.empty()) stream_ = "\xEF\xBB\xBF";
    if (auto set = LastCharacterSet(bytes); !set.empty()) characterSet_ = std::move(set);
    stream_ += "^XA" + setUp_ + "^XF" + format.FullName() + "^FS";
    if (!characterSet_.empty()) stream_ += "^CI28";
    for (auto const& [number, value] : values) {
        if (!value.empty()) stream_ += "^FN" + std::to_string(number) + "^FH_^FD" + Escaped(value) + "^FS";
    }
    if (!characterSet_.empty()) stream_ += "^CI" + characterSet_;
    stream_ += "^PQ" + std::to_string(labels) + "^XZ\n";
}
