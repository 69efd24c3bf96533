#pragma once

#include <cstdint>
#include <string>
#include <string_view>

#include "frontend/stream/Encoding.h"

/// The character set in force: a set number of the language (0 to 36), how bytes form characters, and which positions
/// show which other character. Converts field data to UTF-8.
class ZplCodePageConverter {
public:
    ZplCodePageConverter() = default;
    /// Set 0 if `codePage` stands for no set.
    explicit ZplCodePageConverter(unsigned codePage) { SelectCodePage(codePage); }

    unsigned CodePage() const { return codePage_; }
    Encoding GetEncoding() const { return encoding_; }
    void SetEncoding(Encoding encoding) { encoding_ = encoding; }
    /// The encoding that goes with the set, whatever a byte order mark has made of it.
    Encoding EncodingOfCodePage() const;

    /// Whether each byte is a character of a set without moved ones.
    bool ReadsSingleBytes() const;
    /// Whether characters of the set in force may take several bytes, in another way than those of Unicode's encodings.
    bool ReadsByteSequences() const;
    /// Whether the set in force reads two bytes a character, whatever they are.
    bool ReadsBytePairs() const;

    /// Takes a set number and with it the encoding that goes with the set. False for a number that stands for no set;
    /// nothing changes then.
    bool SelectCodePage(unsigned codePage);
    /// Shows the character of position `source` at position `target`, in the sets of single bytes. The space cannot be
    /// moved.
    void Remap(std::uint8_t source, std::uint8_t target);
    void ClearRemaps() { remap_.clear(); }

    /// `data` in the set in force, as UTF-8. Bytes that stand for nothing there are left out.
    std::string ConvertThroughCodePage(std::string_view data) const;

    friend bool operator==(ZplCodePageConverter const&, ZplCodePageConverter const&) = default;

private:
    unsigned codePage_ = 0;
    Encoding encoding_ = Encoding::SingleByte;
    std::string remap_;  // 256 bytes, empty while nothing is remapped
};
