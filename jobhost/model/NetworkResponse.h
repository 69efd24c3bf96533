#pragma once

#include <optional>
#include <string>

namespace zpl {

/// What goes back to the sender of a stream: one JSON object with the number "State" and, if there is any, the text
/// "Data".
struct NetworkResponse {
    enum class Status {
        Processing = 0,  ///< a packet begins to be processed
        Answer = 1,      ///< the data is what the printer answers, base64 of its bytes
        Done = 2,        ///< the stream held no label, or its job is done with
    };

    Status status = Status::Processing;
    std::optional<std::string> data;

    static std::string Create(Status status, std::optional<std::string> data);
    /// Nothing if the text is no response. Numbers that have no name are carried as they stand.
    static std::optional<NetworkResponse> Parse(std::string const& text);

    friend bool operator==(NetworkResponse const&, NetworkResponse const&) = default;
};

}  // namespace zpl
