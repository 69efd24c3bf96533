#include "fields/TextBlockText.h"

#include <algorithm>

#include "fields/TextElementProcessor.h"

namespace ZplCore::Sketching {

std::string FieldBlockText(std::string_view data, ContextProcessor const& processor) {
    constexpr std::string_view SoftHyphenText = "\xC2\xAD";
    std::string text;
    std::string raw;  // bytes not yet read through the character set
    auto const flush = [&] {
        text += FieldText(raw, processor);
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
    std::replace(plain.begin(), plain.end(), '\r', '\n');
    return plain;
}

}  // namespace ZplCore::Sketching
