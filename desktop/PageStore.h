#pragma once

#include <filesystem>
#include <memory>
#include <optional>
#include <string>

#include "desktop/CommandLine.h"
#include "desktop/Desk.h"
#include "desktop/OutputError.h"
#include "desktop/PageFormat.h"

/// What the names of an input's pages begin with: the input's file name without its ending.
std::string PageStem(std::string const& input);
/// The name of the file that page `page` of an input goes to.
std::string PageFileName(RenderOptions const& options, std::string const& input, unsigned page);

/// Where the pages of one input go: a file each, or all into one document. A file has its name once it is whole, so
/// that nobody ever sees half a page.
class PageStore {
public:
    /// Throws OutputError if the folder cannot be made or written.
    PageStore(RenderOptions const& options, std::string const& input);

    /// A page as it was kept.
    struct Place {
        std::filesystem::path path;
        unsigned page = 0;  ///< in its document, from 1; 0 in a file of its own
    };

    /// Makes ready for a page to be rendered on `target`; gives the folder for its file, which is empty if the target
    /// keeps its page and writes none. Throws OutputError.
    std::filesystem::path Prepare(Scripting::GraphicContext& target);
    /// Writes the page that was rendered on `target` as page `number` of the folder. Throws OutputError.
    Place Keep(Scripting::GraphicContext& target, unsigned number);
    /// Ends the document, if there is one. Throws OutputError.
    void End();

    /// The final path that the next page gets.
    std::filesystem::path NextPath() const;

private:
    void Write(Scripting::FinishedPage& page);
    void EndFile();

    RenderOptions const& options_;
    std::filesystem::path folder_;
    std::string input_;
    bool isDocument_;
    unsigned pages_ = 0;
    std::optional<TemporaryFolder> work_;  ///< hidden, for a target that writes files
    std::optional<AtomicFile> file_;       ///< under way
    std::unique_ptr<PageWriter> writer_;
};
