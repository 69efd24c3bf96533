#pragma once

#include <cstddef>
#include <string>
#include <string_view>

/// As many bytes of data, names and numbers are told; a sentence is read by people.
constexpr std::size_t LongestQuoted = 60;

/// Text of a stream as it stands in a sentence: in double quotes, and past `LongestQuoted` bytes cut between
/// characters, with three dots for the rest.
std::string Quoted(std::string_view text);
