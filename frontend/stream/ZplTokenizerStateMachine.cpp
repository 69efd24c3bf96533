#include "frontend/stream/ZplTokenizerStateMachine.h"

#include <utf8.h>

#include <algorithm>
#include <charconv>
#include <initializer_list>
#include <iterator>
#include <optional>
#include <utility>

#include "frontend/stream/Ascii.h"
#include "frontend/stream/EagerReturnCommands.h"

namespace {

constexpr std::string_view AnnouncesBytes = "GF";
constexpr std::size_t BinaryCountParameter = 2;  // not the total that stands before it
constexpr std::size_t BinaryDataParameter = 4;

// A host that waits for an effect sends no longer argument. Looking at a longer one, or copying it, at each of its
// characters would take ever longer.
constexpr std::size_t LongestEagerArgument = 256;

/// Some of the characters of 7 bits. Others are passed over when they are added.
class AsciiSet {
public:
    AsciiSet(std::initializer_list<char32_t> characters) {
        for (char32_t const character : characters) Add(character);
    }
    void Add(char32_t character) {
        if (character < 0x80) bits_[character / 64] |= std::uint64_t{1} << character % 64;
    }
    bool Holds(char32_t character) const {
        return character < 0x80 && (bits_[character / 64] >> character % 64 & 1) != 0;
    }

private:
    std::uint64_t bits_[2] = {};
};

/// How many characters of 7 bits stand at the start of a text before one of `stops`.
std::size_t LengthWithout(AsciiSet const& stops, std::string_view text) {
    auto const end = std::find_if(text.begin(), text.end(), [stops](char character) {
        return !IsAscii(character) || stops.Holds(static_cast<unsigned char>(character));
    });
    return static_cast<std::size_t>(end - text.begin());
}

bool IsLineEnd(char32_t character) { return character == U'\r' || character == U'\n'; }

// These change the syntax itself, so they take one character, whatever it is, and end without a prefix.
bool TakesOneCharacter(std::string_view command) {
    return command.size() == 2 && command[0] == 'C' && (command[1] == 'T' || command[1] == 'C' || command[1] == 'D');
}

/// The number of raw bytes that follow the parameters so far, if they announce a binary graphic field.
std::optional<std::uint32_t> AnnouncedBinaryCount(std::string_view command, ZplParameters const& parameters) {
    if (command != AnnouncesBytes || parameters.size() != BinaryDataParameter + 1) return std::nullopt;
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
            open_.Clear();
            state_ = ZplTokenizerState::Command;
        }
        // Behind Reset, which hands out the command before with the prefix that it had.
        open_.isControl = character == controlPrefix;
        return finished;
    }
    switch (state_) {
        case ZplTokenizerState::Command: return ConsumeLetter(character);
        case ZplTokenizerState::Parameters: return ConsumeParameterCharacter(character, delimiter, encoding);
        default: return nullptr;
    }
}

std::unique_ptr<ZplCommand> ZplTokenizerStateMachine::ConsumeLetter(char32_t character) {
    auto& letters = open_.command;
    if (character < 0x80) {
        letters += ToAsciiUpper(static_cast<char>(character));
    } else {
        utf8::unchecked::append(character, std::back_inserter(letters));
    }
    // Counted in bytes: one letter beyond 7 bits is a command by itself, and an unknown one.
    if (letters.size() < 2) return nullptr;
    state_ = ZplTokenizerState::Parameters;
    eager_ = FindEagerReturnCommand(letters, open_.isControl);
    return HandleEagerReturnCommand();
}

std::unique_ptr<ZplCommand> ZplTokenizerStateMachine::ConsumeParameterCharacter(char32_t character, char32_t delimiter,
                                                                                Encoding encoding) {
    // After a flush there may be no parameter to go on with.
    if (open_.parameters.empty()) StartParameter();
    bool const takesOne = TakesOneCharacter(open_.command);
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
    if (keepsBeginnings_ && open_.parameters.size() == MostBeginnings) return;
    if (FitsAnother(sizeof(std::uint32_t))) open_.parameters.push_back({});
}

void ZplTokenizerStateMachine::Append(std::string_view text) {
    constexpr std::size_t LongestBeginning = 1024;
    auto& parameters = open_.parameters;
    if (parameters.empty()) StartParameter();
    if (keepsBeginnings_ && !parameters.empty() && !TellsHowToReadOn())
        text = text.substr(0, LongestBeginning - std::min(LongestBeginning, parameters[parameters.size() - 1].size()));
    if (FitsAnother(text.size())) parameters.AppendToLast(text);
}

// The number of a character set, and what announces raw bytes: there a digit far behind may be the one that counts.
bool ZplTokenizerStateMachine::TellsHowToReadOn() const {
    if (open_.command == "CI") return open_.parameters.size() == 1;
    return open_.command == AnnouncesBytes && open_.parameters.size() <= BinaryCountParameter + 1;
}

// What follows a command that is too long is read as before, to the same end, and kept nowhere.
bool ZplTokenizerStateMachine::FitsAnother(std::size_t bytes) {
    if (!open_.isOverlong && open_.parameters.Bytes() + bytes > ZplCommand::LongestParameters) {
        open_.isOverlong = true;
        open_.parameters = {};
    }
    return !open_.isOverlong;
}

// The bytes of a binary graphic must not be scanned for prefixes, so the count is read here. The count is no reason to
// allocate: it may be a lie, and the bytes bring their own memory.
void ZplTokenizerStateMachine::EnterBinaryMode() {
    if (auto const count = AnnouncedBinaryCount(open_.command, open_.parameters)) {
        state_ = ZplTokenizerState::Binary;
        binaryRemaining_ = *count;
    }
}

std::size_t ZplTokenizerStateMachine::ConsumePlainRun(std::string_view text, char32_t formatPrefix,
                                                      char32_t controlPrefix, char32_t delimiter) {
    bool const collecting = state_ == ZplTokenizerState::Parameters && !eager_ && !TakesOneCharacter(open_.command);
    if (!collecting && state_ != ZplTokenizerState::Idle) return 0;

    AsciiSet stops{formatPrefix, controlPrefix};
    if (!collecting) return LengthWithout(stops, text);
    stops.Add('\r');
    stops.Add('\n');
    // Behind a delimiter there may be raw bytes; and one of more bits, or that is a prefix, is for Consume.
    bool const goesOnBehindDelimiters = delimiter < 0x80 && !stops.Holds(delimiter) && open_.command != AnnouncesBytes;
    stops.Add(delimiter);
    for (std::size_t length = 0;; ++length) {
        auto const part = text.substr(length, LengthWithout(stops, text.substr(length)));
        if (!part.empty()) Append(part);
        length += part.size();
        bool const isDelimiter = length < text.size() && static_cast<unsigned char>(text[length]) == delimiter;
        if (!isDelimiter || !goesOnBehindDelimiters) return length;
        if (open_.parameters.empty()) StartParameter();
        StartParameter();
    }
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

std::unique_ptr<ZplCommand> ZplTokenizerStateMachine::Flush() {
    return open_.command.empty() ? nullptr : TakeCommand();
}

std::unique_ptr<ZplCommand> ZplTokenizerStateMachine::HandleEagerReturnCommand() {
    using Operation = CommandIdentifier::ArgumentMatchOperation;
    if (!eager_) return nullptr;
    auto const& parameters = open_.parameters;
    if (parameters.size() == 1 && parameters[0].size() > LongestEagerArgument) return nullptr;

    auto operation = Operation::Return;
    if (eager_->argumentMatch && parameters.empty()) operation = Operation::Continue;
    if (eager_->argumentMatch && parameters.size() == 1) operation = eager_->argumentMatch(parameters[0]);
    switch (operation) {
        case Operation::Return: return Reset(ZplTokenizerState::Idle);
        // The command stays open: what follows may still belong to it.
        case Operation::ReturnCopy: return std::make_unique<ZplCommand>(open_);
        case Operation::Continue: break;
    }
    return nullptr;
}

std::string_view ZplTokenizerStateMachine::FirstText() const {
    auto const& parameters = open_.parameters;
    std::size_t first = 0;
    while (first < parameters.size() && parameters[first].empty()) ++first;
    return first < parameters.size() ? parameters[first] : std::string_view();
}

std::unique_ptr<ZplCommand> ZplTokenizerStateMachine::TakeCommand() {
    auto finished = std::make_unique<ZplCommand>(std::move(open_));
    open_.Clear();
    eager_ = nullptr;
    return finished;
}
