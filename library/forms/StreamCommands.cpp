#include "library/forms/StreamCommands.h"

#include <utf8.h>

#include <algorithm>
#include <cmath>
#include <cstdio>
#include <iterator>
#include <optional>

#include "foundation/Log.h"
#include "frontend/context/CharacterSets.h"
#include "frontend/stream/Ascii.h"
#include "frontend/stream/ZplParse.h"
#include "frontend/stream/ZplTokenizer.h"

namespace {

using ZplCore::ByteRange;

bool IsWide(Encoding encoding) { return encoding == Encoding::Utf16Le || encoding == Encoding::Utf16Be; }
std::uint64_t UnitLength(Encoding encoding) { return IsWide(encoding) ? 2 : 1; }
bool IsLineEnd(char32_t unit) { return unit == U'\r' || unit == U'\n'; }
bool IsBlank(char32_t unit) { return unit == U' ' || unit == U'\t' || IsLineEnd(unit); }

/// The byte, or the half of two bytes, that stands at `offset`; 0 past the end.
char32_t UnitAt(std::string_view bytes, std::uint64_t offset, Encoding encoding) {
    if (offset + UnitLength(encoding) > bytes.size()) return 0;
    char32_t const first = static_cast<unsigned char>(bytes[offset]);
    if (!IsWide(encoding)) return first;
    char32_t const second = static_cast<unsigned char>(bytes[offset + 1]);
    return encoding == Encoding::Utf16Le ? second << 8 | first : first << 8 | second;
}

/// Whether a character may open or part commands.
bool IsUsable(char character) { return character >= ' ' && character <= '~'; }

/// Reads the commands of a stream by the rules of the interpreter, which draws nothing here.
class Reader {
public:
    Reader(std::string_view bytes, StreamCommands::Source source)
        : bytes_(bytes), isStored_(source == StreamCommands::Source::StoredFormat) {
        converter_ = std::make_shared<ZplCodePageConverter>(0);
    }

    std::vector<StreamCommand> Read() {
        // A byte order mark has been told of when the stream was drawn.
        Log::ScopedSink const quiet(Log::Sink{});
        std::size_t position = 0;
        while (true) {
            auto [encoding, command] =
                tokenizer_.TokenizeString(bytes_, position, syntax_.formatPrefix, syntax_.controlPrefix,
                                          syntax_.delimiter, true, syntax_.encoding);
            syntax_.encoding = encoding;
            if (!command) return std::move(commands_);
            Add(*command);
        }
    }

private:
    void Add(ZplCommand const& command) {
        auto& added = commands_.emplace_back();
        added.letters = command.command;
        added.isControl = command.isControl;
        added.place = {command.offset.value_or(0), command.length};
        added.syntax = syntax_;
        PlaceLetters(added);
        try {
            Follow(command);
        } catch (std::exception const&) {
            // A number that cannot be used ends the format, of which the drawn page has nothing then.
        }
        added.units = units_;
        added.characters = converter_;
    }

    /// Behind the prefix stand the letters, with line ends anywhere among them.
    void PlaceLetters(StreamCommand& command) const {
        auto const unit = UnitLength(syntax_.encoding);
        auto at = command.place.offset + unit;
        for (std::size_t letters = 0; letters < command.letters.size() && at < command.place.End(); at += unit) {
            if (IsLineEnd(UnitAt(bytes_, at, syntax_.encoding))) continue;
            ++letters;
            command.lastLetter = {at, unit};
        }
        auto end = command.place.End();
        while (IsBlank(UnitAt(bytes_, end, syntax_.encoding)) && !IsLineEnd(UnitAt(bytes_, end, syntax_.encoding)))
            end += unit;
        auto const next = UnitAt(bytes_, end, syntax_.encoding);
        bool const isPrefix = next != 0 && (next == static_cast<unsigned char>(syntax_.formatPrefix) ||
                                            next == static_cast<unsigned char>(syntax_.controlPrefix));
        if (!isPrefix) end = std::max(command.place.End(), at);
        command.parameters = {at, end - std::min(at, end)};
    }

    /// What a command changes for those behind it.
    void Follow(ZplCommand const& command) {
        if (command.command == "MU" && !command.isControl) FollowUnits(command);
        if (command.command == "CI" && !command.isControl) FollowCharacterSet(command);
        if (isStored_) return;
        auto const change = [&](char CommandSyntax::*character, char first, char second) {
            auto const value = ZplParse<char>(command, 0);
            if (value && IsUsable(*value) && *value != first && *value != second) syntax_.*character = *value;
        };
        if (command.command == "CC") change(&CommandSyntax::formatPrefix, syntax_.controlPrefix, syntax_.delimiter);
        if (command.command == "CT") change(&CommandSyntax::controlPrefix, syntax_.formatPrefix, syntax_.delimiter);
        if (command.command == "CD") change(&CommandSyntax::delimiter, syntax_.formatPrefix, syntax_.controlPrefix);
        if (command.command == "XA") isDrawn_ = true;
        if (command.command == "DF") isDrawn_ = false;
        // How the stream is read changes where the format that says so has been drawn.
        if (command.command == "XZ" && isDrawn_ && encodingAtEnd_) syntax_.encoding = *encodingAtEnd_;
        if (command.command == "XZ") encodingAtEnd_.reset();
    }

    void FollowUnits(ZplCommand const& command) {
        char const unit = ToAsciiUpper(ZplParse<char>(command, 0).ValueOr(0));
        if (unit == 'D' || unit == 'I' || unit == 'M') units_.unit = unit;
        auto const base = ZplParse<unsigned>(command, 1);
        auto const wanted = ZplParse<unsigned>(command, 2);
        if (base && wanted && *base != 0 && *wanted % *base == 0) units_.scale = *wanted / *base;
    }

    void FollowCharacterSet(ZplCommand const& command) {
        auto converter = std::make_shared<ZplCodePageConverter>(*converter_);
        if (auto const* const set = FindNamedCharacterSet(command)) {
            converter->SelectCodePage(set->number);
            converter->ClearRemaps();
            encodingAtEnd_ = set->encoding;
        }
        for (std::size_t i = 1; i + 1 < command.parameters.size(); i += 2) {
            auto const source = ZplParse<unsigned>(command, i);
            auto const target = ZplParse<unsigned>(command, i + 1);
            if (source && target && *source < 256 && *target < 256)
                converter->Remap(static_cast<std::uint8_t>(*source), static_cast<std::uint8_t>(*target));
        }
        converter_ = std::move(converter);
    }

    std::string_view bytes_;
    bool isStored_;
    ZplTokenizer tokenizer_;
    CommandSyntax syntax_;
    CommandUnits units_;
    std::shared_ptr<ZplCodePageConverter const> converter_;
    std::optional<Encoding> encodingAtEnd_;
    bool isDrawn_ = false;
    std::vector<StreamCommand> commands_;
};

/// A parameter without the blanks around it; an empty one stands at its beginning.
PlacedParameter Trimmed(std::string_view bytes, ByteRange range, Encoding encoding) {
    auto const unit = UnitLength(encoding);
    auto const start = range.offset;
    while (range.length > 0 && IsBlank(UnitAt(bytes, range.offset, encoding))) {
        range.offset += unit;
        range.length -= unit;
    }
    while (range.length > 0 && IsBlank(UnitAt(bytes, range.End() - unit, encoding))) range.length -= unit;
    if (range.length == 0) return {{start, 0}, {}};
    PlacedParameter parameter{range, {}};
    for (auto at = range.offset; at < range.End(); at += unit) {
        auto const character = UnitAt(bytes, at, encoding);
        if (!IsLineEnd(character)) parameter.text += character < 0x80 ? static_cast<char>(character) : '?';
    }
    return parameter;
}

}  // namespace

std::string CommandSyntax::Encoded(std::string_view text) const {
    if (!IsWide(encoding)) return std::string(text);
    std::string wide;
    for (char const c : text) {
        if (encoding == Encoding::Utf16Be) wide += '\0';
        wide += c;
        if (encoding == Encoding::Utf16Le) wide += '\0';
    }
    return wide;
}

std::string CommandUnits::NumberOf(int dots, unsigned designDpi) const {
    constexpr unsigned WholeMillimetersPerInch = 25;
    if (unit == 'D') {
        auto const whole = static_cast<int>(scale);
        return std::to_string((dots + whole / 2) / whole);
    }
    double const factor = unit == 'I' ? designDpi : std::max(1U, designDpi / WholeMillimetersPerInch);
    char text[32] = "0";
    for (int digits = 0; digits <= 4; ++digits) {
        std::snprintf(text, sizeof text, "%.*f", digits, dots / factor);
        if (std::lround(std::strtod(text, nullptr) * factor) == dots) break;
    }
    return text;
}

StreamCommands::StreamCommands(std::string_view bytes, Source source) : commands_(Reader(bytes, source).Read()) {}

std::pair<std::size_t, std::size_t> StreamCommands::In(ByteRange const& range) const {
    auto const before = [](StreamCommand const& command, std::uint64_t offset) {
        return command.place.offset < offset;
    };
    auto const first = std::lower_bound(commands_.begin(), commands_.end(), range.offset, before);
    auto const last = std::lower_bound(first, commands_.end(), range.End(), before);
    return {static_cast<std::size_t>(first - commands_.begin()), static_cast<std::size_t>(last - commands_.begin())};
}

std::vector<PlacedParameter> ParametersOf(StreamCommand const& command, std::string_view bytes) {
    auto const encoding = command.syntax.encoding;
    auto const unit = UnitLength(encoding);
    auto const delimiter = static_cast<unsigned char>(command.syntax.delimiter);
    std::vector<PlacedParameter> parameters;
    auto start = command.parameters.offset;
    for (auto at = start; at < command.parameters.End(); at += unit) {
        if (UnitAt(bytes, at, encoding) != delimiter) continue;
        parameters.push_back(Trimmed(bytes, {start, at - start}, encoding));
        start = at + unit;
    }
    parameters.push_back(Trimmed(bytes, {start, command.parameters.End() - start}, encoding));
    return parameters;
}

std::string ParameterOf(StreamCommand const& command, std::string_view bytes, std::size_t index) {
    auto const parameters = ParametersOf(command, bytes);
    return index < parameters.size() ? parameters[index].text : std::string();
}

void SetParameters(StreamEdit& edit, StreamCommand const& command, std::string_view bytes,
                   std::vector<std::pair<std::size_t, std::string>> const& values) {
    auto const parameters = ParametersOf(command, bytes);
    std::size_t count = parameters.size();
    std::string further;
    for (auto const& [index, text] : values) {
        if (index < parameters.size()) {
            edit.Replace(parameters[index].place, command.syntax.Encoded(text));
            continue;
        }
        further.append(index + 1 - count, command.syntax.delimiter).append(text);
        count = index + 1;
    }
    auto const& last = parameters.back().place;
    if (!further.empty()) edit.Insert(last.End(), command.syntax.Encoded(further));
}

std::string RawText(StreamCommand const& command, std::string_view bytes) {
    auto const encoding = command.syntax.encoding;
    std::string text;
    for (auto at = command.parameters.offset; at < command.parameters.End();) {
        auto const character = UnitAt(bytes, at, encoding);
        at += UnitLength(encoding);
        if (IsLineEnd(character)) continue;
        if (!IsWide(encoding)) {
            text += static_cast<char>(character);
            continue;
        }
        bool const isPair = character >= 0xD800 && character < 0xDC00;
        auto const low = isPair ? UnitAt(bytes, at, encoding) : 0;
        if (isPair) at += UnitLength(encoding);
        auto const whole = isPair ? 0x10000 + ((character - 0xD800) << 10) + (low - 0xDC00) : character;
        utf8::unchecked::append(whole, std::back_inserter(text));
    }
    return text;
}
