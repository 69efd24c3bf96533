#include "labels/Job.h"

#include <algorithm>
#include <string>

#include "PrintEngine/Printing/JobFileSystemStrings.h"
#include "foundation/DebugZones.h"
#include "foundation/Files.h"
#include "foundation/Log.h"

namespace Zpl {

namespace {

/// A pause behind each of a hundred million labels is legal to ask for, and must not fill the memory.
constexpr std::size_t MostPauses = 1'000'000;

}  // namespace

Job::Job(std::vector<Label> labels, std::function<void()> closeNetwork, bool flag)
    : labels_(std::move(labels)), closeNetwork_(std::move(closeNetwork)), flag_(flag) {
    extents_.reserve(labels_.size());
    for (auto const& label : labels_) {
        extents_.push_back({pages_, label.Quantity(), label.PauseGroupQuantity(), label.PauseAfterSet(), {}});
        pages_ += extents_.back().quantity;
    }
    std::optional<unsigned> next;
    for (auto extent = extents_.rbegin(); extent != extents_.rend(); ++extent) {
        extent->pauseBehind = next;
        if (extent->pauseGroup != 0 && extent->quantity >= extent->pauseGroup)
            next = static_cast<unsigned>(extent->base + extent->pauseGroup);
        else if (extent->pauseAfter)
            next = static_cast<unsigned>(extent->base + extent->quantity);
    }
}

Job::Place Job::Find(unsigned page) const {
    // The last label that begins at or before the page. Labels without pages share their base with the next one, which
    // stands behind them.
    auto const after = std::upper_bound(extents_.begin(), extents_.end(), page,
                                        [](unsigned wanted, Extent const& extent) { return wanted < extent.base; });
    if (page >= pages_ || after == extents_.begin()) return {labels_.size(), Quantity(), page - Quantity()};
    auto const index = static_cast<std::size_t>(after - extents_.begin()) - 1;
    auto const base = static_cast<unsigned>(extents_[index].base);
    return {index, base, page - base};
}

Label const* Job::LabelOf(Place const& place) const {
    return place.label < labels_.size() ? &labels_[place.label] : nullptr;
}

void Job::Start(std::string_view jobName) {
    if (labels_.empty()) return;
    std::vector<unsigned> pauses;
    for (auto next = NextPauseIndex(0); next; next = NextPauseIndex(*next)) {
        if (pauses.size() == MostPauses) {
            Log::Report(LogTopic::Limit,
                        "the job pauses more than " + std::to_string(MostPauses) + " times; later pauses are left out");
            break;
        }
        pauses.push_back(*next);
    }

    std::vector<PageRangeRfidOperations> tagOperations;
    unsigned first = 0;
    for (std::size_t i = 0; i < labels_.size(); ++i) {
        unsigned const pages = std::max(extents_[i].quantity, 1U);
        if (labels_[i].HasRfidOperations())
            tagOperations.push_back({first, first + pages - 1, labels_[i].GetRfidOperations()});
        first += pages;
    }
    jobPath_ = labels_.front().StartJob(jobName, Quantity(), pauses, flag_, tagOperations);
    WriteOrigin();
}

/// Where the disk was full for it a page may have room.
void Job::WriteOrigin() {
    if (origin_ == 0 || jobPath_.empty() || isOriginWritten_) return;
    std::string const origin = std::string(OriginPrefix) + std::to_string(origin_);
    auto const error = MakeMark(jobPath_ / origin, jobPath_ / JobFileSystemStrings::MetaDataFileName);
    if (error) DebugLog(Error, "cannot write in " + jobPath_.string() + ": " + error.message());
    isOriginWritten_ = !error;
}

void Job::End() {
    if (!labels_.empty()) labels_.front().EndJob(jobPath_);
}

std::optional<unsigned> Job::NextPauseIndex(unsigned page) const {
    Place const place = Find(page);
    if (place.label == extents_.size()) return std::nullopt;

    auto const& [base, quantity, group, pauseAfter, pauseBehind] = extents_[place.label];
    if (group != 0) {
        // Counted in 64 bits: a group may be as large as a number can be.
        std::uint64_t const next = std::uint64_t{group} * (1 + place.copy / group);
        if (quantity >= next) return static_cast<unsigned>(base + next);
    }
    if (pauseAfter) return static_cast<unsigned>(base + quantity);
    return pauseBehind;
}

void Job::RenderLabel(unsigned page) {
    Place const place = Find(page);
    if (!LabelOf(place)) return;
    WriteOrigin();
    // The last page of the job, not of its label.
    bool const isLast = Quantity() - 1 <= page;
    labels_[place.label].RenderLabel(jobPath_, place.copy, page, isLast);
}

void Job::RenderBlank(unsigned page) {
    Place const place = Find(page);
    if (LabelOf(place)) labels_[place.label].RenderBlank(jobPath_, page, Quantity() - 1 <= page);
}

bool Job::IsFormatBoundry(unsigned page) const {
    Place const place = Find(page);
    return LabelOf(place) && place.label > 0 && place.copy == 0;
}

bool Job::IsLastPageOfJob(unsigned page) const {
    if (labels_.empty()) return false;
    Place const place = Find(page);
    if (!LabelOf(place)) return extents_.back().quantity == 1;
    return place.label + 1 == labels_.size() && place.copy + 1 == extents_[place.label].quantity;
}

void Job::SendEndOfFormatNetworkResponses(unsigned page) const {
    if (Label const* label = LabelOf(Find(page))) label->SendEndOfFormatNetworkResponses();
}

void Job::SendEndOfPageNetworkResponses(unsigned page) const {
    if (Label const* label = LabelOf(Find(page))) label->SendEndOfPageNetworkResponses();
}

void Job::LogTagOperations(unsigned page) const {
    if (auto const* label = LabelOf(Find(page))) label->LogTagOperations();
}

bool Job::IsWaitingOnRfidReadResponse(unsigned page) const {
    Place const place = Find(page);
    Label const* const label = LabelOf(place);
    return label && label->IsWaitingOnRfidReadResponse(place.copy);
}

void Job::SetRfidReadResponse(unsigned page, std::vector<RfidReadResponse> const& responses) {
    Place const place = Find(page);
    if (LabelOf(place)) labels_[place.label].SetRfidReadResponse(place.copy, responses);
}

void Job::CloseNetwork() const {
    if (closeNetwork_) closeNetwork_();
}

}  // namespace Zpl
