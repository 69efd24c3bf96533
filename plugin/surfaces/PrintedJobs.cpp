#include "plugin/surfaces/PrintedJobs.h"

#include <QtCore/QDir>
#include <QtCore/QFileInfo>
#include <QtCore/QHash>
#include <algorithm>
#include <filesystem>
#include <string>
#include <string_view>
#include <tuple>
#include <vector>

namespace {

namespace fs = std::filesystem;

struct KeptJob {
    PrintedJob job;
    int number = 0;            // among those of its name
    fs::file_time_type begin;  // of its first page
};

/// A page of a job, as the name of its file tells.
struct KeptPage {
    QString stem;  // NAME-JOB-
    int job = 0;
    int page = 0;
};

std::optional<KeptPage> PageOf(QString const& file) {
    QStringList const parts = file.chopped(4).split(u'-');
    if (parts.size() < 3) return std::nullopt;
    bool isJob = false;
    bool isPage = false;
    KeptPage page;
    page.job = parts[parts.size() - 2].toInt(&isJob);
    page.page = parts.last().toInt(&isPage);
    if (!isJob || !isPage || page.page < 1) return std::nullopt;
    page.stem = file.left(file.lastIndexOf(u'-') + 1);
    return page;
}

/// In no order.
std::vector<KeptJob> JobsIn(QString const& folder) {
    QHash<QString, std::size_t> places;
    std::vector<KeptJob> jobs;
    for (auto const& file : QDir(folder).entryList({QStringLiteral("*.png")}, QDir::Files, QDir::Unsorted)) {
        auto const page = PageOf(file);
        if (!page) continue;
        std::error_code error;
        auto const time = fs::last_write_time((folder + file).toStdString(), error);
        if (error) continue;
        auto const place = places.value(page->stem, jobs.size());
        if (place == jobs.size()) {
            places.insert(page->stem, place);
            jobs.push_back({{folder + page->stem, page->stem.chopped(1), 0}, page->job, time});
        }
        jobs[place].job.pages = std::max(jobs[place].job.pages, page->page);
        jobs[place].begin = std::min(jobs[place].begin, time);
    }
    return jobs;
}

/// Jobs of one moment follow their numbers.
bool Precedes(KeptJob const& left, KeptJob const& right) {
    return std::tie(left.begin, left.number, left.job.name) < std::tie(right.begin, right.number, right.job.name);
}

QString FolderOf(QString const& stem) { return stem.left(stem.lastIndexOf(u'/') + 1); }

}  // namespace

std::optional<PrintedJob> PrintedJob::Find(QString const& stem) {
    if (stem.isEmpty()) return std::nullopt;
    QString const folder = FolderOf(stem);
    QString const name = stem.mid(folder.size());
    std::string const begin = name.toStdString();
    int pages = 0;
    // The names alone are looked at, and those of other jobs go by: there may be a hundred thousand.
    std::error_code error;
    for (fs::directory_iterator entry(folder.toStdString(), error), end; !error && entry != end;
         entry.increment(error)) {
        std::string const& path = entry->path().native();
        std::string_view const file = std::string_view(path).substr(path.rfind('/') + 1);
        if (!file.starts_with(begin) || !file.ends_with(".png")) continue;
        auto const page = PageOf(QString::fromUtf8(file.data(), static_cast<qsizetype>(file.size())));
        if (page && page->stem == name) pages = std::max(pages, page->page);
    }
    return pages > 0 ? std::optional(PrintedJob{stem, name.chopped(1), pages}) : std::nullopt;
}

std::optional<PrintedJob> PrintedJob::Beside(QString const& stem, int step) {
    auto jobs = JobsIn(FolderOf(stem));
    auto const self =
        std::find_if(jobs.begin(), jobs.end(), [&](KeptJob const& kept) { return kept.job.stem == stem; });
    if (stem.isEmpty() || self == jobs.end()) return std::nullopt;
    KeptJob const own = *self;
    std::optional<KeptJob> found;
    for (auto& kept : jobs) {
        bool const isThere = step < 0 ? Precedes(kept, own) : Precedes(own, kept);
        bool const isNearer = !found || (step < 0 ? Precedes(*found, kept) : Precedes(kept, *found));
        if (isThere && isNearer) found = std::move(kept);
    }
    return found ? std::optional(found->job) : std::nullopt;
}

std::vector<PrintedJob> PrintedJob::Newest(QString const& stem, std::size_t most) {
    if (stem.isEmpty()) return {};
    auto jobs = JobsIn(FolderOf(stem));
    auto const end = jobs.begin() + static_cast<std::ptrdiff_t>(std::min(most, jobs.size()));
    std::partial_sort(jobs.begin(), end, jobs.end(),
                      [](auto const& left, auto const& right) { return Precedes(right, left); });
    std::vector<PrintedJob> newest;
    for (auto kept = jobs.begin(); kept != end; ++kept) newest.push_back(std::move(kept->job));
    return newest;
}
