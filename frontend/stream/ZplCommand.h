#pragma once

#include <cstddef>
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

#include "frontend/stream/ZplParameters.h"

/// Where a command that was recalled stands in its stored format.
struct StoredPlace {
    std::string_view format;   ///< path below the folder of formats; holds as long as the recorded commands
    std::uint64_t offset = 0;  ///< bytes
    std::uint64_t length = 0;  ///< bytes

    friend bool operator==(StoredPlace const&, StoredPlace const&) = default;
};

/// One command as it came from the stream: its letters in upper case, its prefix, its raw parameters.
/// `parameters` has no entry for a command without parameter characters, and an empty text for each empty position.
struct ZplCommand {
    /// The parameters of a command that take more are not kept: see `isOverlong`.
    static constexpr std::size_t LongestParameters = 64UL * 1024 * 1024;  // bytes

    std::string command;
    bool isControl = false;
    ZplParameters parameters;
    char delimiter = ',';                      ///< what parted the parameters
    std::optional<std::uint64_t> offset = {};  ///< where it begins in its stream, in bytes; nothing if it is in none
    std::uint64_t length = 0;  ///< from there to its last character that is no blank or line end, in bytes
    std::optional<StoredPlace> stored = {};  ///< nothing unless it was recalled; its offset is that of the recall then
    bool isOverlong = false;                 ///< it was too long to be kept, and has no parameters

    /// Makes it as new, also when its content has been moved away.
    void Clear() {
        command.clear();
        isControl = false;
        parameters.clear();
        delimiter = ',';
        offset.reset();
        length = 0;
        stored.reset();
        isOverlong = false;
    }

    /// The parameter at `index` (from 0); empty past the end.
    std::string Parameter(std::size_t index) const {
        return index < parameters.size() ? std::string(parameters[index]) : std::string();
    }

    /// The parameters from `first` on as one text, with the delimiters that parted them: how commands with free data
    /// get back what the tokenizer split.
    std::string Joined(std::size_t first) const { return Joined(first, delimiter); }
    /// The same with another character in the place of the delimiters.
    std::string Joined(std::size_t first, char between) const { return parameters.Joined(first, between); }

    friend bool operator==(ZplCommand const&, ZplCommand const&) = default;
};
