#pragma once

#include <atomic>
#include <filesystem>
#include <optional>
#include <string_view>

#include "labels/Job.h"

namespace Zpl::Host {

/// One job in the queue: renders spans of pages into the job folder and removes them again. File errors are swallowed:
/// a page that cannot be removed stays. A page that cannot be drawn becomes an empty one, so that the others print. All
/// calls on the main thread.
class QueueJob {
public:
    explicit QueueJob(Job job) : job_(std::move(job)) {}

    void Start(std::string_view jobName) { job_.Start(jobName); }
    void End() { job_.End(); }
    unsigned Quantity() const { return job_.Quantity(); }
    std::filesystem::path const& JobPath() const { return job_.JobPath(); }
    void CloseNetwork() const { job_.CloseNetwork(); }
    bool IsWaitingOnRfidReadResponse(unsigned page) const { return job_.IsWaitingOnRfidReadResponse(page); }
    void SetRfidReadResponse(unsigned page, std::vector<RfidReadResponse> const& responses) {
        job_.SetRfidReadResponse(page, responses);
    }
    bool IsFormatBoundry(unsigned page) const { return job_.IsFormatBoundry(page); }
    void SendEndOfFormatNetworkResponses(unsigned page) const { job_.SendEndOfFormatNetworkResponses(page); }
    bool IsLastPageOfJob(unsigned page) const { return job_.IsLastPageOfJob(page); }

    /// Renders every page at once, whatever the printer does.
    void RenderAll();
    /// Renders `count` pages from `first` on, without those that have a file, and what lies unrendered before `first`.
    /// A pause index ahead takes the place of the span's end. Leaves early when a page waits for its tag or `stop` is
    /// set. In the end the page before `first` is removed: it has been printed.
    void Render(unsigned first, unsigned count, std::atomic<bool> const& stop);
    /// Renders a page and the one behind it, whether or not there are files.
    void RenderPrintOnDemand(unsigned page);
    /// Renders a page and the one behind it on a copy of the job, for the preview.
    void RenderThumbnail(unsigned page) const;

    /// Removes every page file.
    void DeletePages();
    void DeleteTransferDone() const;
    void DeleteJobFolder() const;

private:
    void RenderPage(unsigned page);
    void RenderSpan(unsigned first, unsigned count, std::atomic<bool> const& stop);

    Job job_;
    std::optional<unsigned> lastRendered_;  // since the pages were last deleted
};

}  // namespace Zpl::Host
