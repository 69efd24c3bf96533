#pragma once

#include <string>
#include <string_view>

/// What the bytes from FirstCode128Byte on stand for in text that is made for Code 128.
inline constexpr std::string_view Code128Names[] = {"<FNC3>", "<FNC2>", "<SHIFT>",  "<C>",      "<B>",
                                                    "<A>",    "<FNC1>", "<startA>", "<startB>", "<startC>"};
inline constexpr unsigned FirstCode128Byte = 0xE0;

/// A text with the bytes for the names in it.
inline std::string WithCode128Bytes(std::string text) {
    unsigned byte = FirstCode128Byte;
    for (auto const name : Code128Names) {
        for (std::size_t at; (at = text.find(name)) != text.npos;)
            text.replace(at, name.size(), 1, static_cast<char>(byte));
        ++byte;
    }
    return text;
}
