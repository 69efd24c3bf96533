#pragma once

#include <optional>
#include <string_view>

#include "jobhost/model/JobQueueInterface.h"

namespace Zpl::Host {

/// Makes events of the three properties by which the print driver tells what it does. One thread at a time.
///
/// A path that arrives while a status is known gives an event with that status, whichever it is; so a driver reports
/// the status of a new job before its path.
class JobStatusPropertyChangeReducer {
public:
    std::optional<JobStatusChangedEvent> StatusChanged(std::string_view text);
    std::optional<JobStatusChangedEvent> PathChanged(std::string_view text);
    /// Page 0 never gives an event: the first pages of a job are rendered when it is enqueued.
    std::optional<JobStatusChangedEvent> PageChanged(unsigned value);
    std::optional<JobStatusChangedEvent> NewRfidReadResponse(std::vector<RfidReadResponse> responses) const;

private:
    JobStatusChangedEvent Remember();

    std::optional<JobStatusChangedEvent> current_;
    std::uint32_t page_ = 0;
    std::filesystem::path path_;
    std::optional<std::int32_t> status_;
};

}  // namespace Zpl::Host
