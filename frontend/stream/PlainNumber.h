#pragma once

#include <cerrno>
#include <clocale>
#include <cstdlib>
#include <string>
#include <type_traits>

#include "frontend/stream/BadNumber.h"

/// The standard conversion of the beginning of a text to float or double in the C locale: the point is a point whatever
/// the process's locale says. Throws UnreadableNumber for a text that is no number, and NumberOutOfRange; they name
/// `parameter`, of which the text is a part.
template <typename T>
T ToPlainNumber(std::string const& text, std::string const& parameter) {
    static locale_t const plain = ::newlocale(LC_NUMERIC_MASK, "C", nullptr);
    constexpr bool IsFloat = std::is_same_v<T, float>;
    constexpr char const* Name = IsFloat ? "stof" : "stod";
    char* end = nullptr;
    errno = 0;
    T value{};
    if constexpr (IsFloat) {
        value = ::strtof_l(text.c_str(), &end, plain);
    } else {
        value = ::strtod_l(text.c_str(), &end, plain);
    }
    if (end == text.c_str()) throw UnreadableNumber(Name, parameter);
    if (errno == ERANGE) throw NumberOutOfRange(Name, parameter);
    return value;
}
