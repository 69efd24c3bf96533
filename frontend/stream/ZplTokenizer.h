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
    /// command, or to the end. Gives the encoding now in force, and the command, or null. With `flushAtEnd` the end of
    /// `input` completes a command that is still open.
    std::pair<Encoding, std::unique_ptr<ZplCommand>> TokenizeString(std::string_view input, std::size_t& position,
                                                                    char formatPrefix, char controlPrefix,
                                                                    char delimiter, bool flushAtEnd, Encoding encoding);

    /// Where the command delivered last was opened, in bytes since the tokenizer was made: the place of its prefix.
    std::uint64_t CommandOffset() const { return deliveredOffset_; }
    /// Bytes read since the tokenizer was made.
    std::uint64_t ConsumedBytes() const { return consumed_; }

    /// The command that is open at present, as far as it has been read.
    struct OpenCommand {
        ZplTokenizerState state;
        std::string_view letters;    ///< upper case; all of them are there in state Parameters
        std::string_view parameter;  ///< the first that is not empty
        bool isControl;
        std::uint64_t offset;  ///< of its prefix, in bytes since the tokenizer was made
    };
    /// In state Idle there is none, and only `state` counts. The views hold until more is read.
    OpenCommand Open() const {
        return {machine_.State(), machine_.Letters(), machine_.FirstText(), machine_.IsControl(), openOffset_};
    }
    /// How many of the bytes read last may still become a character or a byte order mark together with the next ones.
    std::size_t UnfinishedBytes(Encoding encoding) const { return utf_.UnfinishedBytes(encoding); }
    /// From now on only the beginnings of commands are kept, which takes little memory whatever the stream.
    void KeepBeginnings() { machine_.KeepBeginnings(); }

    /// Bytes are counted from `offset` on: what follows is the rest of a longer stream.
    void StartAt(std::uint64_t offset) { consumed_ = offset; }

private:
    struct Syntax {
        char32_t formatPrefix;
        char32_t controlPrefix;
        char32_t delimiter;
    };

    void NoteEncoding(Encoding encoding);
    std::unique_ptr<ZplCommand> ConsumeByte(char byte, Syntax const& syntax, Encoding& encoding);
    std::unique_ptr<ZplCommand> ConsumeAscii(std::string_view input, std::size_t& position, Syntax const& syntax,
                                             Encoding encoding);
    std::unique_ptr<ZplCommand> ConsumeBinary(std::string_view input, std::size_t& position);
    std::unique_ptr<ZplCommand> ConsumeCharacter(char32_t character, std::uint64_t offset, Syntax const& syntax,
                                                 Encoding encoding);

    /// Where what stands before `end`, blanks and line ends left out, ends. `input` is read up to `position`; both ends
    /// are bytes since the tokenizer was made.
    std::uint64_t TrimmedEnd(std::string_view input, std::size_t position, std::uint64_t end, Encoding encoding) const;

    UtfStateMachine utf_;
    ZplTokenizerStateMachine machine_;
    std::uint64_t consumed_ = 0;  // bytes
    std::uint64_t openOffset_ = 0;
    std::uint64_t deliveredOffset_ = 0;
    std::uint64_t chunkEnd_ = 0;  // of the chunks before, without what is trimmed
    // Where the last character that is no blank ends, in the encodings of two bytes, and where it did before the prefix
    // that was read last.
    std::uint64_t wideEnd_ = 0;
    std::uint64_t wideEndBeforePrefix_ = 0;
    Encoding encoding_ = Encoding::SingleByte;  // in force at present
};
