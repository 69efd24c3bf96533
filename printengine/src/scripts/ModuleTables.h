#pragma once

#include <cstdint>

// What the two modules of the print engine offer. They hold what is to be loaded only when a text needs it, and are
// loaded by name while a program runs: plain data and functions that throw nothing, so that a module and a program made
// by different compilers understand each other. Characters are code points.

extern "C" {

/// A glyph of a shaped text, in the order in which it is drawn, from left to right. Lengths are 1/65536 of an em.
struct ZplShapedGlyph {
    std::uint32_t glyph;      ///< 0 where the face lacks the character
    std::uint32_t character;  ///< place of the first character of its cluster in the text
    std::int32_t advance;
    std::int32_t x;  ///< moves the picture to the right
    std::int32_t y;  ///< moves the picture up
};

/// Changes with everything below.
enum { ZplModuleVersion = 1 };

/// Shaping (HarfBuzz), order (FriBidi), and the fonts of the machine (fontconfig).
struct ZplScriptsModule {
    std::uint32_t version;

    /// A font file for shaping; null if it is none. Shared by threads.
    void* (*openFace)(char const* file);
    void (*closeFace)(void* face);
    /// Shapes the characters [first, first + count) of a text of one script, one direction and one face. Gives the
    /// number of glyphs, of which as many as there is room for are written.
    std::uint32_t (*shape)(void* face, char32_t const* text, std::uint32_t length, std::uint32_t first,
                           std::uint32_t count, int isRightToLeft, ZplShapedGlyph* glyphs, std::uint32_t capacity);
    /// Whether a character of a shaped script is written from right to left.
    int (*runsRightToLeft)(char32_t character);
    /// A letter with the marks behind it, whatever their order, as one character; 0 if there is none.
    char32_t (*compose)(char32_t const* text, std::uint32_t length);
    /// Embedding levels of a paragraph (UAX 9); `direction` is 0 to the right, 1 to the left, -1 by the first letter.
    /// Characters that are mirrored in the other direction become their mirrors. Gives the level of the paragraph, or
    /// -1 if there is no memory.
    int (*order)(char32_t* text, std::uint32_t length, int direction, std::uint8_t* levels);

    /// The best installed outline font that has all of the characters. Gives the length of the path, 0 if there is none
    /// or no room for it.
    std::uint32_t (*findFace)(char32_t const* characters, std::uint32_t count, int isBold, char* path,
                              std::uint32_t capacity);
    /// An installed font file of that name, letter case set aside.
    std::uint32_t (*findFile)(char const* name, char* path, std::uint32_t capacity);
    /// Whether a folder is one of those in which the machine keeps its fonts, as a whole.
    int (*holdsFonts)(char const* folder);
};

/// Where lines may end, and what characters are called (ICU).
struct ZplBreaksModule {
    std::uint32_t version;

    /// For each character of a text 1 if a line may end before it (UAX 14, and words by a dictionary), else 0. Gives 0
    /// if that cannot be told.
    int (*findBreaks)(char32_t const* text, std::uint32_t length, std::uint8_t* mayEnd);
    /// The name of a character in the Unicode standard; gives its length, 0 if it has none.
    std::uint32_t (*name)(char32_t character, char* text, std::uint32_t capacity);
};

using ZplScriptsModuleFunction = ZplScriptsModule const* (*)();
using ZplBreaksModuleFunction = ZplBreaksModule const* (*)();
}
