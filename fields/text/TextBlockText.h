#pragma once

#include <string>
#include <string_view>

#include "frontend/context/ContextProcessor.h"

/// From the data of a block to the text that is broken into lines: UTF-8 with line feeds and soft hyphens.
namespace ZplCore::Sketching {

/// The text of a field block. `\&` is a line feed, `\\` a backslash, and a backslash before anything else a soft
/// hyphen. Escapes are read in the raw bytes, since a set of single bytes can show something else in the place of the
/// backslash; in sets of several bytes a character, between characters.
std::string FieldBlockText(std::string_view data, ContextProcessor const& processor);

/// The text of a text block, from UTF-8: `<<>` and `<< >` stand for a less-than sign, and other sequences
/// between the two brackets for nothing. A bracket that is never closed is text. A line ends at a carriage return, a
/// line feed, or the pair.
std::string TextBlockText(std::string_view text);

}  // namespace ZplCore::Sketching
