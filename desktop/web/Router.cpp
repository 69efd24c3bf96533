#include "desktop/web/Router.h"

#include <algorithm>

#include "desktop/web/Refusal.h"
#include "desktop/web/UrlText.h"

namespace {

/// What stands for the open parts of a pattern; nothing if the path is another one. A slash at the end changes nothing.
std::optional<std::vector<std::string>> Match(std::string_view pattern, std::string_view path) {
    std::vector<std::string> names;
    while (!pattern.empty()) {
        auto const wanted = TakeUpTo(pattern, '/');
        if (wanted.ends_with("...}")) {
            names.emplace_back(path);
            return names;
        }
        if (path.empty() && !wanted.empty()) return std::nullopt;
        auto const part = DecodePercent(TakeUpTo(path, '/'));
        if (!part) return std::nullopt;
        if (wanted.starts_with('{') ? part->empty() : *part != wanted) return std::nullopt;
        if (wanted.starts_with('{')) names.push_back(*part);
    }
    return path.empty() ? std::optional(names) : std::nullopt;
}

bool TakesMethod(Door const& door, std::string_view method) {
    return door.method == method || (method == "HEAD" && door.method == "GET");
}

}  // namespace

void Visit::TakeOnly(std::string_view known) const {
    for (auto const& [name, value] : query) {
        bool isKnown = false;
        for (auto rest = known; !rest.empty() && !isKnown;) isKnown = TakeUpTo(rest, ' ') == name;
        if (!isKnown) throw Refusal(400, "unknown parameter " + name + "; there are " + std::string(known));
    }
}

void Router::Add(std::vector<Door> doors) { std::move(doors.begin(), doors.end(), std::back_inserter(doors_)); }

std::string Router::MethodsOf(std::string_view path) const {
    std::string methods;
    for (auto const& door : doors_) {
        if (Match(door.path, path)) methods += (methods.empty() ? "" : ", ") + door.method;
    }
    return methods;
}

Door const& Router::Find(HttpRequest const& request) const {
    for (auto const& door : doors_) {
        if (TakesMethod(door, request.method) && Match(door.path, request.path)) return door;
    }
    auto const methods = MethodsOf(request.path);
    if (methods.empty()) throw Refusal(404, "there is nothing of that name; /openapi.json lists what there is");
    throw Refusal(405, "this takes " + methods);
}

void Router::Open(HttpRequest request, HttpServer::Reply reply) const {
    auto const& door = Find(request);
    auto query = ReadQuery(request.query);
    if (!query) throw Refusal(400, "the query holds a percent sign without two hexadecimal digits");
    auto names = *Match(door.path, request.path);
    door.open({std::move(request), std::move(names), std::move(*query), std::move(reply)});
}
