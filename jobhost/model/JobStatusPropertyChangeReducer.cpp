#include "jobhost/model/JobStatusPropertyChangeReducer.h"

#include <algorithm>
#include <iterator>

#include "PrintEngine/Printing/JobFileSystemStrings.h"

namespace Zpl::Host {

namespace {

std::optional<std::int32_t> StatusOf(std::string_view text) {
    struct Row {
        std::string_view text;
        std::int32_t status;
    };
    static constexpr Row Rows[] = {
        {"", JobStatusChangedEvent::Done},
        {"Streaming", JobStatusChangedEvent::Streaming},
        {"Printing", JobStatusChangedEvent::Streaming},
        {"Print Paused", JobStatusChangedEvent::Paused},
        {"Print Error", JobStatusChangedEvent::PrintError},
    };
    auto const row = std::find_if(std::begin(Rows), std::end(Rows), [&](Row const& r) { return r.text == text; });
    if (row == std::end(Rows)) return std::nullopt;
    return row->status;
}

}  // namespace

JobStatusChangedEvent JobStatusPropertyChangeReducer::Remember() {
    current_ = JobStatusChangedEvent{path_, *status_, page_, {}};
    return *current_;
}

std::optional<JobStatusChangedEvent> JobStatusPropertyChangeReducer::StatusChanged(std::string_view text) {
    auto const status = StatusOf(text);
    if (!status || status_ == status) return std::nullopt;
    status_ = status;
    if (path_.empty()) return std::nullopt;
    JobStatusChangedEvent event = Remember();
    if (*status == JobStatusChangedEvent::Done) {
        path_.clear();
        page_ = 0;
    }
    return event;
}

std::optional<JobStatusChangedEvent> JobStatusPropertyChangeReducer::PathChanged(std::string_view text) {
    path_ = text == JobFileSystemStrings::NoPage ? std::string_view() : text;
    if (!status_) return std::nullopt;
    return Remember();
}

std::optional<JobStatusChangedEvent> JobStatusPropertyChangeReducer::PageChanged(unsigned value) {
    if (value == 0) return std::nullopt;
    page_ = value;
    if (!current_ || current_->path != path_ || current_->page == page_ ||
        current_->status != JobStatusChangedEvent::Streaming) {
        return std::nullopt;
    }
    // The event remembered keeps its page.
    JobStatusChangedEvent event = *current_;
    event.page = page_;
    return event;
}

std::optional<JobStatusChangedEvent> JobStatusPropertyChangeReducer::NewRfidReadResponse(
    std::vector<RfidReadResponse> responses) const {
    if (!current_) return std::nullopt;
    JobStatusChangedEvent event = *current_;
    event.status = JobStatusChangedEvent::RfidReadResponses;
    event.responses = std::move(responses);
    return event;
}

}  // namespace Zpl::Host
