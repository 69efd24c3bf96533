#pragma once

#include <cstdint>
#include <filesystem>
#include <functional>
#include <optional>
#include <string_view>
#include <utility>
#include <vector>

#include "labels/Label.h"

namespace Zpl {

/// Labels printed as one unit. Pages are counted from 0 across the job; page p belongs to the label whose cumulative
/// quantity first exceeds p. A page beyond the end belongs to no label: operations on it do nothing and answer no.
class Job {
public:
    /// `closeNetwork` runs when the job is done with; may be empty. `flag` is handed to the start of the job.
    Job(std::vector<Label> labels, std::function<void()> closeNetwork, bool flag);

    /// A file of a job's folder has this in front of the number of the packet which ended its stream, in decimal
    /// digits, as its name: by it who sent the stream knows what became of it. It is there before the first page is, or
    /// with a later one if there was no room for it.
    static constexpr std::string_view OriginPrefix = "Origin-";

    /// To be called before Start; without it there is no such file.
    void SetOrigin(std::uint32_t packetNumber) { origin_ = packetNumber; }
    void Start(std::string_view jobName);
    void End();
    /// The job's folder; empty before Start.
    std::filesystem::path const& JobPath() const { return jobPath_; }

    std::vector<Label> const& Labels() const { return labels_; }
    /// Number of pages, in 32-bit arithmetic.
    unsigned Quantity() const { return static_cast<unsigned>(pages_); }
    /// The page count after which printing pauses next, seen from `page`.
    std::optional<unsigned> NextPauseIndex(unsigned page) const;
    void RenderLabel(unsigned page);
    /// Puts an empty page where one cannot be drawn.
    void RenderBlank(unsigned page);
    /// Whether `page` is the first copy of a label other than the first. (The spelling is part of the interface.)
    bool IsFormatBoundry(unsigned page) const;
    /// Whether `page` is the last copy of the last label. Beyond the end this is so only if that label has one copy.
    bool IsLastPageOfJob(unsigned page) const;

    void SendEndOfFormatNetworkResponses(unsigned page) const;
    void SendEndOfPageNetworkResponses(unsigned page) const;
    /// Puts the tag of a page that has just been rendered into the printer's tag log.
    void LogTagOperations(unsigned page) const;
    bool IsWaitingOnRfidReadResponse(unsigned page) const;
    void SetRfidReadResponse(unsigned page, std::vector<RfidReadResponse> const& responses);
    void CloseNetwork() const;

private:
    struct Place {
        std::size_t label;  ///< index into labels_; their number for a page beyond the end
        unsigned base;      ///< pages before that label
        unsigned copy;      ///< copy index within the label
    };
    Place Find(unsigned page) const;
    Label const* LabelOf(Place const& place) const;
    void WriteOrigin();

    /// What the page arithmetic needs of a label. None of it changes from copy to copy, so it is read once: a job may
    /// hold many thousands of labels, and each page is looked up.
    struct Extent {
        std::uint64_t base;  ///< pages before the label
        unsigned quantity;
        unsigned pauseGroup;
        bool pauseAfter;
        std::optional<unsigned> pauseBehind;  ///< the first pause that a label behind it asks for
    };

    std::filesystem::path jobPath_;
    std::vector<Label> labels_;
    std::vector<Extent> extents_;  // one a label
    std::uint64_t pages_ = 0;
    std::function<void()> closeNetwork_;
    bool flag_;
    std::uint32_t origin_ = 0;
    bool isOriginWritten_ = false;
};

}  // namespace Zpl
