#include "fields/text/TextBlockText.h"

#include "fields/text/FieldText.h"
#include "frontend/context/ZplContextKeys.h"

namespace ZplCore::Sketching {

namespace {

/// Escapes and line ends of a field block's data as line feeds and soft hyphens, and what lies between as `convert`
/// makes it.
template <typename Convert>
std::string ReadEscapes(std::string_view data, Convert convert) {
    constexpr std::string_view SoftHyphenText = "\xC2\xAD";
    std::string text;
    std::string raw;  // not yet converted
    auto const flush = [&] {
        text += convert(raw);
        raw.clear();
    };
    for (std::size_t i = 0; i < data.size(); ++i) {
        char const c = data[i];
        if (c == '\0') continue;
        bool const isEscape = c == '\\' && i + 1 < data.size();
        if (!isEscape && c != '\n' && c != '\r') {
            raw += c;
            continue;
        }
        if (isEscape && data[i + 1] == '\\') {
            raw += data[++i];
            continue;
        }
        flush();
        bool const isBreak = !isEscape || data[i + 1] == '&';
        text += isBreak ? "\n" : SoftHyphenText;
        if (isEscape) ++i;
    }
    flush();
    return text;
}

/// Line ends of any kind as line feeds: a carriage return with the line feed behind it is one.
std::string WithLineFeeds(std::string_view text) {
    std::string lines;
    for (std::size_t i = 0; i < text.size(); ++i) {
        if (text[i] == '\r' && i + 1 < text.size() && text[i + 1] == '\n') continue;
        lines += text[i] == '\r' ? '\n' : text[i];
    }
    return lines;
}

}  // namespace

std::string FieldBlockText(std::string_view data, ContextProcessor const& processor) {
    // The second byte of a character may look like an escape, so these characters are read first.
    if (processor.at(ZplContextKeys::CodePageConverter).ReadsByteSequences())
        return ReadEscapes(FieldText(data, processor), [](std::string const& text) { return text; });
    return ReadEscapes(data, [&processor](std::string const& bytes) { return FieldText(bytes, processor); });
}

std::string TextBlockText(std::string_view text) {
    std::string plain;
    while (!text.empty()) {
        auto const open = text.find('<');
        plain += text.substr(0, open);
        if (open == std::string_view::npos) break;
        text.remove_prefix(open);
        auto const close = text.find('>', 1);
        if (close == std::string_view::npos) {
            plain += text;
            break;
        }
        auto const sequence = text.substr(1, close - 1);
        if (sequence == "<" || sequence == "< ") plain += '<';
        text.remove_prefix(close + 1);
    }
    return WithLineFeeds(plain);
}

}  // namespace ZplCore::Sketching
