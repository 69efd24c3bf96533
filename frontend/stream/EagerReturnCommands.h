#pragma once

#include <cstdint>
#include <string_view>

/// Names commands that are delivered before the next prefix arrives, and tells when.
struct CommandIdentifier {
    enum class Prefix : std::uint32_t { Control = 0, Format = 1, Either = 2 };

    enum class ArgumentMatchOperation {
        Return = 0,      ///< deliver the command; what follows belongs to no command
        ReturnCopy = 1,  ///< deliver a copy and keep collecting
        Continue = 2,    ///< keep collecting
    };

    Prefix prefix;
    std::string_view letters;  ///< two, upper case
    /// Decides by the only argument so far; null: delivered at the second letter.
    ArgumentMatchOperation (*argumentMatch)(std::string_view argument);
};

/// The row of the command of these letters (in either case; only the first two count) and this prefix, or null if it
/// waits for the next prefix like most.
CommandIdentifier const* FindEagerReturnCommand(std::string_view command, bool isControl);
