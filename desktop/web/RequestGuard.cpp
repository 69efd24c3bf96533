#include "desktop/web/RequestGuard.h"

namespace {

/// Without its port: "[::1]:9180" is "[::1]".
std::string_view NameOf(std::string_view host) {
    if (host.starts_with('[')) return host.substr(0, host.find(']') + 1);
    return host.substr(0, host.find(':'));
}

/// A page cannot give itself an address for a name, so whoever asks by one means this machine.
bool IsAddress(std::string_view name) {
    return name.starts_with('[') || (!name.empty() && name.find_first_not_of("0123456789.") == std::string_view::npos);
}

/// Whether it is that of a page which the server has handed out under the name that is asked for.
bool IsOwn(std::string_view origin, std::string_view host) {
    constexpr std::string_view Schemes[] = {"http://", "https://"};
    return std::any_of(std::begin(Schemes), std::end(Schemes), [&](std::string_view scheme) {
        return origin.starts_with(scheme) && origin.substr(scheme.size()) == host;
    });
}

}  // namespace

bool RequestGuard::IsOurName(std::string_view host) const {
    auto const name = NameOf(host);
    // Any port: a tunnel or a container has another one in front.
    if (name == "localhost" || IsAddress(name) || name == names_.host) return true;
    return std::any_of(names_.hosts.begin(), names_.hosts.end(),
                       [&](std::string const& each) { return host == each || name == each; });
}

bool RequestGuard::IsAllowed(std::string_view origin) const {
    return std::any_of(names_.origins.begin(), names_.origins.end(),
                       [origin](std::string const& each) { return each == "*" || each == origin; });
}

std::string RequestGuard::AllowedOrigin(HttpRequest const& request) const {
    auto const origin = request.Field("origin");
    return !origin.empty() && IsAllowed(origin) ? std::string(origin) : std::string();
}

std::optional<std::string> RequestGuard::Refusal(HttpRequest const& request) const {
    auto const host = request.Field("host");
    if (request.CountOf("host") != 1 || !IsOurName(host))
        return "this server is not reached by that name; --allow-host NAME adds one";
    auto const origin = request.Field("origin");
    if (!origin.empty())
        return IsOwn(origin, host) || IsAllowed(origin)
                   ? std::nullopt
                   : std::optional<std::string>(
                         "pages of that origin may not ask here; --allow-origin ORIGIN lets them");
    // A page that shows or runs an answer as a part of itself does not tell its origin; the browser tells what it is.
    auto const site = request.Field("sec-fetch-site");
    bool const isPart = (site == "cross-site" || site == "same-site") && request.Field("sec-fetch-mode") != "navigate";
    if (isPart && !IsAllowed("*")) return "other pages may not show what is here";
    return std::nullopt;
}
