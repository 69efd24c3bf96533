#include "library/forms/FieldData.h"

#include <iconv.h>
#include <utf8.h>

#include <array>
#include <iterator>
#include <optional>
#include <vector>

#include "fields/data/FieldDataHelper.h"
#include "frontend/context/CharacterSets.h"
#include "frontend/context/Utf8Text.h"
#include "frontend/stream/Ascii.h"

namespace {

constexpr char DefaultIndicator = '_';

/// The set in force at a command, read as the command was.
ZplCodePageConverter ConverterOf(StreamCommand const& command) {
    auto converter = *command.characters;
    if (command.syntax.encoding != Encoding::SingleByte) converter.SetEncoding(command.syntax.encoding);
    return converter;
}

std::optional<std::string> ToMultiByte(CharacterSet const& set, std::string character) {
    iconv_t const descriptor = iconv_open(set.iconvName, "UTF-8");
    if (descriptor == reinterpret_cast<iconv_t>(-1)) return std::nullopt;
    std::array<char, 16> bytes{};
    char* input = character.data();
    char* output = bytes.data();
    std::size_t inputLeft = character.size();
    std::size_t outputLeft = bytes.size();
    bool const isDone = iconv(descriptor, &input, &inputLeft, &output, &outputLeft) != static_cast<std::size_t>(-1) &&
                        iconv(descriptor, nullptr, nullptr, &output, &outputLeft) != static_cast<std::size_t>(-1);
    iconv_close(descriptor);
    if (!isDone) return std::nullopt;
    return std::string(bytes.data(), bytes.size() - outputLeft);
}

/// Writes characters in the set in force.
class CharacterWriter {
public:
    explicit CharacterWriter(ZplCodePageConverter converter) : converter_(std::move(converter)) {
        auto const& set = *FindCharacterSet(converter_.CodePage());
        isUnicode_ = converter_.GetEncoding() != Encoding::SingleByte || set.encoding != Encoding::SingleByte;
    }

    /// The bytes of a character, UTF-8 too.
    std::string Write(std::string const& character) const {
        if (isUnicode_) return character;
        if (!converter_.ReadsBytePairs() && character.size() == 1 && Reads(character, character)) return character;
        if (converter_.ReadsByteSequences()) {
            auto const bytes = ToMultiByte(*FindCharacterSet(converter_.CodePage()), character);
            if (bytes && Reads(*bytes, character)) return *bytes;
        } else {
            for (int byte = 1; byte < 256; ++byte) {
                std::string const bytes(1, static_cast<char>(byte));
                if (Reads(bytes, character)) return bytes;
            }
        }
        throw EditRefusal("This label cannot show \u201C" + character + "\u201D: its character set does not have it.");
    }

private:
    bool Reads(std::string const& bytes, std::string const& character) const {
        return converter_.ConvertThroughCodePage(bytes) == character;
    }

    ZplCodePageConverter converter_;
    bool isUnicode_ = false;
};

/// Bytes on their way into a command.
struct DataByte {
    char byte;
    bool isHex;
};

bool IsControl(char byte) { return static_cast<unsigned char>(byte) < ' ' || byte == 0x7F; }

std::vector<DataByte> BytesOf(std::string_view text, StreamCommand const& command, DataNotation const& notation) {
    CharacterWriter const writer(ConverterOf(command));
    std::vector<DataByte> bytes;
    std::string const blockEnd = "\\&";
    for (char32_t const character : ToCodePoints(std::string(text))) {
        bool const endsLine = notation.isBlock && character == U'\n';
        for (char const byte : endsLine ? blockEnd : writer.Write(FromCodePoints({&character, 1}))) {
            bool const isSyntax = byte == command.syntax.formatPrefix || byte == command.syntax.controlPrefix ||
                                  (notation.endsAtComma && byte == command.syntax.delimiter);
            bytes.push_back({byte, isSyntax || IsControl(byte)});
        }
    }
    return bytes;
}

/// Where an indicator and two digits would be read as what they are not.
void EscapeIndicators(std::vector<DataByte>& bytes, char indicator) {
    auto const isDigit = [&](std::size_t at) {
        return at < bytes.size() && !bytes[at].isHex && HexDigit(bytes[at].byte) >= 0;
    };
    for (std::size_t i = 0; i < bytes.size(); ++i) {
        if (bytes[i].byte == indicator && isDigit(i + 1) && isDigit(i + 2)) bytes[i].isHex = true;
    }
}

void AppendHex(std::string& data, char indicator, char byte) {
    constexpr char const* Digits = "0123456789ABCDEF";
    auto const value = static_cast<unsigned char>(byte);
    data.append(1, indicator).append(1, Digits[value >> 4]).append(1, Digits[value & 15]);
}

/// UTF-8 in one of the encodings of two bytes.
std::string Widened(std::string const& text, Encoding encoding) {
    std::u16string wide;
    utf8::unchecked::utf8to16(text.begin(), text.end(), std::back_inserter(wide));
    std::string bytes;
    for (char16_t const unit : wide) {
        char const high = static_cast<char>(unit >> 8);
        char const low = static_cast<char>(unit & 0xFF);
        bytes += encoding == Encoding::Utf16Le ? low : high;
        bytes += encoding == Encoding::Utf16Le ? high : low;
    }
    return bytes;
}

}  // namespace

std::string TextOfData(std::string_view raw, StreamCommand const& command, DataNotation const& notation) {
    auto text = ConverterOf(command).ConvertThroughCodePage(
        ZplCore::FieldDataHelper::ExpandHex(std::string(raw), notation.hexIndicator));
    if (!notation.isBlock) return text;
    std::string lines;
    for (std::size_t at = 0; at < text.size(); ++at) {
        bool const endsLine = std::string_view(text).substr(at, 2) == "\\&";
        lines += endsLine ? '\n' : text[at];
        if (endsLine) ++at;
    }
    return lines;
}

std::string DataOfText(std::string_view text, StreamCommand const& command, DataNotation notation, bool& needsHex) {
    auto bytes = BytesOf(text, command, notation);
    needsHex = false;
    for (auto const& [byte, isHex] : bytes) needsHex = needsHex || isHex;
    if (needsHex && notation.hexIndicator == 0) notation.hexIndicator = DefaultIndicator;
    if (notation.hexIndicator != 0) EscapeIndicators(bytes, notation.hexIndicator);
    std::string data;
    for (auto const& [byte, isHex] : bytes) {
        if (isHex)
            AppendHex(data, notation.hexIndicator, byte);
        else
            data += byte;
    }
    bool const isWide = command.syntax.encoding == Encoding::Utf16Le || command.syntax.encoding == Encoding::Utf16Be;
    return isWide ? Widened(data, command.syntax.encoding) : data;
}
