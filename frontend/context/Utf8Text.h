#pragma once

#include <cstddef>
#include <string>
#include <string_view>

/// Text in UTF-8.

/// A copy of `text` that is valid: each invalid sequence, as long as its first byte says or as bytes remain, is
/// replaced by U+FFFD, or left out if `leaveOut`.
std::string HandleInvalidUTF8(std::string_view text, bool leaveOut = false);

/// The number of code points of valid text.
std::size_t CountCodePoints(std::string_view text);

/// The code points of `text`; what is invalid comes out as U+FFFD, as by HandleInvalidUTF8.
std::u32string ToCodePoints(std::string_view text);
std::string FromCodePoints(std::u32string_view codePoints);
