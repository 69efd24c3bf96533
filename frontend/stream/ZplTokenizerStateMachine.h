#pragma once

#include <cstddef>
#include <cstdint>
#include <memory>
#include <string>
#include <string_view>

#include "frontend/stream/Encoding.h"
#include "frontend/stream/ZplCommand.h"

struct CommandIdentifier;

enum class ZplTokenizerState : std::uint32_t {
    Idle = 0,        ///< between commands; everything but a prefix is thrown away
    Parameters = 1,  ///< the letters are read, parameters are being collected
    Command = 2,     ///< a prefix was seen, the letters are being read
    Binary = 3,      ///< a counted run of raw bytes is being copied into the last parameter
};

/// Builds commands from code points.
class ZplTokenizerStateMachine {
public:
    /// Takes one code point; gives the command that it completes, or null.
    std::unique_ptr<ZplCommand> Consume(char32_t character, char32_t formatPrefix, char32_t controlPrefix,
                                        char32_t delimiter, Encoding encoding);

    /// Takes a run at the start of `text` of 7-bit characters that deliver nothing and leave the state as it is, and
    /// gives its length (bytes, also 0): the same as Consume with each, in one piece. Only for encodings in which such
    /// a byte is a character.
    std::size_t ConsumePlainRun(std::string_view text, char32_t formatPrefix, char32_t controlPrefix,
                                char32_t delimiter);
    /// Takes bytes of a counted binary run, at most as many as BinaryRemaining; gives the command that they complete,
    /// or null: the same as Consume with each, in one piece.
    std::unique_ptr<ZplCommand> ConsumeBinaryRun(std::string_view bytes);

    /// Hands out what was collected and goes on in state `next`.
    std::unique_ptr<ZplCommand> Reset(ZplTokenizerState next);
    /// Hands out the command that is still open, or null; the state stays as it is.
    std::unique_ptr<ZplCommand> Flush();
    /// Hands out a command that a host may wait for before it sends anything more, or null.
    std::unique_ptr<ZplCommand> HandleEagerReturnCommand();

    /// From now on only the first parameters of a command and their beginnings are kept: enough to know where commands
    /// begin and end, and what the short ones say. Only what tells how to read on is kept whole.
    void KeepBeginnings() { keepsBeginnings_ = true; }

    bool IsInBinaryMode() const { return state_ == ZplTokenizerState::Binary; }
    ZplTokenizerState State() const { return state_; }
    std::uint32_t BinaryRemaining() const { return binaryRemaining_; }
    /// Of the command that is open.
    std::string_view Letters() const { return open_.command; }
    bool IsControl() const { return open_.isControl; }
    /// The first of its parameters so far that is not empty; empty if there is none.
    std::string_view FirstText() const;

private:
    std::unique_ptr<ZplCommand> ConsumeLetter(char32_t character);
    std::unique_ptr<ZplCommand> ConsumeParameterCharacter(char32_t character, char32_t delimiter, Encoding encoding);
    std::unique_ptr<ZplCommand> TakeCommand();
    void EnterBinaryMode();
    void Append(std::string_view text);
    void StartParameter();
    bool TellsHowToReadOn() const;
    bool FitsAnother(std::size_t bytes);

    ZplTokenizerState state_ = ZplTokenizerState::Idle;
    ZplCommand open_;
    bool keepsBeginnings_ = false;
    std::uint32_t binaryRemaining_ = 0;
    CommandIdentifier const* eager_ = nullptr;  // the row of the command whose letters are read; null: none
};
