#pragma once

#include <algorithm>
#include <memory>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

using HttpFields = std::vector<std::pair<std::string, std::string>>;

/// A request as it came; what stands in it is text of a stranger.
struct HttpRequest {
    std::string method;
    std::string path;   ///< as it was sent: percent-encoded
    std::string query;  ///< behind the question mark, percent-encoded
    HttpFields fields;  ///< of the header, names in lower case
    std::string body;

    /// The first field of that name (in lower case); empty if there is none.
    std::string_view Field(std::string_view name) const {
        auto const found =
            std::find_if(fields.begin(), fields.end(), [&](auto const& field) { return field.first == name; });
        return found == fields.end() ? std::string_view() : found->second;
    }
    std::size_t CountOf(std::string_view name) const {
        auto const count =
            std::count_if(fields.begin(), fields.end(), [&](auto const& field) { return field.first == name; });
        return static_cast<std::size_t>(count);
    }
};

/// What goes on behind the header of an answer for as long as the client stays: one piece after the other. It is asked
/// on the server's thread, whenever the client has taken the last piece and there may be more.
class HttpFeed {
public:
    virtual ~HttpFeed() = default;
    /// Empty while there is nothing.
    virtual std::string Next() = 0;
};

struct HttpAnswer {
    unsigned status = 200;
    std::string type;  ///< of the content, as "image/png"
    std::string body;
    HttpFields fields = {};  ///< further ones of the header
    std::unique_ptr<HttpFeed> feed = {};
};
