#pragma once

#include <functional>
#include <map>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "desktop/web/HttpServer.h"

/// A request at its door.
struct Visit {
    HttpRequest request;
    std::vector<std::string> names;  ///< what stands in the path for the parts that its pattern leaves open
    std::map<std::string, std::string, std::less<>> query;
    HttpServer::Reply reply;

    /// Null if it is not given.
    std::string const* Parameter(std::string_view name) const {
        auto const found = query.find(name);
        return found == query.end() ? nullptr : &found->second;
    }
    /// Throws Refusal if the query has others than these, with blanks in between.
    void TakeOnly(std::string_view names) const;
};

/// One door: a method, and a path in which "{name}" stands for any one part and "{name...}" at its end for all that is
/// left, still percent-encoded.
struct Door {
    std::string method;
    std::string path;
    /// Answers, at once or later; may throw Refusal.
    std::function<void(Visit)> open;
};

/// Finds the door of a request.
class Router {
public:
    void Add(std::vector<Door> doors);

    /// Throws Refusal if there is none.
    Door const& Find(HttpRequest const& request) const;
    void Open(HttpRequest request, HttpServer::Reply reply) const;
    /// The methods that there are for a path, with commas in between; empty if it is unknown.
    std::string MethodsOf(std::string_view path) const;

private:
    std::vector<Door> doors_;
};
