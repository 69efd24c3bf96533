#pragma once

#include <string>
#include <string_view>

/// The bytes of a base64 text (RFC 4648, section 4). White space is skipped; decoding ends at the padding or at the
/// first character outside the alphabet. Bits that do not fill a byte are dropped.
std::string DecodeBase64(std::string_view text);

/// The base64 text of `bytes`, padded, without line ends.
std::string EncodeBase64(std::string_view bytes);
