#include "jobhost/model/QueueJob.h"

#include <algorithm>
#include <cstdint>
#include <string>

#include "PrintEngine/Printing/JobFileSystemStrings.h"
#include "foundation/DebugZones.h"
#include "foundation/Ending.h"

namespace Zpl::Host {

namespace {

bool IsNumber(std::string const& name) {
    return !name.empty() && std::all_of(name.begin(), name.end(), [](char c) { return c >= '0' && c <= '9'; });
}

}  // namespace

bool QueueJob::HasFile(unsigned page) const {
    std::error_code error;
    auto const type = std::filesystem::status(JobPath() / std::to_string(page), error).type();
    return type != std::filesystem::file_type::none && type != std::filesystem::file_type::not_found;
}

void QueueJob::RenderPage(unsigned page) {
    try {
        job_.RenderLabel(page);
    } catch (std::exception const& error) {
        DebugLog(Error, "page " + std::to_string(page + 1) + " of job " + JobPath().filename().string() +
                            " cannot be drawn and stays empty: " + error.what());
        job_.RenderBlank(page);
    }
}

void QueueJob::RenderAll() {
    for (unsigned page = 0; page < Quantity() && !processIsEnding; ++page) RenderPage(page);
    End();
}

void QueueJob::Render(unsigned first, unsigned count, std::atomic<bool> const& stop) {
    RenderSpan(first, count, stop);
    if (first == 0 || !HasFile(first - 1)) return;
    std::error_code error;
    std::filesystem::remove(JobPath() / std::to_string(first - 1), error);
}

void QueueJob::RenderSpan(unsigned first, unsigned count, std::atomic<bool> const& stop) {
    std::uint64_t const end = std::uint64_t{first} + count;
    for (unsigned i = lastRendered_ ? std::min(*lastRendered_ + 1, first) : first;; ++i) {
        // Asked from the start of the span, also where rendering has caught up from before it.
        auto const pause = job_.NextPauseIndex(first);
        unsigned const quantity = Quantity();
        std::uint64_t const limit = pause ? *pause : std::min<std::uint64_t>(quantity, end);
        if (i >= limit || IsWaitingOnRfidReadResponse(i)) return;
        if (!HasFile(i)) {
            RenderPage(i);
            job_.LogTagOperations(i);
            // Carries the start of the span for every page of it.
            job_.SendEndOfPageNetworkResponses(first);
            lastRendered_ = i;
        }
        if (i == quantity - 1) End();
        if (stop || processIsEnding) return;
    }
}

void QueueJob::RenderPrintOnDemand(unsigned page) {
    if (IsWaitingOnRfidReadResponse(page)) return;
    RenderPage(page);
    job_.LogTagOperations(page);
    job_.SendEndOfPageNetworkResponses(page);
    if (page == Quantity() - 1) {
        End();
        return;
    }
    if (IsWaitingOnRfidReadResponse(page + 1)) return;
    // The page ahead is not printed yet, so it is not answered for.
    RenderPage(page + 1);
}

void QueueJob::RenderThumbnail(unsigned page) const {
    if (page >= Quantity() - 1) return;
    QueueJob copy(job_);
    copy.RenderPage(page);
    copy.RenderPage(page + 1);
}

void QueueJob::DeletePages() {
    std::error_code error;
    std::vector<std::filesystem::path> pages;
    for (std::filesystem::directory_iterator entry(JobPath(), error), end; !error && entry != end;
         entry.increment(error)) {
        if (IsNumber(entry->path().filename().string())) pages.push_back(entry->path());
    }
    // Not while the folder is being walked, which might then skip some.
    for (auto const& page : pages) std::filesystem::remove(page, error);
    lastRendered_.reset();
}

void QueueJob::DeleteTransferDone() const {
    std::error_code error;
    std::filesystem::remove(JobPath() / JobFileSystemStrings::TransferDoneFileName, error);
}

void QueueJob::DeleteJobFolder() const {
    // A job that could not be started has no folder, and an empty path must not name the folder that we stand in.
    if (JobPath().empty()) return;
    std::error_code error;
    std::filesystem::remove_all(JobPath(), error);
}

}  // namespace Zpl::Host
