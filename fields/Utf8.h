#pragma once

#include <cstddef>
#include <string>
#include <string_view>

/// Text in UTF-8. All but HandleInvalidUTF8 take valid text.
namespace ZplCore::TextProcessing {

/// `text` with each invalid sequence, as long as its first byte says or as bytes remain, replaced by U+FFFD.
std::string HandleInvalidUTF8(std::string_view text);

std::u32string ToCodePoints(std::string_view text);
std::string FromCodePoints(std::u32string_view codePoints);
std::size_t CountCodePoints(std::string_view text);

}  // namespace ZplCore::TextProcessing
