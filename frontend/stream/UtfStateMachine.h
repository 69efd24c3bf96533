#pragma once

#include <array>
#include <cstdint>
#include <optional>
#include <string_view>

#include "frontend/stream/Encoding.h"

/// Turns bytes into code points by the encoding in force, and notices byte order marks anywhere in the stream. Holds
/// the last four bytes at most. They are forgotten when the caller hands in another encoding than the one it was given
/// back last: no mark can straddle such a change, and they would swallow the first character behind it.
class UtfStateMachine {
public:
    struct Result {
        Encoding encoding;   ///< the encoding now in force
        char32_t character;  ///< meaningful only if `complete`
        bool complete;       ///< whether a character is complete
        unsigned bytesBack;  ///< how many bytes ago the character began, the byte just read included
    };

    Result Consume(char byte, Encoding encoding, bool inBinaryMode);

    /// The encoding whose byte order mark the newest bytes form.
    std::optional<Encoding> HaveReadBom() const;
    /// Whether exactly the first two bytes of the UTF-8 mark are held.
    bool CouldBeUtf8Bom() const;

    /// How many of the newest bytes may still become a character, or a byte order mark, with what follows.
    std::size_t UnfinishedBytes(Encoding encoding) const;

    /// Whether no bytes are held that count with the next ones in `encoding`.
    bool IsEmpty(Encoding encoding) const { return size_ == 0 || encoding != encoding_; }
    /// Notes a run of characters of one byte each without looking at each: what Consume would leave behind in
    /// Encoding::SingleByte, or with nothing held in Encoding::Utf8, provided that no byte order mark ends in the run.
    void SkipRun(std::string_view run, Encoding encoding);

private:
    Result ConsumeUtf16(Encoding encoding);
    Result ConsumeUtf8();
    void ForgetBytesOfOthers(Encoding encoding);
    void Push(std::uint8_t byte);

    std::array<std::uint8_t, 4> bytes_{};  // oldest first
    std::uint8_t size_ = 0;
    Encoding encoding_ = Encoding::SingleByte;  // given back last
};
