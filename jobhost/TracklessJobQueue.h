#pragma once

#include "jobhost/JobQueueDispatcher.h"
#include "jobhost/model/JobQueueInterface.h"

namespace Zpl::Host {

/// Renders every page of a job at once and forgets the job; what the printer reports has no effect.
class TracklessJobQueue : public JobQueueInterface {
public:
    void HandleUnpauseRequested(std::filesystem::path const&, unsigned, bool, std::function<void()> const&,
                                std::function<void()> const&, std::function<void()> const&) override {}
    void Handle(JobStatusChangedEvent const&, bool, std::function<void()> const&) override {}
    void Enqueue(Job const& job, std::string_view jobName, bool printOnDemand) override;
    void CancelAll() override {}
    void Cleanup() override {}

private:
    JobQueueDispatcher dispatcher_;
};

}  // namespace Zpl::Host
