#include "jobhost/model/QueueJob.h"

#include <dirent.h>

#include <algorithm>
#include <cstdint>
#include <string>
#include <vector>

#include "PrintEngine/Printing/JobFileSystemStrings.h"
#include "foundation/DebugZones.h"
#include "foundation/Ending.h"

namespace Zpl::Host {

namespace {

bool IsNumber(std::string_view name) {
    return !name.empty() && std::all_of(name.begin(), name.end(), [](char c) { return c >= '0' && c <= '9'; });
}

/// The names of the page files of a folder; of one that cannot be read, none.
std::vector<std::string> PageNames(std::filesystem::path const& folder) {
    std::vector<std::string> names;
    std::unique_ptr<DIR, int (*)(DIR*)> const open(::opendir(folder.c_str()), &::closedir);
    while (dirent const* const entry = open ? ::readdir(open.get()) : nullptr) {
        if (IsNumber(entry->d_name)) names.emplace_back(entry->d_name);
    }
    return names;
}

bool HasFile(std::filesystem::path const& folder, unsigned page) {
    std::error_code error;
    auto const type = std::filesystem::status(folder / std::to_string(page), error).type();
    return type != std::filesystem::file_type::none && type != std::filesystem::file_type::not_found;
}

/// Which pages of a span have files. Every page that prints has a hundred looked at, so a long span is asked for in one
/// reading of the folder.
class SpanFiles {
public:
    SpanFiles(std::filesystem::path const& folder, std::uint64_t pages) : folder_(folder), isListed_(pages > Few) {
        if (!isListed_) return;
        names_ = PageNames(folder);
        std::ranges::sort(names_);
    }
    bool Has(unsigned page) const {
        return isListed_ ? std::ranges::binary_search(names_, std::to_string(page)) : HasFile(folder_, page);
    }

private:
    static constexpr std::uint64_t Few = 4;
    std::filesystem::path const& folder_;
    bool isListed_;
    std::vector<std::string> names_;
};

}  // namespace

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
    if (first == 0) return;
    std::error_code error;
    std::filesystem::remove(JobPath() / std::to_string(first - 1), error);
}

void QueueJob::RenderSpan(unsigned first, unsigned count, std::atomic<bool> const& stop) {
    unsigned const begin = lastRendered_ ? std::min(*lastRendered_ + 1, first) : first;
    // Asked from the start of the span, also where rendering catches up from before it.
    auto const pause = job_.NextPauseIndex(first);
    std::uint64_t const limit = pause ? *pause : std::min<std::uint64_t>(Quantity(), std::uint64_t{first} + count);
    if (begin >= limit) return;
    SpanFiles const files(JobPath(), limit - begin);
    for (unsigned i = begin; i < limit && !IsWaitingOnRfidReadResponse(i); ++i) {
        if (!files.Has(i)) {
            RenderPage(i);
            job_.LogTagOperations(i);
            // Carries the start of the span for every page of it.
            job_.SendEndOfPageNetworkResponses(first);
            lastRendered_ = i;
        }
        if (i == Quantity() - 1) End();
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
    // Not while the folder is being walked, which might then skip some.
    for (auto const& page : PageNames(JobPath())) std::filesystem::remove(JobPath() / page, error);
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
