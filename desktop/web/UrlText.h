#pragma once

#include <map>
#include <optional>
#include <string>
#include <string_view>

/// Percent-encoded text (RFC 3986, 2.1) as the bytes that it stands for; nothing if an escape is cut or no number.
std::optional<std::string> DecodePercent(std::string_view text);

/// The parameters of a query, by name. The first of a name counts, and a plus stands for a blank. Nothing if an escape
/// cannot be read.
std::optional<std::map<std::string, std::string, std::less<>>> ReadQuery(std::string_view query);

/// What stands before the next `separator`; takes both off `text`.
std::string_view TakeUpTo(std::string_view& text, char separator);
