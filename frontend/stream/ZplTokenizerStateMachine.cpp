#include "frontend/stream/ZplTokenizerStateMachine.h"

#include <utf8.h>

#include <algorithm>
#include <charconv>
#include <iterator>
#include <optional>
#include <utility>

#include "frontend/stream/Ascii.h"
#include "frontend/stream/EagerReturnCommands.h"

namespace {

constexpr std::size_t BinaryCountParameter = 2;  // not the total that stands before it
constexpr std::size_t BinaryDataParameter = 4;

// A host that waits for an effect sends no longer argument. Looking at a longer one, or copying it, at each of its
// characters would take ever longer.
constexpr std::size_t LongestEagerArgument = 256;

bool IsLineEnd(char32_t character) { return character == U'\r' || character == U'\n'; }

// These change the syntax itself, so they take one character, whatever it is, and end without a prefix.
bool TakesOneCharacter(std::string_view command) {
    return command.size() == 2 && command[0] == 'C' && (command[1] == 'T' || command[1] == 'C' || command[1] == 'D');
}

/// The number of raw bytes that follow the parameters so far, if they announce a binary graphic field.
std::optional<std::uint32_t> AnnouncedBinaryCount(std::string_view command, ZplParameters const& parameters) {
    if (command != "GF" || parameters.size() != BinaryDataParameter + 1) return std::nullopt;
    if (parameters[0].empty() || ToAsciiUpper(parameters[0][0]) != 'B') return std::nullopt;
    auto const text = parameters[BinaryCountParameter];
    std::uint32_t count = 0;
    auto const [end, error] = std::from_chars(text.data(), text.data() + text.size(), count);
    if (error != std::errc() || end != text.data() + text.size()) return std::nullopt;
    return std::max<std::uint32_t>(count, 1);
}

}  // namespace

std::unique_ptr<ZplCommand> ZplTokenizerStateMachine::Consume(char32_t character, char32_t formatPrefix,
                                                              char32_t controlPrefix, char32_t delimiter,
                                                              Encoding encoding) {
    if (state_ == ZplTokenizerState::Binary) {
        auto const byte = static_cast<char>(character);
        return ConsumeBinaryRun({&byte, 1});
    }
    // Hosts break lines where they like, amid letters and numbers too.
    if (IsLineEnd(character)) return nullptr;

    if (character == controlPrefix || character == formatPrefix) {
        std::unique_ptr<ZplCommand> finished;
        if (state_ == ZplTokenizerState::Parameters) {
            finished = Reset(ZplTokenizerState::Command);
        } else {
            // A prefix before all letters are there drops what has been begun.
            command_.clear();
            parameters_.clear();
            isOverlong_ = false;
            state_ = ZplTokenizerState::Command;
        }
        // Behind Reset, which hands out the command before with the prefix that it had.
        isControl_ = character == controlPrefix;
        return finished;
    }
    switch (state_) {
        case ZplTokenizerState::Command: return ConsumeLetter(character);
        case ZplTokenizerState::Parameters: return ConsumeParameterCharacter(character, delimiter, encoding);
        default: return nullptr;
    }
}

std::unique_ptr<ZplCommand> ZplTokenizerStateMachine::ConsumeLetter(char32_t character) {
    utf8::unchecked::append(ToAsciiUpper(character), std::back_inserter(command_));
    // Counted in bytes: one letter beyond 7 bits is a command by itself, and an unknown one.
    if (command_.size() < 2) return nullptr;
    state_ = ZplTokenizerState::Parameters;
    eager_ = FindEagerReturnCommand(command_, isControl_);
    return HandleEagerReturnCommand();
}

std::unique_ptr<ZplCommand> ZplTokenizerStateMachine::ConsumeParameterCharacter(char32_t character, char32_t delimiter,
                                                                                Encoding encoding) {
    // After a flush there may be no parameter to go on with.
    if (parameters_.empty()) StartParameter();
    bool const takesOne = TakesOneCharacter(command_);
    if (character == delimiter) {
        // In place of the one character a delimiter leaves the parameter empty.
        if (!takesOne) StartParameter();
        EnterBinaryMode();
    } else if (encoding == Encoding::SingleByte && !takesOne) {
        char const byte = static_cast<char>(character);
        Append({&byte, 1});
    } else {
        char text[6];
        char const* const end = utf8::unchecked::append(character, text);
        Append({text, static_cast<std::size_t>(end - text)});
    }
    return takesOne ? Reset(ZplTokenizerState::Idle) : HandleEagerReturnCommand();
}

void ZplTokenizerStateMachine::StartParameter() {
    constexpr std::size_t MostBeginnings = 8;
    if (keepsBeginnings_ && parameters_.size() == MostBeginnings) return;
    if (FitsAnother(sizeof(std::uint32_t))) parameters_.push_back({});
}

void ZplTokenizerStateMachine::Append(std::string_view text) {
    constexpr std::size_t LongestBeginning = 1024;
    if (parameters_.empty()) StartParameter();
    if (keepsBeginnings_ && !parameters_.empty() && !TellsHowToReadOn())
        text =
            text.substr(0, LongestBeginning - std::min(LongestBeginning, parameters_[parameters_.size() - 1].size()));
    if (FitsAnother(text.size())) parameters_.AppendToLast(text);
}

// The number of a character set, and what announces raw bytes: there a digit far behind may be the one that counts.
bool ZplTokenizerStateMachine::TellsHowToReadOn() const {
    if (command_ == "CI") return parameters_.size() == 1;
    return command_ == "GF" && parameters_.size() <= BinaryCountParameter + 1;
}

// What follows a command that is too long is read as before, to the same end, and kept nowhere.
bool ZplTokenizerStateMachine::FitsAnother(std::size_t bytes) {
    if (!isOverlong_ && parameters_.Bytes() + bytes > ZplCommand::LongestParameters) {
        isOverlong_ = true;
        parameters_ = {};
    }
    return !isOverlong_;
}

// The bytes of a binary graphic must not be scanned for prefixes, so the count is read here. The count is no reason to
// allocate: it may be a lie, and the bytes bring their own memory.
void ZplTokenizerStateMachine::EnterBinaryMode() {
    if (auto const count = AnnouncedBinaryCount(command_, parameters_)) {
        state_ = ZplTokenizerState::Binary;
        binaryRemaining_ = *count;
    }
}

std::size_t ZplTokenizerStateMachine::ConsumePlainRun(std::string_view text, char32_t formatPrefix,
                                                      char32_t controlPrefix, char32_t delimiter) {
    bool const idle = state_ == ZplTokenizerState::Idle;
    bool const collecting = state_ == ZplTokenizerState::Parameters && !eager_ && !TakesOneCharacter(command_);
    if (!idle && !collecting) return 0;

    auto const endsRun = [&](char byte) {
        auto const character = static_cast<unsigned char>(byte);
        return character >= 0x80 || character == formatPrefix || character == controlPrefix ||
               (collecting && (character == delimiter || character == '\r' || character == '\n'));
    };
    auto const end = std::find_if(text.begin(), text.end(), endsRun);
    auto const length = static_cast<std::size_t>(end - text.begin());
    if (collecting && length != 0) Append(text.substr(0, length));
    return length;
}

std::unique_ptr<ZplCommand> ZplTokenizerStateMachine::ConsumeBinaryRun(std::string_view bytes) {
    Append(bytes);
    binaryRemaining_ -= static_cast<std::uint32_t>(bytes.size());
    return binaryRemaining_ == 0 ? Reset(ZplTokenizerState::Idle) : nullptr;
}

std::unique_ptr<ZplCommand> ZplTokenizerStateMachine::Reset(ZplTokenizerState next) {
    state_ = next;
    return TakeCommand();
}

std::unique_ptr<ZplCommand> ZplTokenizerStateMachine::Flush() { return command_.empty() ? nullptr : TakeCommand(); }

std::unique_ptr<ZplCommand> ZplTokenizerStateMachine::HandleEagerReturnCommand() {
    using Operation = CommandIdentifier::ArgumentMatchOperation;
    if (!eager_) return nullptr;
    if (parameters_.size() == 1 && parameters_[0].size() > LongestEagerArgument) return nullptr;

    auto operation = Operation::Return;
    if (eager_->argumentMatch && parameters_.empty()) operation = Operation::Continue;
    if (eager_->argumentMatch && parameters_.size() == 1) operation = eager_->argumentMatch(parameters_[0]);
    switch (operation) {
        case Operation::Return: return Reset(ZplTokenizerState::Idle);
        // The command stays open: what follows may still belong to it.
        case Operation::ReturnCopy: return std::make_unique<ZplCommand>(ZplCommand{command_, isControl_, parameters_});
        case Operation::Continue: break;
    }
    return nullptr;
}

std::string_view ZplTokenizerStateMachine::FirstText() const {
    std::size_t first = 0;
    while (first < parameters_.size() && parameters_[first].empty()) ++first;
    return first < parameters_.size() ? parameters_[first] : std::string_view();
}

std::unique_ptr<ZplCommand> ZplTokenizerStateMachine::TakeCommand() {
    auto command = std::make_unique<ZplCommand>();
    command->command.swap(command_);
    command->parameters = std::move(parameters_);
    parameters_.clear();
    command->isControl = std::exchange(isControl_, false);
    command->isOverlong = std::exchange(isOverlong_, false);
    eager_ = nullptr;
    return command;
}
