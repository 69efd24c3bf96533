#include "desktop/web/UrlText.h"

#include <algorithm>

namespace {

int DigitOf(char c) {
    if (c >= '0' && c <= '9') return c - '0';
    if (c >= 'a' && c <= 'f') return c - 'a' + 10;
    if (c >= 'A' && c <= 'F') return c - 'A' + 10;
    return -1;
}

}  // namespace

std::optional<std::string> DecodePercent(std::string_view text) {
    std::string bytes;
    bytes.reserve(text.size());
    for (std::size_t i = 0; i < text.size(); ++i) {
        if (text[i] != '%') {
            bytes += text[i];
            continue;
        }
        if (text.size() - i < 3) return std::nullopt;
        int const high = DigitOf(text[i + 1]);
        int const low = DigitOf(text[i + 2]);
        if (high < 0 || low < 0) return std::nullopt;
        bytes += static_cast<char>(high * 16 + low);
        i += 2;
    }
    return bytes;
}

std::optional<std::map<std::string, std::string, std::less<>>> ReadQuery(std::string_view query) {
    std::map<std::string, std::string, std::less<>> parameters;
    while (!query.empty()) {
        std::string pair(TakeUpTo(query, '&'));
        if (pair.empty()) continue;
        std::replace(pair.begin(), pair.end(), '+', ' ');
        std::string_view rest = pair;
        auto const name = DecodePercent(TakeUpTo(rest, '='));
        auto const value = DecodePercent(rest);
        if (!name || !value) return std::nullopt;
        parameters.emplace(*name, *value);
    }
    return parameters;
}

std::string_view TakeUpTo(std::string_view& text, char separator) {
    auto const end = std::min(text.find(separator), text.size());
    auto const part = text.substr(0, end);
    text.remove_prefix(std::min(end + 1, text.size()));
    return part;
}
