#pragma once

#include <optional>
#include <string>
#include <string_view>

/// Base64 (RFC 4648, section 4: the alphabet with + and /, padded with =).
namespace Base64 {

/// Nothing if the length is not a multiple of 4, or a character is not of the alphabet or stands behind padding.
std::optional<std::string> Decode(std::string_view text);

/// What can be read of text that people have folded or cut: white space is skipped, and decoding ends at the padding or
/// at the first character outside the alphabet. Bits that do not fill a byte are dropped.
std::string DecodeLeniently(std::string_view text);

std::string Encode(std::string_view bytes);

}  // namespace Base64
