#pragma once

#include <atomic>

#include "jobhost/JobQueueDispatcher.h"
#include "jobhost/model/JobQueueInterface.h"

namespace Zpl::Host {

/// Paces rendering by what the printer reports: some pages when a job arrives, then always a span ahead of the page
/// that prints. A paused job loses its pages and gets them again when it goes on.
class JobQueue : public JobQueueInterface {
public:
    void HandleUnpauseRequested(std::filesystem::path const& jobPath, unsigned page, bool printOnDemand,
                                std::function<void()> const& updateMetaData, std::function<void()> const& resetPrinter,
                                std::function<void()> const& signalPrinting) override;
    void Handle(JobStatusChangedEvent const& event, bool printOnDemand, std::function<void()> const& onPaused) override;
    void Enqueue(Job const& job, std::string_view jobName, bool printOnDemand) override;
    void CancelAll() override;
    void Cleanup() override;

private:
    void HandleStreaming(std::filesystem::path const& path, unsigned page, bool printOnDemand);
    /// Sets the stop flag at once, so that rendering under way ends behind its page.
    void HandlePaused(std::filesystem::path const& path, unsigned page, std::function<void()> const& onPaused);
    void HandleDone(std::filesystem::path const& path, unsigned page);
    void HandleNewRfidReadResponse(std::filesystem::path const& path, unsigned page,
                                   std::vector<RfidReadResponse> const& responses, bool printOnDemand);
    static bool StartOrClose(QueueJob& job, std::string const& name);
    void RenderFrom(QueueJob& job, unsigned page, bool printOnDemand);

    JobQueueDispatcher dispatcher_;
    std::atomic<bool> stop_{false};
};

}  // namespace Zpl::Host
