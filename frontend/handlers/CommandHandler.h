#pragma once

#include <cstdint>
#include <string_view>

#include "frontend/context/Context.h"
#include "frontend/context/ContextProcessor.h"
#include "frontend/stream/BadNumber.h"
#include "frontend/stream/ZplCommand.h"

/// Which prefix a command needs.
enum class SyntacticType { Format = 0, Control = 1, Either = 2 };

/// When a command runs.
enum class ProcessingType {
    Deferred = 0,            ///< recorded, and run when the label is drawn
    Immediate = 1,           ///< as it is read
    ImmediateIfControl = 2,  ///< as it is read with the control prefix, otherwise recorded
};

/// The id of a command of n bytes: byte i shifted left by 8 (n - 1 - i) bits, summed. `XA` is 0x5841. The shifts are
/// done on 32-bit values, so of a longer text the last four bytes count.
constexpr std::uint64_t CommandId(std::string_view letters) {
    std::uint32_t id = 0;
    for (char const letter : letters) id = (id << 8) + static_cast<std::uint8_t>(letter);
    return id;
}

/// One command of the language. A handler holds no state of a stream: it reads its parameters and writes contexts.
class CommandHandler {
public:
    virtual ~CommandHandler() = default;

    virtual std::uint64_t GetCommandId() const = 0;
    virtual SyntacticType GetSyntacticType() const { return SyntacticType::Format; }
    virtual ProcessingType GetProcessingType() const { return ProcessingType::Deferred; }
    /// True if an immediate command is also recorded in the format. (The spelling is part of the interface.)
    virtual bool IsAdditonalSaveType() const { return false; }
    /// Does the work. `current` is the context on top of the stack. Nobody reads the result.
    virtual bool HandleCommand(Context& current, ZplCommand const& command, ContextProcessor& processor) = 0;
};

/// Runs a command in the context on top of the stack. A number that cannot be used leaves with the command's name.
inline void RunCommand(CommandHandler& handler, ZplCommand const& command, ContextProcessor& processor) {
    try {
        handler.HandleCommand(processor.GetCurrentContext(), command, processor);
    } catch (BadNumber& bad) {
        // Whatever the session's characters are: this is for people.
        bad.command = (command.isControl ? '~' : '^') + command.command;
        throw;
    }
}

/// States what a handler is in one line: letters, prefix, timing, and whether it is also recorded.
template <std::uint64_t Id, SyntacticType Syntax = SyntacticType::Format,
          ProcessingType Processing = ProcessingType::Deferred, bool AlsoRecorded = false>
class HandlerFor : public CommandHandler {
public:
    std::uint64_t GetCommandId() const override { return Id; }
    SyntacticType GetSyntacticType() const override { return Syntax; }
    ProcessingType GetProcessingType() const override { return Processing; }
    bool IsAdditonalSaveType() const override { return AlsoRecorded; }
};
