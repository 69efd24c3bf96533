#pragma once

#include <cstdint>
#include <string>
#include <vector>

#include "printengine/src/scripts/CharacterKinds.h"

namespace PrintEngine::Text {

/// Characters of a text that are set together.
struct TextRun {
    enum class Kind : std::uint8_t {
        Plain,   ///< one after another, each in its own place
        Word,    ///< one after another, all by one face
        Shaped,  ///< by the module of scripts, all by one face
    };
    std::uint32_t begin = 0;
    std::uint32_t end = 0;
    Kind kind = Kind::Plain;
    Scripts::Script script = Scripts::Script::None;
    std::uint8_t level = 0;  ///< of embedding: odd ones run to the left
};

/// Embedding levels of a paragraph (UAX 9), one for each character; none if all of it runs to the right, or if nobody
/// knows.
struct TextLevels {
    std::vector<std::uint8_t> levels;
    bool isRightToLeft = false;  ///< the paragraph
};
enum class ParagraphDirection : std::int8_t { ByFirstLetter = -1, LeftToRight, RightToLeft };
/// Brings brackets of what runs to the left to their mirrors.
TextLevels FindLevels(std::u32string& text, ParagraphDirection direction);

/// Parts a text where script or level changes, and around blanks. `levels` has one for each character. Invisible
/// characters are in no run but a shaped one.
std::vector<TextRun> FindRuns(std::u32string const& text, std::vector<std::uint8_t> const& levels);

/// Brings runs from the order in which they are read to that in which they stand from left to right (UAX 9, L2).
void OrderRuns(std::vector<TextRun>& runs);

}  // namespace PrintEngine::Text
