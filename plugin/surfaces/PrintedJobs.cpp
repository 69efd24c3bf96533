#include "plugin/surfaces/PrintedJobs.h"

#include <QtCore/QDir>
#include <QtCore/QFileInfo>
#include <QtCore/QHash>
#include <algorithm>
#include <filesystem>
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

QString FolderOf(QString const& stem) { return stem.left(stem.lastIndexOf(u'/') + 1); }

}  // namespace

std::optional<PrintedJob> PrintedJob::Find(QString const& stem) {
    if (stem.isEmpty()) return std::nullopt;
    for (auto const& kept : JobsIn(FolderOf(stem))) {
        if (kept.job.stem == stem) return kept.job;
    }
    return std::nullopt;
}

std::optional<PrintedJob> PrintedJob::Beside(QString const& stem, int step) {
    auto jobs = JobsIn(FolderOf(stem));
    auto const self =
        std::find_if(jobs.begin(), jobs.end(), [&](KeptJob const& kept) { return kept.job.stem == stem; });
    if (stem.isEmpty() || self == jobs.end()) return std::nullopt;
    // Jobs of one moment follow their numbers.
    auto const precedes = [](KeptJob const& left, KeptJob const& right) {
        return std::tie(left.begin, left.number, left.job.name) < std::tie(right.begin, right.number, right.job.name);
    };
    KeptJob const own = *self;
    std::optional<KeptJob> found;
    for (auto& kept : jobs) {
        bool const isThere = step < 0 ? precedes(kept, own) : precedes(own, kept);
        bool const isNearer = !found || (step < 0 ? precedes(*found, kept) : precedes(kept, *found));
        if (isThere && isNearer) found = std::move(kept);
    }
    return found ? std::optional(found->job) : std::nullopt;
}
