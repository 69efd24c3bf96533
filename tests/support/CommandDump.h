#pragma once

#include <algorithm>
#include <string>
#include <string_view>

#include "frontend/stream/ZplCommand.h"

/// The bytes of `text` in hexadecimal: "5E 0D".
inline std::string HexDump(std::string_view text) {
    constexpr char Digits[] = "0123456789ABCDEF";
    std::string dump;
    for (unsigned char const byte : text) {
        if (!dump.empty()) dump += ' ';
        dump += Digits[byte >> 4];
        dump += Digits[byte & 15];
    }
    return dump;
}

/// A command as one line: `^FO[10][20]`. A parameter with a byte that is not printable shows in hexadecimal.
inline std::string Dump(ZplCommand const& command) {
    auto const isPrintable = [](char c) { return c >= ' ' && c <= '~'; };
    std::string dump = (command.isControl ? "~" : "^") + command.command;
    for (std::string_view const parameter : command.parameters) {
        bool const plain = std::all_of(parameter.begin(), parameter.end(), isPrintable);
        dump += '[' + (plain ? std::string(parameter) : HexDump(parameter)) + ']';
    }
    return dump;
}
