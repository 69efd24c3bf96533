#pragma once

#include <cstddef>
#include <filesystem>
#include <optional>
#include <string>
#include <string_view>

#include "desktop/CommandLine.h"
#include "foundation/Json.h"
#include "jobhost/model/Findings.h"
#include "library/OutputError.h"
#include "library/PageReport.h"

/// One page as it was written.
struct RenderedPage {
    std::filesystem::path path;
    unsigned page;                   ///< in a file of several, from 1; 0 in a file of its own
    unsigned rotation;               ///< of its picture, in degrees clockwise
    std::optional<unsigned> prints;  ///< how often, if that was counted
    PageReport report;
};

/// What is said about a run: lines for a person, or one JSON object for a program. Where there are several inputs, a
/// line about one begins with its name. Page and Label throw OutputError once standard output cannot be written.
class RenderReport {
public:
    explicit RenderReport(RenderOptions const& options);

    void StartInput(std::string const& name);
    void Page(RenderedPage const& page);
    void Label(unsigned number, std::string const& text, unsigned copies, std::uint64_t offset,
               std::optional<PageFields> const& fields);
    /// Ends an input. Findings about set-up commands are left out for a person unless `everything` is asked for.
    void EndInput(Findings const& findings, bool everything);
    void Error(std::string const& line);
    /// An input that cannot be read; `line` says why.
    void UnreadInput(std::string const& name, std::string const& line);
    /// Ends the run. Standard output that could not be written makes the code ExitCode::Usage.
    ExitCode Finish(ExitCode code);

private:
    void EndLine();

    void Summarize() const;

    bool const json_;
    bool const isQuiet_;
    bool const hasLines_;  ///< of pages and labels
    std::size_t const inputs_;
    unsigned made_ = 0;  ///< pages or labels
    std::string_view madeName_ = "page";
    unsigned withFindings_ = 0;
    unsigned unread_ = 0;
    std::string lead_;  ///< of a line about the input under way
    bool inList_ = false;
    bool outputIsLost_ = false;
    JsonWriter writer_;
};
