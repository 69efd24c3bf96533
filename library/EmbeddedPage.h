#pragma once

#include <memory>
#include <mutex>
#include <optional>
#include <span>
#include <string>
#include <string_view>

#include "library/DrawCopies.h"
#include "library/PageFormat.h"
#include "library/PageReport.h"

/// A drawn page as a value of its own. Any thread may read it, also at once with others.
class EmbeddedPage {
public:
    EmbeddedPage(std::unique_ptr<Scripting::FinishedPage> page, PageReport report);

    Scripting::Extent Size() const { return size_; }  ///< pixels
    unsigned Dpi() const { return dpi_; }
    /// Rows as of PackedPage, for as long as the page lives.
    std::string_view Rows() const;
    /// A JSON array; an empty one where fields are not mapped.
    std::string const& Fields() const { return fields_; }
    /// A JSON object, as a page of docs/report.md without its path.
    std::string const& Report() const { return report_; }

    /// One file of these pages. Throws OutputError if it cannot hold them.
    static std::string FileOf(PageFormat const& format, std::span<EmbeddedPage const* const> pages);

private:
    /// In the form of `format`, until another one is asked for. Called under the lock.
    PageForm const& FormOf(PageFormat const& format) const;

    Scripting::Extent size_;
    unsigned dpi_;
    std::string fields_;
    std::string report_;
    mutable std::mutex mutex_;  ///< guards what follows
    std::unique_ptr<Scripting::FinishedPage> page_;
    mutable std::string rows_;
    mutable PageFormat const* format_ = nullptr;  ///< that the page was asked for last
    mutable PageForm form_{};
};
