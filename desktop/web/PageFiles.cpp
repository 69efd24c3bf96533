#include "desktop/web/PageFiles.h"

#include <algorithm>

#include "desktop/web/Refusal.h"
#include "foundation/Files.h"

namespace {

struct EndingRow {
    std::string_view ending;
    std::string_view type;
};

constexpr EndingRow Endings[] = {
    {".html", "text/html; charset=utf-8"},
    {".css", "text/css; charset=utf-8"},
    {".js", "text/javascript; charset=utf-8"},
    {".json", "application/json"},
    {".svg", "image/svg+xml"},
    {".png", "image/png"},
    {".zpl", "text/plain; charset=utf-8"},
    {".txt", "text/plain; charset=utf-8"},
};

/// Nothing but what came from here may be loaded, run or asked by the page, and no text that it shows becomes a part of
/// it.
constexpr char const* ContentPolicy =
    "default-src 'none'; script-src 'self'; style-src 'self'; img-src 'self' data: blob:; connect-src 'self'; "
    "base-uri 'none'; form-action 'none'; frame-ancestors 'none'";

HttpAnswer FileAnswer(std::filesystem::path const& file, std::string_view type) {
    HttpAnswer answer{200, std::string(type), {}};
    if (ReadFile(file, answer.body)) throw Refusal(404, "this file of the page is gone");
    answer.fields = {{"Content-Security-Policy", ContentPolicy}, {"Referrer-Policy", "no-referrer"}};
    return answer;
}

}  // namespace

void PageFiles::Add(std::string const& path, std::filesystem::path const& folder) {
    std::error_code error;
    std::filesystem::recursive_directory_iterator entry(folder, error);
    for (std::filesystem::recursive_directory_iterator const end; !error && entry != end; entry.increment(error)) {
        std::error_code ignored;
        if (entry->is_regular_file(ignored))
            files_.emplace(path + entry->path().lexically_relative(folder).generic_string(), entry->path());
    }
}

std::vector<Door> PageFiles::List() const {
    std::vector<Door> doors;
    for (auto const& entry : files_) {
        auto const& path = entry.first;
        auto const& file = entry.second;
        auto const row = std::find_if(std::begin(Endings), std::end(Endings),
                                      [&file](EndingRow const& each) { return file.extension() == each.ending; });
        if (row == std::end(Endings)) continue;
        auto const open = [file = file, type = row->type, path = path](Visit const& visit) {
            visit.reply(AnswerOf(path, [&] { return FileAnswer(file, type); }));
        };
        doors.push_back({"GET", path, open});
        if (path == "/index.html") doors.push_back({"GET", "/", open});
    }
    return doors;
}
