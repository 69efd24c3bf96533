#include "plugin/surfaces/PrintedJobs.h"

#include <QtCore/QCollator>
#include <QtCore/QDir>
#include <QtCore/QFileInfo>
#include <QtCore/QHash>
#include <algorithm>
#include <filesystem>
#include <vector>

namespace {

namespace fs = std::filesystem;

struct KeptJob {
    PrintedJob job;
    fs::file_time_type begin;  // of its first page
};

/// The length of "NAME-JOB-" in the name of a file, and the number behind it; a length of 0 for other files.
std::pair<qsizetype, int> PartsOf(QString const& file) {
    QString const base = file.chopped(4);
    qsizetype const dash = base.lastIndexOf(u'-');
    bool isPage = false;
    bool isJob = false;
    int const page = base.mid(dash + 1).toInt(&isPage);
    base.left(std::max<qsizetype>(dash, 0)).section(u'-', -1).toInt(&isJob);
    return isPage && isJob && page > 0 ? std::pair(dash + 1, page) : std::pair<qsizetype, int>(0, 0);
}

/// In no order.
std::vector<KeptJob> JobsIn(QString const& folder) {
    QHash<QString, std::size_t> places;
    std::vector<KeptJob> jobs;
    for (auto const& file : QDir(folder).entryList({QStringLiteral("*.png")}, QDir::Files, QDir::Unsorted)) {
        auto const [length, page] = PartsOf(file);
        if (length == 0) continue;
        QString const name = file.left(length);
        std::error_code error;
        auto const time = fs::last_write_time((folder + file).toStdString(), error);
        if (error) continue;
        auto const place = places.value(name, jobs.size());
        if (place == jobs.size()) {
            places.insert(name, place);
            jobs.push_back({{folder + name, name.chopped(1), 0}, time});
        }
        auto& [job, begin] = jobs[place];
        job.pages = std::max(job.pages, page);
        begin = std::min(begin, time);
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
    QCollator byNumber;
    byNumber.setNumericMode(true);
    // Jobs of one moment follow their numbers.
    auto const precedes = [&](KeptJob const& left, KeptJob const& right) {
        if (left.begin != right.begin) return left.begin < right.begin;
        return byNumber.compare(left.job.name, right.job.name) < 0;
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
