#pragma once

#include <string_view>

#include "frontend/stream/Ascii.h"
#include "frontend/stream/ZplParse.h"

/// The letter of a parameter as a capital, if it is one of `allowed`; otherwise `otherwise`.
inline char UpperLetter(ZplCommand const& command, std::size_t index, std::string_view allowed, char otherwise) {
    char const letter = ToAsciiUpper(ZplParse<char>(command, index).ValueOr(otherwise));
    return allowed.find(letter) == allowed.npos ? otherwise : letter;
}
