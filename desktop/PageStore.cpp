#include "desktop/PageStore.h"

#include <unistd.h>

#include <cerrno>
#include <system_error>

#include "desktop/PageFile.h"

namespace {

/// Whether all pages of an input go into one file.
bool IsDocument(RenderOptions const& options) { return options.format->isDocument && !options.isSplit; }

/// What the name of a page's file has behind its stem.
std::string EndOfName(RenderOptions const& options, unsigned page) {
    std::string const number = IsDocument(options) ? "" : "-" + std::to_string(page);
    return number + "." + std::string(options.format->extension);
}

}  // namespace

OutputError CannotWrite(std::filesystem::path const& path, std::error_code const& error) {
    return OutputError("cannot write " + path.string() + ": " + error.message());
}

std::string PageStem(std::string const& input) {
    if (input == "-") return "stdin";
    std::string const stem = std::filesystem::path(input).stem().string();
    return stem.empty() ? "label" : stem;
}

std::string PageFileName(RenderOptions const& options, std::string const& input, unsigned page) {
    return PageStem(input) + EndOfName(options, page);
}

StagedPage StageFile(PageFormat const& format, std::filesystem::path path, Scripting::FinishedPage& page) {
    auto const form = format.FormOf(page);
    StagedPage staged{form.size, form.dpi, std::make_unique<AtomicFile>(std::move(path)), {}};
    auto const writer = format.makeWriter();
    staged.file->Write(writer->Add(form));
    staged.file->Write(writer->End());
    staged.file->Close();
    return staged;
}

PageStore::PageStore(RenderOptions const& options, std::string const& input)
    : options_(options),
      folder_(options.outputFolder),
      stem_(folder_ == "." ? PageStem(input) : (folder_ / PageStem(input)).string()),
      isDocument_(IsDocument(options)) {
    std::error_code error;
    std::filesystem::create_directories(folder_, error);
    if (!error && ::access(folder_.c_str(), W_OK | X_OK) != 0) error = {errno, std::generic_category()};
    if (error) throw CannotWrite(folder_, error);
}

std::filesystem::path PageStore::NextPath() const { return stem_ + EndOfName(options_, pages_ + 1); }

std::filesystem::path PageStore::Prepare(Scripting::GraphicContext& target) {
    if (auto* const keeper = Scripting::PageKeeper::Of(&target)) {
        keeper->KeepPages();
        return {};
    }
    try {
        if (!work_) work_.emplace(folder_, ".zpl-").Make();
    } catch (std::system_error const& failure) {
        throw CannotWrite(folder_, failure.code());
    }
    return work_->Path();
}

PageStore::Place PageStore::Keep(Scripting::GraphicContext& target, unsigned number) {
    Place place = NextPlace();
    if (auto* const keeper = Scripting::PageKeeper::Of(&target)) {
        Write(options_.format->FormOf(*keeper));
    } else {
        auto const path = work_->Path() / std::to_string(number);
        auto page = PageFile::Parse(ReadRegularFile(path));
        if (!page) throw OutputError("cannot read back the page " + path.string());
        Write(options_.format->FormOf(*page));
        std::error_code ignored;
        std::filesystem::remove(path, ignored);
    }
    ++pages_;
    return place;
}

StagedPage PageStore::Stage(Scripting::FinishedPage& page) const {
    if (!isDocument_) return StageFile(*options_.format, stem_ + EndOfName(options_, 0), page);
    auto const form = options_.format->FormOf(page);
    return {form.size, form.dpi, nullptr, std::string(form.content)};
}

PageStore::Place PageStore::Keep(StagedPage page) {
    Place place = NextPlace();
    if (page.file) {
        page.file->SetPath(place.path);
        if (auto const error = page.file->Keep()) throw CannotWrite(place.path, error);
    } else {
        Write(page.Form());
    }
    ++pages_;
    return place;
}

void PageStore::Write(PageForm const& page) {
    if (!file_) {
        file_.emplace(NextPath());
        writer_ = options_.format->makeWriter();
    }
    auto const error = file_->Write(writer_->Add(page));
    if (isDocument_) {
        if (error) throw CannotWrite(file_->Path(), error);
    } else {
        EndFile();
    }
}

void PageStore::End() {
    if (file_) EndFile();
}

void PageStore::EndFile() {
    file_->Write(writer_->End());
    auto const error = file_->Keep();
    auto const path = file_->Path();
    file_.reset();
    if (error) throw CannotWrite(path, error);
}
