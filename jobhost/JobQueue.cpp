#include "jobhost/JobQueue.h"

#include <algorithm>
#include <memory>
#include <string>

#include "foundation/DebugZones.h"

namespace Zpl::Host {

namespace {

constexpr unsigned FirstSpan = 25;  // pages rendered when a job arrives
constexpr unsigned Span = 100;      // pages rendered from the page that prints on

using Jobs = std::vector<QueueJob>;

/// No job has the empty path, which stands for none.
Jobs::iterator Find(Jobs& jobs, std::filesystem::path const& path) {
    if (path.empty()) return jobs.end();
    return std::find_if(jobs.begin(), jobs.end(), [&](QueueJob const& job) { return job.JobPath() == path; });
}

void Call(std::function<void()> const& function) {
    if (function) function();
}

void AnswerFormatBefore(QueueJob const& job, unsigned page) {
    if (job.IsFormatBoundry(page)) job.SendEndOfFormatNetworkResponses(page - 1);
}

}  // namespace

void JobQueue::RenderFrom(QueueJob& job, unsigned page, bool printOnDemand) {
    if (printOnDemand) {
        job.RenderPrintOnDemand(page);
    } else {
        job.Render(page, Span, stop_);
    }
}

/// A job without a folder never prints: its sender must not wait for it.
bool JobQueue::StartOrClose(QueueJob& job, std::string const& name) {
    std::string reason = "its folder cannot be made";
    try {
        job.Start(name);
    } catch (std::exception const& error) {
        reason = error.what();
    }
    if (!job.JobPath().empty()) return true;
    DebugLog(Error, "job \"" + name + "\" is given up: " + reason);
    job.CloseNetwork();
    return false;
}

void JobQueue::Enqueue(Job const& job, std::string_view jobName, bool printOnDemand) {
    // One copy, however often the function is copied on its way.
    Q_EMIT dispatcher_.Dispatch(
        [this, held = std::make_shared<QueueJob>(job), name = std::string(jobName), printOnDemand](Jobs& jobs) {
            QueueJob& added = jobs.emplace_back(std::move(*held));
            if (!StartOrClose(added, name)) return jobs.pop_back();
            if (added.IsWaitingOnRfidReadResponse(0)) return;
            if (printOnDemand) {
                added.RenderPrintOnDemand(0);
            } else {
                added.Render(0, FirstSpan, stop_);
            }
        });
}

void JobQueue::Handle(JobStatusChangedEvent const& event, bool printOnDemand, std::function<void()> const& onPaused) {
    switch (event.status) {
        case JobStatusChangedEvent::Streaming: return HandleStreaming(event.path, event.page, printOnDemand);
        case JobStatusChangedEvent::Paused:
        case JobStatusChangedEvent::PrintError: return HandlePaused(event.path, event.page, onPaused);
        case JobStatusChangedEvent::Done: return HandleDone(event.path, event.page);
        case JobStatusChangedEvent::RfidReadResponses:
            return HandleNewRfidReadResponse(event.path, event.page, event.responses, printOnDemand);
        default: return;
    }
}

void JobQueue::HandleStreaming(std::filesystem::path const& path, unsigned page, bool printOnDemand) {
    Q_EMIT dispatcher_.Dispatch([this, path, page, printOnDemand](Jobs& jobs) {
        // Behind a pause that waits in the queue: its step would delete what is drawn here.
        if (stop_) return;
        auto const job = Find(jobs, path);
        if (job == jobs.end()) return;
        RenderFrom(*job, page, printOnDemand);
        AnswerFormatBefore(*job, page);
    });
}

void JobQueue::HandlePaused(std::filesystem::path const& path, unsigned page, std::function<void()> const& onPaused) {
    stop_.store(true, std::memory_order_release);
    Q_EMIT dispatcher_.Dispatch([this, path, page, onPaused](Jobs& jobs) {
        // Cleared whether or not there is such a job. Rendering that the flag was to end ran before this step.
        stop_ = false;
        auto const job = Find(jobs, path);
        if (job == jobs.end()) return;
        // First of all, so that the driver takes a folder without its pages for one that is being filled.
        job->DeleteTransferDone();
        Call(onPaused);
        job->DeletePages();
        job->RenderThumbnail(page);
    });
}

void JobQueue::HandleUnpauseRequested(std::filesystem::path const& jobPath, unsigned page, bool printOnDemand,
                                      std::function<void()> const& updateMetaData,
                                      std::function<void()> const& resetPrinter,
                                      std::function<void()> const& signalPrinting) {
    Q_EMIT dispatcher_.Dispatch(
        [this, jobPath, page, printOnDemand, updateMetaData, resetPrinter, signalPrinting](Jobs& jobs) {
            auto const job = Find(jobs, jobPath);
            if (job == jobs.end()) return;
            if (job->Quantity() <= page) {
                // There is nothing left to render: the driver is told to go on here, and once more below.
                job->End();
                Call(signalPrinting);
            }
            // The driver is told to go on once the folder says from where, and holds none of the pages that a preview
            // of the pause has left.
            Call(updateMetaData);
            job->DeletePages();
            Call(resetPrinter);
            Call(signalPrinting);
            RenderFrom(*job, page, printOnDemand);
            AnswerFormatBefore(*job, page);
        });
}

void JobQueue::HandleNewRfidReadResponse(std::filesystem::path const& path, unsigned page,
                                         std::vector<RfidReadResponse> const& responses, bool printOnDemand) {
    Q_EMIT dispatcher_.Dispatch([this, path, page, responses, printOnDemand](Jobs& jobs) {
        auto const job = Find(jobs, path);
        if (job == jobs.end()) return;
        // What the tag answered may stand on the page, so it is drawn only now.
        job->SetRfidReadResponse(page, responses);
        RenderFrom(*job, page, printOnDemand);
    });
}

void JobQueue::HandleDone(std::filesystem::path const& path, unsigned page) {
    Q_EMIT dispatcher_.Dispatch([path, page](Jobs& jobs) {
        auto const job = Find(jobs, path);
        if (job == jobs.end()) return;
        if (job->IsLastPageOfJob(page)) job->SendEndOfFormatNetworkResponses(page);
        job->CloseNetwork();
        job->DeleteJobFolder();
        jobs.erase(job);
    });
}

void JobQueue::CancelAll() {
    Q_EMIT dispatcher_.Dispatch([](Jobs& jobs) {
        for (auto const& job : jobs) job.DeleteJobFolder();
        jobs.clear();
    });
}

void JobQueue::Cleanup() {
    Q_EMIT dispatcher_.Dispatch([](Jobs& jobs) {
        // By their paths: erasing a job moves the others. A folder that cannot be looked at counts as gone.
        std::vector<std::filesystem::path> gone;
        for (auto const& job : jobs) {
            std::error_code error;
            auto const type = std::filesystem::status(job.JobPath(), error).type();
            if (type == std::filesystem::file_type::none || type == std::filesystem::file_type::not_found)
                gone.push_back(job.JobPath());
        }
        for (auto const& path : gone) {
            auto const job = Find(jobs, path);
            job->CloseNetwork();
            jobs.erase(job);
        }
    });
}

}  // namespace Zpl::Host
