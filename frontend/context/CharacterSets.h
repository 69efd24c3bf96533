#pragma once

#include <array>
#include <cstdint>
#include <string>
#include <string_view>

#include "frontend/stream/Encoding.h"
#include "frontend/stream/ZplCommand.h"

/// A numbered character set of the language.
struct CharacterSet {
    unsigned number;
    Encoding encoding;
    /// How the C library's iconv calls the set; empty for the forms of Unicode, which the tokenizer has turned into
    /// UTF-8 already.
    char const* iconvName;
    bool isMultiByte;  ///< whether a character may take several bytes
    /// What the national variant shows at the positions NationalPositions; empty: what the set has there.
    std::u32string_view nationalCharacters;
};

/// The positions that ISO 646 leaves to its national variants.
inline constexpr std::array<std::uint8_t, 12> NationalPositions{0x23, 0x24, 0x40, 0x5B, 0x5C, 0x5D,
                                                                0x5E, 0x60, 0x7B, 0x7C, 0x7D, 0x7E};

/// The UTF-8 text of each position of a set of single bytes; empty where the set has no character.
using CharacterTable = std::array<std::string, 256>;

/// The set of that number, or null if the number is reserved.
CharacterSet const* FindCharacterSet(unsigned number);

/// The set that a `^CI` names; null if it names none, or in a number that cannot be used.
CharacterSet const* FindNamedCharacterSet(ZplCommand const& command);

/// The table of a set of single bytes; made at the first use, kept for good. Any thread may call this.
CharacterTable const& TableOf(CharacterSet const& set);

/// `data` of a multi-byte set as UTF-8. Bytes that form no character are left out. Any thread may call this.
std::string ConvertMultiByte(CharacterSet const& set, std::string_view data);
