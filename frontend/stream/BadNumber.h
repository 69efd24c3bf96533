#pragma once

#include <stdexcept>
#include <string>
#include <utility>

/// What is known of a number that cannot be used: it travels with the standard exception that leaves the parser.
struct BadNumber {
    std::string text;     ///< the parameter that should hold a number
    std::string command;  ///< with its prefix, as `^FO`; empty until somebody knows it

    explicit BadNumber(std::string parameter) : text(std::move(parameter)) {}
};

class UnreadableNumber : public std::invalid_argument, public BadNumber {
public:
    UnreadableNumber(char const* conversion, std::string text)
        : std::invalid_argument(conversion), BadNumber(std::move(text)) {}
};

class NumberOutOfRange : public std::out_of_range, public BadNumber {
public:
    NumberOutOfRange(char const* conversion, std::string text)
        : std::out_of_range(conversion), BadNumber(std::move(text)) {}
};
