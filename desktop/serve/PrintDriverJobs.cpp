// Which job the print driver takes next, and what becomes of jobs that are cancelled or whose host has failed.

#include <algorithm>
#include <charconv>
#include <chrono>

#include "desktop/serve/PrintDriver.h"
#include "foundation/DebugZones.h"
#include "foundation/Files.h"
#include "labels/Job.h"

using PrintEngine::Printing::JobMetaData;

namespace {

constexpr std::chrono::milliseconds Later{20};
constexpr std::chrono::milliseconds CancellationTime{100};  // for the host to take away all that it cancels

}  // namespace

/// The host takes away the folders of the jobs that it cancels, in a moment. What stands then came later, and prints.
void PrintDriver::NoteCancellation() {
    cancelled_ = {job_};
    std::error_code error;
    for (auto const& entry : std::filesystem::directory_iterator(options_.jobsFolder, error))
        cancelled_.insert(entry.path());
    cancellation_ = QDeadlineTimer(CancellationTime);
}

/// The host has heard of everything when all is taken by a server that the host is there on.
bool PrintDriver::HostHasHeard() {
    // Whoever is taken last calls again.
    if (!status_->IsTaken() || !path_->IsTaken() || !page_->IsTaken()) return false;
    if (driver_.IsHostThere()) return true;
    nextTimer_.start(Later);
    return false;
}

void PrintDriver::GoAhead() {
    if (state_ == State::Paused) ReportPause();
    if (state_ != State::Idle && state_ != State::Ending) return;
    if (!HostHasHeard()) return;
    if (state_ == State::Ending) return ReportEnd();
    // Hosts ask whether the printer is paused, also while it has nothing to print.
    status_->Set(options_.paused ? "Print Paused" : "");
    if (!options_.paused) StartNext();
}

void PrintDriver::StartNext() {
    std::erase_if(finished_, [](auto const& path) { return !std::filesystem::exists(path); });
    WaitingJobs waiting;
    auto first = waiting.end();
    std::error_code error;
    bool incomplete = false;
    for (auto const& entry : std::filesystem::directory_iterator(options_.jobsFolder, error)) {
        if (finished_.contains(entry.path())) continue;
        auto const known = waiting_.find(entry.path());
        auto const job = waiting.emplace(entry.path(), known == waiting_.end() ? 0 : known->second).first;
        bool const isDoomed = doomed_.contains(entry.path()) && !doomEnd_.hasExpired();
        if (!isDoomed && job->second == 0) job->second = SerialOf(entry.path());
        if (isDoomed || job->second == 0)
            incomplete = true;
        else if (first == waiting.end() || job->second < first->second)
            first = job;
    }
    CleanUpAfter(waiting);
    auto metaData = first == waiting.end() ? std::nullopt : JobMetaData::Read(first->first);
    bool const asksForOrigin = cut_ || cancelledUpTo_ > 0;
    bool const isHeld =
        metaData && ((asksForOrigin && !IsOriginKnown(first->first, *metaData)) || !cancellation_.hasExpired());
    if (metaData && !isHeld) return Start(first->first, std::move(*metaData));
    // A job whose folder was made a moment ago gets its metadata next.
    if (incomplete || first != waiting.end()) nextTimer_.start(Later);
}

/// The number by which jobs are in order; 0 while the metadata are not there, which come behind the folder. The driver
/// is told of that.
std::uint64_t PrintDriver::SerialOf(std::filesystem::path const& job) {
    auto metaData = JobMetaData::Read(job);
    if (!metaData && watcher_.addPath(QString::fromStdString(job.string()))) metaData = JobMetaData::Read(job);
    return metaData ? metaData->serial : 0;
}

/// The host does not see that the folder of a job has been taken from it.
void PrintDriver::CleanUpAfter(WaitingJobs const& waiting) {
    auto const path = &WaitingJobs::value_type::first;
    bool const allStand = std::ranges::includes(waiting, waiting_, {}, path, path);
    waiting_ = waiting;
    if (allStand) return;
    canSend_->Set("false");
    // Whoever takes folders away may not be through.
    cancellation_ = QDeadlineTimer(CancellationTime);
}

void PrintDriver::CancelAll() {
    NoteCancellation();
    // However long the host takes for it, of these none prints.
    doomed_ = cancelled_;
    doomEnd_ = QDeadlineTimer(options_.patience);
    cancelZpl_->Set(true);
}

/// The last page of a job takes its time like the others, but is kept by then.
void PrintDriver::GiveUpJobs() {
    bool const isCut = (state_ == State::Printing || state_ == State::Paused) && next_ < metaData_.totalPages;
    if (isCut && origin_ != 0) cut_ = CutJob{origin_, next_, state_ == State::Paused && !options_.paused};
    std::error_code error;
    for (auto const& entry : std::filesystem::directory_iterator(options_.jobsFolder, error)) {
        std::error_code ignored;
        std::filesystem::remove_all(entry.path(), ignored);
    }
    // Nobody is there any more who would say that it is done.
    cancelZpl_->Set(false);
    waiting_.clear();
    doomed_.clear();
    if (isCut)
        EndJob();
    else if (state_ == State::Printing || state_ == State::Paused)
        FinishJob();
}

/// The file is there before the first page is, but perhaps not when the job is seen.
bool PrintDriver::IsOriginKnown(std::filesystem::path const& job, JobMetaData const& metaData) {
    return OriginOf(job) != 0 || std::filesystem::exists(job / std::to_string(metaData.firstPage));
}

std::uint32_t PrintDriver::OriginOf(std::filesystem::path const& job) {
    std::error_code error;
    for (auto const& entry : std::filesystem::directory_iterator(job, error)) {
        std::string const name = entry.path().filename().string();
        if (!name.starts_with(Zpl::Job::OriginPrefix)) continue;
        std::uint32_t number = 0;
        std::from_chars(name.data() + Zpl::Job::OriginPrefix.size(), name.data() + name.size(), number);
        return number;
    }
    return 0;
}

/// A job whose folder is gone is over: the host has cancelled it, or somebody has cleaned up.
bool PrintDriver::EndIfGone() {
    std::error_code error;
    if (state_ == State::Idle || state_ == State::Ending || std::filesystem::exists(job_, error)) return false;
    // The word of a cancellation may still be on its way, and others may go too.
    cancellation_ = QDeadlineTimer(CancellationTime);
    QTimer::singleShot(CancellationTime, this, [this, path = job_, name = names_.Job()] {
        if (cancelled_.contains(path))
            say_("job " + name + " is cancelled");
        else
            DebugLog(Error, "the folder of job " + name + " is gone; the job is given up");
    });
    // Nobody has looked at those that wait while this one was under way. What goes when the host has looked is missed
    // when the next one is looked for.
    for (auto const& entry : std::filesystem::directory_iterator(options_.jobsFolder, error)) {
        if (!finished_.contains(entry.path())) waiting_.emplace(entry.path(), 0);
    }
    canSend_->Set("false");
    FinishJob();
    return true;
}
