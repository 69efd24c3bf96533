#pragma once

#include <compare>
#include <functional>
#include <optional>
#include <string>
#include <string_view>

/// Where a property is on the bus: whose it is, its group and its identifier, all GUID text.
struct PropertyAddress {
    std::string component;
    std::string group;
    std::string property;

    friend auto operator<=>(PropertyAddress const&, PropertyAddress const&) = default;
};

/// One message of PICL: a JSON object in one line. docs/property-bus.md describes them all.
struct PiclMessage {
    enum class Type {
        Hello,      ///< to the server: who is speaking, in `value`
        Publish,    ///< to the server: the sender owns the property, and this is its value
        Subscribe,  ///< to the server: asks for the value and its changes
        Set,        ///< to the server: writes the value, whoever owns the property
        Changed,    ///< to a peer: the value
        Absent,     ///< to a peer: nobody owns the property at present
        Taken,      ///< to the peer that wrote: the write is done
        Refused,    ///< to a peer: a message was not done, the reason is in `value`
    };

    Type type = Type::Hello;
    PropertyAddress address = {};
    std::string value = {};
    std::string label = {};  ///< of Publish: for people
    std::string kind = {};   ///< of Publish: "string", "bool" or "uint32"
    bool archived = false;   ///< of Publish: the value survives restarts

    /// Without the line end.
    std::string Text() const;
    /// Nothing if the text is no message, or lacks a member that its type needs.
    static std::optional<PiclMessage> Parse(std::string_view line);

    friend bool operator==(PiclMessage const&, PiclMessage const&) = default;
};

/// Cuts the bytes of a peer into lines. A line that is longer than the limit is passed over as a whole.
class PiclLines {
public:
    static constexpr std::size_t LongestLine = std::size_t{64} << 20;

    explicit PiclLines(std::size_t longest = LongestLine) : longest_(longest) {}

    /// Takes bytes as they come and calls `take` for each line that they complete, without its end. Gives the number of
    /// lines that have been passed over.
    unsigned Append(std::string_view bytes, std::function<void(std::string_view)> const& take);

private:
    std::size_t longest_;
    std::string open_;
    bool skipping_ = false;
};
