#pragma once

#include <cstdint>
#include <string_view>

/// Which characters need more than one picture after another, from left to right.
namespace PrintEngine::Scripts {

enum class CharacterKind : std::uint8_t {
    Plain,          ///< has one picture, whatever stands beside it
    Invisible,      ///< joiners, marks of direction, soft hyphens: neither ink nor room of its own
    Turning,        ///< invisible too, and makes what stands beside it run from right to left
    Mark,           ///< sits on the letter before it
    PlainGreek,     ///< Greek that most fonts have
    AccentedGreek,  ///< Greek that many fonts lack; its word is to be of one face
    Ideographic,    ///< Chinese, Japanese and Korean: plain, but lines may end beside it
    Shaped,         ///< its picture depends on its neighbours, or it runs from right to left
};

/// Scripts of shaped characters.
enum class Script : std::uint8_t {
    None,
    Arabic,
    Bengali,
    Devanagari,
    Gujarati,
    Gurmukhi,
    Hangul,  ///< in its parts; whole syllables are plain
    Hebrew,
    Kannada,
    Khmer,
    Lao,
    Malayalam,
    Myanmar,
    Oriya,
    Sinhala,
    Tamil,
    Telugu,
    Thai,
    Other,
};

struct CharacterTraits {
    CharacterKind kind = CharacterKind::Plain;
    Script script = Script::None;
};

/// Look-up in the table, for characters from U+00A0 on.
CharacterTraits LookUp(char32_t character);

inline CharacterTraits TraitsOf(char32_t character) {
    // Latin and Cyrillic, but for the soft hyphen.
    if ((character < 0x300 && character != 0xAD) || (character >= 0x400 && character < 0x483)) return {};
    // Chinese, and the syllables of Korean.
    bool const isIdeographic =
        (character >= 0x4E00 && character <= 0x9FFF) || (character >= 0xAC00 && character <= 0xD7A3);
    return isIdeographic ? CharacterTraits{CharacterKind::Ideographic} : LookUp(character);
}

constexpr bool IsInvisibleKind(CharacterKind kind) {
    return kind == CharacterKind::Invisible || kind == CharacterKind::Turning;
}

/// Whether a character moves no pen and leaves no ink.
inline bool IsInvisible(char32_t character) { return IsInvisibleKind(TraitsOf(character).kind); }

/// Whether a character may run to the left, or make others do so.
inline bool MayTurn(char32_t character) {
    auto const [kind, script] = TraitsOf(character);
    return kind == CharacterKind::Turning || script == Script::Arabic || script == Script::Hebrew ||
           script == Script::Other;
}

/// Whether words follow each other without blanks where a character stands.
inline bool IsWrittenWithoutBlanks(char32_t character) {
    auto const [kind, script] = TraitsOf(character);
    return kind == CharacterKind::Ideographic || script == Script::Thai || script == Script::Lao ||
           script == Script::Khmer || script == Script::Myanmar || script == Script::Other;
}

/// Whether a character cannot be drawn by itself, one after another.
inline bool IsSetWithOthers(char32_t character) {
    using enum CharacterKind;
    auto const kind = TraitsOf(character).kind;
    return kind == Turning || kind == Mark || kind == AccentedGreek || kind == Shaped;
}

/// Whether a text (UTF-8) holds any of these.
bool NeedsLayout(std::string_view text);

}  // namespace PrintEngine::Scripts
