#pragma once

#include <cstdint>
#include <memory>
#include <string_view>
#include <utility>

#include "frontend/stream/Encoding.h"
#include "frontend/stream/UtfStateMachine.h"
#include "frontend/stream/ZplCommand.h"
#include "frontend/stream/ZplTokenizerStateMachine.h"

/// Turns a stream of bytes, in chunks of any size, into commands, one at a time. All state survives between chunks.
class ZplTokenizer {
public:
    /// Reads `input` from `position` (bytes, advanced past all that is consumed) up to the byte that completes a
    /// command, or to the end. Gives the encoding now in force, and the command or null. With `flushAtEnd` the end of
    /// `input` completes a command that is still open.
    std::pair<Encoding, std::unique_ptr<ZplCommand>> TokenizeString(std::string_view input, std::size_t& position,
                                                                    char formatPrefix, char controlPrefix,
                                                                    char delimiter, bool flushAtEnd, Encoding encoding);

    /// Where the command delivered last was opened, in bytes since the tokenizer was made: the place of its prefix.
    std::uint64_t CommandOffset() const { return deliveredOffset_; }
    /// Bytes read since the tokenizer was made.
    std::uint64_t ConsumedBytes() const { return consumed_; }
    /// Bytes are counted from `offset` on: what follows is the rest of a longer stream.
    void StartAt(std::uint64_t offset) { consumed_ = offset; }

private:
    struct Syntax {
        char32_t formatPrefix;
        char32_t controlPrefix;
        char32_t delimiter;
    };

    std::unique_ptr<ZplCommand> ConsumeByte(char byte, Syntax const& syntax, Encoding& encoding);
    std::unique_ptr<ZplCommand> ConsumeAscii(std::string_view input, std::size_t& position, Syntax const& syntax,
                                             Encoding encoding);
    std::unique_ptr<ZplCommand> ConsumeBinary(std::string_view input, std::size_t& position);
    std::unique_ptr<ZplCommand> ConsumeCharacter(char32_t character, std::uint64_t offset, Syntax const& syntax,
                                                 Encoding encoding);

    UtfStateMachine utf_;
    ZplTokenizerStateMachine machine_;
    std::uint64_t consumed_ = 0;  // bytes
    std::uint64_t openOffset_ = 0;
    std::uint64_t deliveredOffset_ = 0;
};
