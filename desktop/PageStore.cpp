#include "desktop/PageStore.h"

#include <unistd.h>

#include <cerrno>
#include <cstdio>
#include <system_error>

#include "desktop/PageFile.h"
#include "library/RowsPage.h"

namespace {

constexpr std::string_view PagePlace = "{page}";

/// As it was asked for, or the usual names.
std::string NamePattern(RenderOptions const& options) {
    if (!options.namePattern.empty()) return options.namePattern;
    return options.format->isDocument && !options.isSplit ? "{stem}.{ext}" : "{stem}-{page}.{ext}";
}

/// Whether all pages of an input go into one file.
bool IsDocument(RenderOptions const& options) {
    return !options.outputFile.empty() || NamePattern(options).find(PagePlace) == std::string::npos;
}

std::filesystem::path FolderOf(RenderOptions const& options) {
    if (options.outputFile.empty()) return options.outputFolder;
    auto const folder = std::filesystem::path(options.outputFile).parent_path();
    return folder.empty() ? "." : folder;
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

std::filesystem::path PagePath(RenderOptions const& options, std::string const& input, unsigned page) {
    if (!options.outputFile.empty()) return options.outputFile;
    std::string const pattern = NamePattern(options);
    std::string name;
    for (std::size_t at = 0; at < pattern.size();) {
        auto const rest = std::string_view(pattern).substr(at);
        auto const end = pattern[at] == '{' ? rest.find('}') + 1 : 1;
        auto const part = rest.substr(0, end);
        name += part == "{stem}"    ? PageStem(input)
                : part == PagePlace ? std::to_string(page)
                : part == "{ext}"   ? options.format->extension
                                    : part;
        at += end;
    }
    return options.outputFolder == "." ? std::filesystem::path(name)
                                       : options.outputFolder / std::filesystem::path(name);
}

StagedPage StageFile(PageFormat const& format, std::filesystem::path path, Scripting::FinishedPage& page) {
    StagedPage staged{page.PageSize(), page.PageDpi(), std::make_unique<AtomicFile>(std::move(path)), {}};
    if (format.pieces != nullptr) {
        (page.*format.pieces)([&file = *staged.file](std::string_view piece) { file.Write(piece); });
    } else {
        auto const writer = format.makeWriter();
        staged.file->Write(writer->Add(format.FormOf(page)));
        staged.file->Write(writer->End());
    }
    staged.file->Close();
    return staged;
}

PageStore::PageStore(RenderOptions const& options, std::string const& input)
    : options_(options),
      input_(input),
      folder_(FolderOf(options)),
      unnamed_(PagePath(options, input, 0)),
      isDocument_(IsDocument(options)) {
    if (IsStandardOutput()) return;
    std::error_code error;
    std::filesystem::create_directories(folder_, error);
    if (!error && ::access(folder_.c_str(), W_OK | X_OK) != 0) error = {errno, std::generic_category()};
    if (error) throw CannotWrite(folder_, error);
}

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

void PageStore::WithPage(Scripting::GraphicContext& target, unsigned number,
                         std::function<void(Scripting::FinishedPage&)> const& use) const {
    if (auto* const keeper = Scripting::PageKeeper::Of(&target)) return use(*keeper);
    auto const path = work_->Path() / std::to_string(number);
    auto page = PageFile::Parse(ReadRegularFile(path));
    if (!page) throw OutputError("cannot read back the page " + path.string());
    use(*page);
    std::error_code ignored;
    std::filesystem::remove(path, ignored);
}

StagedPage PageStore::Stage(Scripting::FinishedPage& page, bool atOnce) const {
    if (options_.rotation == 0) return StageUpright(page, atOnce);
    auto turned = RowsPage::Turned(page, options_.rotation);
    return StageUpright(turned, false);
}

StagedPage PageStore::StageUpright(Scripting::FinishedPage& page, bool atOnce) const {
    if (!isDocument_) return StageFile(*options_.format, unnamed_, page);
    if (atOnce && options_.format->pieces != nullptr && HoldsMany()) {
        StagedPage staged{page.PageSize(), page.PageDpi(), nullptr, {}};
        staged.standing = &page;
        return staged;
    }
    auto const form = options_.format->FormOf(page);
    return {form.size, form.dpi, nullptr, std::string(form.content)};
}

PageStore::Place PageStore::Keep(StagedPage page) {
    number_ = page.number != 0 ? page.number : number_ + 1;
    bool const isOneOfMany = isDocument_ && HoldsMany();
    Place place{PagePath(options_, input_, number_), isOneOfMany ? pages_ + 1 : 0};
    if (page.file) {
        page.file->SetPath(place.path);
        if (auto const error = page.file->Keep()) throw CannotWrite(place.path, error);
    } else {
        Write(page);
    }
    ++pages_;
    return place;
}

void PageStore::Write(StagedPage const& page) {
    if (pages_ != 0 && !HoldsMany()) {
        file_.reset();
        writer_.reset();
        throw OutputError(
            "a " + std::string(options_.format->name) +
            " file holds one page, and the stream has several: --name '{stem}-{page}.{ext}' makes a file of "
            "each, --pages N takes one, --format pdf makes one file of all");
    }
    if (!writer_) {
        if (!IsStandardOutput()) file_.emplace(NextPath());
        writer_ = options_.format->makeWriter();
    }
    if (page.standing != nullptr) {
        (page.standing->*options_.format->pieces)([this](std::string_view piece) { WriteBytes(piece); });
    } else if (HoldsMany()) {
        WriteBytes(writer_->Add(page.Form()));
    } else {
        held_ = writer_->Add(page.Form());
    }
}

void PageStore::WriteBytes(std::string_view bytes) {
    if (bytes.empty()) return;
    if (file_) {
        if (auto const error = file_->Write(bytes)) throw CannotWrite(file_->Path(), error);
    } else if (std::fwrite(bytes.data(), 1, bytes.size(), stdout) != bytes.size() || std::fflush(stdout) != 0) {
        writer_.reset();
        throw OutputError("standard output cannot be written");
    }
}

void PageStore::End() {
    if (!writer_) return;
    WriteBytes(held_);
    WriteBytes(writer_->End());
    writer_.reset();
    if (!file_) return;
    auto const error = file_->Keep();
    auto const path = file_->Path();
    file_.reset();
    if (error) throw CannotWrite(path, error);
}
