#pragma once

#include <array>
#include <cstdint>
#include <optional>
#include <string_view>

#include "frontend/stream/Encoding.h"

/// Turns bytes into code points by the encoding in force, and notices byte order marks anywhere in the stream. Holds
/// the last four bytes at most; they stay when the caller changes the encoding.
class UtfStateMachine {
public:
    struct Result {
        Encoding encoding;   ///< the encoding now in force
        char32_t character;  ///< meaningful only if `complete`
        bool complete;       ///< whether a character is complete
    };

    Result Consume(char byte, Encoding encoding, bool inBinaryMode);

    /// The encoding whose byte order mark the newest bytes form.
    std::optional<Encoding> HaveReadBom() const;
    /// Whether exactly the first two bytes of the UTF-8 mark are held.
    bool CouldBeUtf8Bom() const;

    bool IsEmpty() const { return size_ == 0; }
    /// Notes a run of single-byte characters without looking at each: what Consume would leave behind in
    /// Encoding::SingleByte, provided that no byte order mark ends inside the run.
    void SkipSingleBytes(std::string_view run);

private:
    Result ConsumeUtf16(Encoding encoding);
    Result ConsumeUtf8();
    void Push(std::uint8_t byte);

    std::array<std::uint8_t, 4> bytes_{};  // oldest first
    std::uint8_t size_ = 0;
};
