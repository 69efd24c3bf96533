#include "foundation/Quoted.h"

std::string Quoted(std::string_view text) {
    if (text.size() <= LongestQuoted) return '"' + std::string(text) + '"';
    std::size_t end = LongestQuoted;
    auto const isRest = [](char byte) { return (static_cast<unsigned char>(byte) & 0xC0U) == 0x80; };
    // No further than UTF-8 goes: other bytes may look like its rests.
    constexpr std::size_t LongestRest = 3;
    while (end > LongestQuoted - LongestRest && isRest(text[end])) --end;
    return '"' + std::string(text.substr(0, end)) + "...\"";
}
