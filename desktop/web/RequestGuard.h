#pragma once

#include <optional>
#include <string>
#include <vector>

#include "desktop/web/HttpMessage.h"

/// Who may ask. A page of a stranger that is open in a browser of this machine reaches a door at the loopback address
/// as well as the user does, under a name of its own choice; so requests under foreign names, and those of foreign
/// pages, are refused.
class RequestGuard {
public:
    struct Names {
        std::string host;                  ///< that the server listens at
        std::vector<std::string> hosts;    ///< further ones that it is reached by, with a port or without
        std::vector<std::string> origins;  ///< of pages that may ask, as "https://labels.example"; "*" for all
    };

    explicit RequestGuard(Names names) : names_(std::move(names)) {}

    /// A sentence that says why the request is refused; nothing if it is not.
    std::optional<std::string> Refusal(HttpRequest const& request) const;
    /// The origin that a browser may show the answer to; empty if that is no page of a stranger.
    std::string AllowedOrigin(HttpRequest const& request) const;

private:
    bool IsOurName(std::string_view host) const;
    bool IsAllowed(std::string_view origin) const;

    Names names_;
};
