#pragma once

#include <filesystem>
#include <optional>
#include <string>

#include "desktop/CommandLine.h"
#include "desktop/Desk.h"
#include "desktop/OutputError.h"

/// What the names of an input's pages begin with: the input's file name without its ending.
std::string PageStem(std::string const& input);

/// Where the pages of one input go. The print engine writes them into a hidden folder beside their final place, from
/// where they are moved under their final names, so that nobody ever sees half a page.
class PageStore {
public:
    /// Throws OutputError if the folder cannot be made or written.
    PageStore(RenderOptions const& options, std::string const& input);

    /// Moves or converts the page that the print engine wrote as `file`; gives its final path.
    std::filesystem::path Keep(std::filesystem::path const& file);

    /// Where the print engine writes pages.
    std::filesystem::path const& WorkFolder() const { return work_->Path(); }

    /// The final path that the next page gets.
    std::filesystem::path NextPath() const;

private:
    std::filesystem::path folder_;
    std::string stem_;
    PageFormat format_;
    unsigned pages_ = 0;
    std::optional<TemporaryFolder> work_;
};
