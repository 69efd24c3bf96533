#pragma once

#include <cstdint>
#include <filesystem>
#include <functional>
#include <string_view>
#include <vector>

#include "Scripting/RfidOperation.h"

namespace Zpl {

class Job;

namespace Host {

/// What the printer does with a job, as far as it concerns the pages of the job.
struct JobStatusChangedEvent {
    enum Status : std::int32_t { Streaming = 0, Paused = 1, PrintError = 2, Done = 3, RfidReadResponses = 4 };

    std::filesystem::path path;  ///< the job folder
    std::int32_t status = Streaming;
    std::uint32_t page = 0;                   ///< counted from 0
    std::vector<RfidReadResponse> responses;  ///< of RfidReadResponses alone

    friend bool operator==(JobStatusChangedEvent const&, JobStatusChangedEvent const&) = default;
};

/// The jobs between the end of their stream and the end of their printing. No call waits and none gives a result: each
/// copies its arguments and has its work done later, on the main thread, in the order of the calls. Any thread may
/// call.
class JobQueueInterface {
public:
    virtual ~JobQueueInterface() = default;

    /// Printing goes on with `page`. The functions may be empty; they run on the main thread.
    virtual void HandleUnpauseRequested(std::filesystem::path const& jobPath, unsigned page, bool printOnDemand,
                                        std::function<void()> const& updateMetaData,
                                        std::function<void()> const& resetPrinter,
                                        std::function<void()> const& signalPrinting) = 0;
    virtual void Handle(JobStatusChangedEvent const& event, bool printOnDemand,
                        std::function<void()> const& onPaused) = 0;
    virtual void Enqueue(Job const& job, std::string_view jobName, bool printOnDemand) = 0;
    virtual void CancelAll() = 0;
    /// Drops the jobs whose folders are gone.
    virtual void Cleanup() = 0;
};

}  // namespace Host
}  // namespace Zpl
