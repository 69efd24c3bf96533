#pragma once

#include <cstdint>
#include <optional>
#include <string>

namespace Zpl::Host {

/// One packet of a print stream, as it travels in the property that takes commands: base64 of a JSON object with the
/// numbers "SessionId" and "Command", followed directly by the raw payload.
struct Packet {
    /// The command that ends a stream.
    static constexpr std::uint8_t EndOfStream = 1;

    std::uint8_t SessionId = 0;
    std::uint8_t Command = 0;
    std::string payload;
    std::uint32_t Number = 0;  ///< by which a packet that comes twice is known; 0 for none

    /// Nothing if the text is no packet. The object ends at the first "}", wherever that stands. Of each number the low
    /// 8 bits count; a "Number" is read as it stands, and may be missing.
    static std::optional<Packet> Parse(std::string const& text);
    /// The inverse.
    std::string Text() const;

    friend bool operator==(Packet const&, Packet const&) = default;
};

}  // namespace Zpl::Host
