#pragma once

#include <optional>
#include <string>

#include "foundation/Json.h"
#include "library/PageReport.h"
#include "library/StreamInterpreter.h"

/// The report of one stream for programs, as docs/report.md describes it, with pictures in place of paths.
class StreamReport {
public:
    StreamReport();

    void AddLabel(FinishedLabel const& label, std::optional<PageFields> const& fields);
    /// `picture`: an address that holds the picture itself; none if it is empty.
    void AddPage(PageReport const& page, std::string const& picture);
    /// Ends it.
    std::string Text(Findings const& findings);
    /// Bytes of the pictures so far.
    std::size_t Size() const { return size_; }

private:
    void BeginList(char const* name);

    JsonWriter writer_;
    bool inList_ = false;
    std::size_t size_ = 0;
};
