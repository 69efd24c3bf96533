#pragma once

#include <filesystem>
#include <functional>
#include <memory>
#include <optional>
#include <string>

#include "desktop/CommandLine.h"
#include "foundation/Files.h"
#include "foundation/TemporaryFolder.h"
#include "library/OutputError.h"
#include "library/PageFormat.h"

/// What tells that a file cannot be written.
OutputError CannotWrite(std::filesystem::path const& path, std::error_code const& error);

/// What the names of an input's pages begin with: the input's file name without its ending.
std::string PageStem(std::string const& input);
/// The file that page `page` of an input goes to.
std::filesystem::path PagePath(RenderOptions const& options, std::string const& input, unsigned page);

/// A page that a thread has made ready for its store: a file that lacks only its name, or what a document takes.
struct StagedPage {
    Scripting::Extent size;                       ///< pixels
    unsigned dpi = 0;                             ///< pixels per inch; 0 if that is not known
    std::unique_ptr<AtomicFile> file;             ///< null for a document
    std::string content;                          ///< for a document
    Scripting::FinishedPage* standing = nullptr;  ///< in place of its content: the page itself, which is kept at once
    unsigned number = 0;    ///< of the run, that its file is called by; 0: the one behind the page before
    bool isRepeat = false;  ///< nothing but a print more of the page before

    PageForm Form() const { return {size, dpi, content}; }
};

/// Writes a page into a file of its own, which `path` may be the name of: it gets one when it is kept.
StagedPage StageFile(PageFormat const& format, std::filesystem::path path, Scripting::FinishedPage& page);

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
    /// Lends the page that was rendered on `target` as page `number` of the folder. Throws OutputError.
    void WithPage(Scripting::GraphicContext& target, unsigned number,
                  std::function<void(Scripting::FinishedPage&)> const& use) const;
    /// Makes a page ready on any thread; it is kept in its turn, or `atOnce`, before `page` is gone.
    StagedPage Stage(Scripting::FinishedPage& page, bool atOnce) const;
    /// Keeps it as the next page. Throws OutputError.
    Place Keep(StagedPage page);
    /// Ends the document, if there is one. Throws OutputError.
    void End();

    /// A file of one page, which End writes.
    bool TakesOnePage() const { return isDocument_ && !HoldsMany(); }
    /// It has been given another, and is not written.
    bool HasGivenUp() const { return TakesOnePage() && pages_ != 0 && !writer_; }
    /// The final path that the next page gets, if nothing else numbers it.
    std::filesystem::path NextPath() const { return PagePath(options_, input_, number_ + 1); }

private:
    StagedPage StageUpright(Scripting::FinishedPage& page, bool atOnce) const;
    void Write(StagedPage const& page);
    void WriteBytes(std::string_view bytes);
    bool IsStandardOutput() const { return options_.outputFile == "-"; }
    bool HoldsMany() const { return options_.format->isDocument || options_.format->joins; }

    RenderOptions const& options_;
    std::string const input_;
    std::filesystem::path folder_;
    std::filesystem::path unnamed_;  ///< the path of a page until it is kept
    bool isDocument_;
    unsigned number_ = 0;                  ///< of the page that was kept last
    unsigned pages_ = 0;                   ///< that were kept
    std::optional<TemporaryFolder> work_;  ///< hidden, for a target that writes files
    std::optional<AtomicFile> file_;       ///< of a document under way
    std::unique_ptr<PageWriter> writer_;   ///< likewise
    std::string held_;                     ///< the one page of a file that holds no more, until there is no other
};
