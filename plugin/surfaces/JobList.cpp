#include "plugin/surfaces/JobList.h"

#include <QtCore/QCoreApplication>
#include <QtCore/QPointer>
#include <QtCore/QThreadPool>
#include <QtCore/QVariantMap>
#include <algorithm>
#include <utility>
#include <vector>

#include "PrintEngine/Printing/JobMetaData.h"
#include "plugin/surfaces/PrintedJobs.h"

namespace {

namespace fs = std::filesystem;
using PrintEngine::Printing::JobMetaData;

constexpr std::size_t Most = 100;

QVariantMap Job(QString const& name, int pages, QString const& folder, QString const& stem) {
    return {{QStringLiteral("name"), name},
            {QStringLiteral("pages"), pages},
            {QStringLiteral("folder"), folder},
            {QStringLiteral("stem"), stem}};
}

/// One that is given up or done with may lose its folder meanwhile.
QVariantList WaitingJobs(fs::path const& jobsFolder) {
    std::vector<std::pair<JobMetaData, fs::path>> found;
    std::error_code error;
    for (fs::directory_iterator entry(jobsFolder, error), end; !error && entry != end; entry.increment(error)) {
        if (auto metaData = JobMetaData::Read(entry->path())) found.emplace_back(std::move(*metaData), entry->path());
    }
    std::ranges::sort(found, {}, [](auto const& job) { return job.first.serial; });
    if (found.size() > Most) found.resize(Most);
    QVariantList jobs;
    for (auto const& [metaData, path] : found) {
        auto const pages = static_cast<int>(std::min(metaData.totalPages, 1U << 30));
        jobs.append(Job(QString::fromStdString(metaData.jobName), pages, QString::fromStdString(path.string()), {}));
    }
    return jobs;
}

QVariantList PrintedJobs(QString const& stem) {
    QVariantList jobs;
    for (auto const& job : PrintedJob::Newest(stem, Most)) jobs.append(Job(job.name, job.pages, {}, job.stem));
    return jobs;
}

}  // namespace

JobList::JobList(std::filesystem::path jobsFolder) : jobsFolder_(std::move(jobsFolder)) {
    constexpr int Milliseconds = 100;  // in which jobs come together
    soon_.setInterval(Milliseconds);
    soon_.setSingleShot(true);
    connect(&soon_, &QTimer::timeout, this, &JobList::lookAtWaiting);
    connect(&watcher_, &QFileSystemWatcher::directoryChanged, this, [this] {
        if (!soon_.isActive()) soon_.start();
    });
}

template <typename Read>
void JobList::LookBeside(QVariantList JobList::*list, void (JobList::*changed)(), Read read) {
    auto const take = [self = QPointer<JobList>(this), list, changed](QVariantList const& jobs) {
        if (!self || (*self).*list == jobs) return;
        (*self).*list = jobs;
        Q_EMIT((*self).*changed)();
    };
    QThreadPool::globalInstance()->start([take, read] {
        QMetaObject::invokeMethod(
            QCoreApplication::instance(), [take, jobs = read()] { take(jobs); }, Qt::QueuedConnection);
    });
}

void JobList::lookAtWaiting() {
    // It may be made anew.
    if (watcher_.directories().isEmpty() && fs::exists(jobsFolder_))
        watcher_.addPath(QString::fromStdString(jobsFolder_.string()));
    LookBeside(&JobList::waiting_, &JobList::waitingChanged, [folder = jobsFolder_] { return WaitingJobs(folder); });
}

void JobList::lookAtPrinted(QString const& stem) {
    LookBeside(&JobList::printed_, &JobList::printedChanged, [stem] { return PrintedJobs(stem); });
}
