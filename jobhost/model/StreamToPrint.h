#pragma once

#include <cstdint>
#include <optional>
#include <string>

namespace Zpl::Host {

/// A whole print stream of a surface of this printer, on its way to who takes streams: base64 of a JSON object with the
/// text "Sender" and the number "Number", followed directly by the stream's bytes. Without any it asks what has become
/// of the one that was sent under that number: with a server of the bus, writes of several may be lost but for the
/// last.
struct StreamToPrint {
    std::string sender;        ///< by which writers are told apart
    std::uint32_t number = 0;  ///< of the writer's streams, from 1; one that comes twice is one
    std::string bytes;

    std::string Text() const;
    /// Nothing if the text is no such stream.
    static std::optional<StreamToPrint> Parse(std::string const& text);
};

/// What has become of it, told when all of it has been taken or is lost: a JSON object with the members "Sender",
/// "Number" and, if it does not print as it is, "Error"; or at once "Missing", true, if it has not come.
struct StreamTaken {
    std::string sender;
    std::uint32_t number = 0;
    std::string error;  ///< for people, behind "the stream"; empty when all of it has been taken, and prints
    bool isMissing = false;

    std::string Text() const;
    static std::optional<StreamTaken> Parse(std::string const& text);
};

}  // namespace Zpl::Host
