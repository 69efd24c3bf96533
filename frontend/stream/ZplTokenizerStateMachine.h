#pragma once

#include <cstdint>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

#include "frontend/stream/Encoding.h"
#include "frontend/stream/ZplCommand.h"

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

    /// Hands out what was collected and goes on in state `next`.
    std::unique_ptr<ZplCommand> Reset(ZplTokenizerState next);
    /// Hands out the command that is still open, or null; the state stays as it is.
    std::unique_ptr<ZplCommand> Flush();
    /// Hands out a command that a host may wait for before it sends anything more, or null.
    std::unique_ptr<ZplCommand> HandleEagerReturnCommand();

    bool IsInBinaryMode() const { return state_ == ZplTokenizerState::Binary; }
    ZplTokenizerState State() const { return state_; }

private:
    friend class ZplTokenizer;  // copies runs of plain parameter bytes and binary runs in one piece

    ZplTokenizerState state_ = ZplTokenizerState::Idle;
    std::string command_;
    bool isControl_ = false;
    std::vector<std::string> parameters_;
    std::uint32_t binaryRemaining_ = 0;
};
