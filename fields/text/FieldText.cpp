#include "fields/text/FieldText.h"

#include <utf8.h>

#include <algorithm>
#include <cstdint>
#include <cstdio>

#include "foundation/Log.h"
#include "foundation/Quoted.h"
#include "frontend/context/Utf8Text.h"
#include "frontend/context/ZplContextKeys.h"
#include "frontend/stream/Ascii.h"

namespace ZplCore {

namespace {

/// Plain text whose bytes are taken in pairs comes out as signs that nobody sent.
bool IsPlainTextInPairs(std::string_view data, ZplCodePageConverter const& converter) {
    auto const isPrintable = [](char c) { return (c >= ' ' && c <= '~') || c == '\t'; };
    return converter.ReadsBytePairs() && std::all_of(data.begin(), data.end(), isPrintable);
}

/// The set of single bytes that a byte most likely comes from: the letters of code page 850, which printers start with,
/// lie below those of Windows.
char const* LikelySet(std::uint8_t byte) {
    constexpr std::uint8_t LastLetterOf850 = 0xA5;
    return byte <= LastLetterOf850 ? "^CI13 stands for code page 850" : "^CI27 stands for the characters of Windows";
}

/// Takes out what a byte order mark amid a stream leaves in the data: its first bytes, and its last as a character.
std::string WithoutByteOrderMarks(std::string_view data) {
    constexpr std::string_view Left = "\xEF\xBB\xC2\xBF";
    std::string text;
    for (auto at = data.find(Left); at != data.npos; at = data.find(Left)) {
        text += data.substr(0, at);
        data.remove_prefix(at + Left.size());
    }
    return text += data;
}

}  // namespace

std::string FieldText(std::string_view data, ContextProcessor const& processor) {
    auto const& converter = processor.at(ZplContextKeys::CodePageConverter);
    std::string text;
    if (converter.GetEncoding() != Encoding::SingleByte && IsAsciiText(data)) {
        text = data;
    } else if (converter.GetEncoding() != Encoding::SingleByte) {
        text = HandleInvalidUTF8(WithoutByteOrderMarks(data), false);
    } else if (IsPlainTextInPairs(data, converter)) {
        text = data;
    } else {
        text = converter.ConvertThroughCodePage(data);
    }
    std::replace(text.begin(), text.end(), '\t', ' ');
    return text;
}

void ReportMisread(std::string_view data, ContextProcessor const& processor) {
    auto const& converter = processor.at(ZplContextKeys::CodePageConverter);
    if (!data.empty() && IsPlainTextInPairs(data, converter)) {
        Log::Report(LogTopic::Data, "the data " + Quoted(data) +
                                        " are plain text and drawn so, though ^CI17 stands for two bytes a character; "
                                        "^CI28 stands for UTF-8");
    }
    if (converter.GetEncoding() == Encoding::SingleByte || IsAsciiText(data)) return;
    std::string const text = WithoutByteOrderMarks(data);
    auto const invalid = utf8::find_invalid(text.begin(), text.end());
    if (invalid == text.end()) return;
    auto const byte = static_cast<std::uint8_t>(*invalid);
    char digits[3];
    std::snprintf(digits, sizeof digits, "%02X", unsigned{byte});
    Log::Report(LogTopic::Data, "the data " + Quoted(HandleInvalidUTF8(text)) +
                                    " are read as UTF-8, in which the byte " + digits + " makes no character; " +
                                    LikelySet(byte));
}

std::string BeginningOfData(ContextProcessor const& processor) {
    constexpr std::size_t Longest = 40;  // bytes
    std::string const& data = processor.at(ZplContextKeys::FieldData);
    bool const isLong = data.size() > Longest;
    std::string text = data.substr(0, Longest);
    if (!IsAsciiText(text)) {
        // A character that is cut in two goes as a whole.
        auto const isRest = [](char byte) { return (static_cast<unsigned char>(byte) & 0xC0U) == 0x80; };
        text = FieldText(data, processor).substr(0, Longest + 1);
        while (text.size() > Longest || (!text.empty() && isLong && isRest(text.back()))) text.pop_back();
    }
    // How senders end the lines of a block.
    for (auto at = text.find("\\&"); at != text.npos; at = text.find("\\&", at)) {
        text[at] = ' ';
        text.erase(at + 1, 1);
    }
    while (!isLong && text.ends_with(' ')) text.pop_back();
    return isLong ? text + "..." : text;
}

}  // namespace ZplCore
