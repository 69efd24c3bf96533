#pragma once

#include <string>
#include <string_view>
#include <vector>

/// The parts of a text between bars.
inline std::vector<std::string> Parts(std::string_view text) {
    std::vector<std::string> parts(1);
    for (char const c : text) c == '|' ? parts.emplace_back() : parts.back() += c;
    return parts;
}

inline std::string Repeated(std::size_t times, std::string_view text) {
    std::string all;
    while (times-- > 0) all += text;
    return all;
}

/// How often a part stands in a text.
inline unsigned CountOf(std::string_view part, std::string_view text) {
    unsigned count = 0;
    for (auto at = text.find(part); at != text.npos; at = text.find(part, at + 1)) ++count;
    return count;
}
