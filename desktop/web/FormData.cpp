#include "desktop/web/FormData.h"

#include <optional>
#include <stdexcept>

namespace {

bool IsEqualLetter(char a, char b) {
    auto const lower = [](char c) { return c >= 'A' && c <= 'Z' ? static_cast<char>(c + 32) : c; };
    return lower(a) == lower(b);
}

/// Where `what` stands in `text`, whatever the case of its letters.
std::size_t FindText(std::string_view text, std::string_view what, std::size_t from = 0) {
    for (std::size_t i = from; i + what.size() <= text.size(); ++i) {
        std::size_t same = 0;
        while (same < what.size() && IsEqualLetter(text[i + same], what[same])) ++same;
        if (same == what.size()) return i;
    }
    return std::string_view::npos;
}

/// The value of a parameter of a field, as boundary=... or name="..."; nothing if it has none.
std::optional<std::string_view> Parameter(std::string_view field, std::string_view name) {
    for (auto at = field.find(';'); at != std::string_view::npos; at = field.find(';', at)) {
        at = field.find_first_not_of("; \t", at);
        if (at == std::string_view::npos) break;
        auto rest = field.substr(at);
        if (FindText(rest.substr(0, name.size()), name) != 0 || rest.substr(name.size(), 1) != "=") continue;
        rest.remove_prefix(name.size() + 1);
        if (!rest.starts_with('"')) return rest.substr(0, rest.find_first_of("; \t\r\n"));
        rest.remove_prefix(1);
        auto const end = rest.find('"');
        if (end == std::string_view::npos) break;
        return rest.substr(0, end);
    }
    return std::nullopt;
}

/// The value of the field of a part's header that tells its name.
std::string_view Disposition(std::string_view header) {
    static constexpr std::string_view Name = "content-disposition:";
    auto const at = FindText(header, Name);
    if (at == std::string_view::npos) return {};
    auto const value = header.substr(at + Name.size());
    return value.substr(0, value.find("\r\n"));
}

}  // namespace

std::string_view PartOfForm(std::string_view type, std::string_view form, std::string_view name) {
    auto const boundary = Parameter(type, "boundary");
    constexpr std::size_t LongestBoundary = 70;  // RFC 2046, 5.1.1
    if (!boundary || boundary->empty() || boundary->size() > LongestBoundary)
        throw std::invalid_argument("the type of the form names no boundary of its parts");
    std::string const line = "\r\n--" + std::string(*boundary);
    std::optional<std::string_view> first;
    std::size_t at = form.starts_with(std::string_view(line).substr(2)) ? line.size() - 2 : form.find(line);
    if (at != std::string_view::npos && !form.starts_with(std::string_view(line).substr(2))) at += line.size();
    while (at != std::string_view::npos && form.substr(at, 2) != "--") {
        auto const header = form.find("\r\n", at);
        auto const content = form.find("\r\n\r\n", header);
        auto const end = content == std::string_view::npos ? content : form.find(line, content + 2);
        if (end == std::string_view::npos) throw std::invalid_argument("a part of the form does not end");
        auto const part = form.substr(content + 4, end < content + 4 ? 0 : end - content - 4);
        if (Parameter(Disposition(form.substr(header, content - header)), "name") == name) return part;
        if (!first) first = part;
        at = end + line.size();
    }
    if (!first) throw std::invalid_argument("the form has no part");
    return *first;
}
