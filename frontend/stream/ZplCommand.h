#pragma once

#include <cstddef>
#include <cstdint>
#include <optional>
#include <string>
#include <vector>

/// One command as it came from the stream: its letters in upper case, its prefix, its raw parameters.
/// `parameters` has no entry for a command without parameter characters, and an empty text for each empty position.
struct ZplCommand {
    std::string command;
    bool isControl = false;
    std::vector<std::string> parameters;
    char delimiter = ',';                      ///< what parted the parameters
    std::optional<std::uint64_t> offset = {};  ///< where it begins in its stream, in bytes; nothing if it is in none

    /// The parameter at `index` (from 0); empty past the end.
    std::string const& Parameter(std::size_t index) const {
        static std::string const absent;
        return index < parameters.size() ? parameters[index] : absent;
    }

    /// The parameters from `first` on as one text, with the delimiters that parted them: how commands with free data
    /// get back what the tokenizer split.
    std::string Joined(std::size_t first) const { return Joined(first, delimiter); }
    /// The same with another character in the place of the delimiters.
    std::string Joined(std::size_t first, char between) const {
        std::string text;
        for (std::size_t i = first; i < parameters.size(); ++i) {
            if (i != first) text += between;
            text += parameters[i];
        }
        return text;
    }

    friend bool operator==(ZplCommand const&, ZplCommand const&) = default;
};
