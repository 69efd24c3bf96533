#include "desktop/PageStore.h"

#include <system_error>

#include "desktop/PageFile.h"
#include "foundation/Files.h"

namespace {

OutputError CannotWrite(std::filesystem::path const& path, std::error_code const& error) {
    return OutputError("cannot write " + path.string() + ": " + error.message());
}

}  // namespace

std::string PageStem(std::string const& input) {
    if (input == "-") return "stdin";
    std::string const stem = std::filesystem::path(input).stem().string();
    return stem.empty() ? "label" : stem;
}

PageStore::PageStore(RenderOptions const& options, std::string const& input)
    : folder_(options.outputFolder), stem_(PageStem(input)), format_(options.format) {
    std::error_code error;
    std::filesystem::create_directories(folder_, error);
    if (error) throw CannotWrite(folder_, error);
    if (options.keepJob) return;
    try {
        work_.emplace(folder_, ".zpl-");
    } catch (std::system_error const& failure) {
        throw CannotWrite(folder_, failure.code());
    }
}

std::filesystem::path PageStore::NextPath() const {
    std::string const name = stem_ + "-" + std::to_string(pages_ + 1) + "." + std::string(Extension(format_));
    return folder_ == "." ? std::filesystem::path(name) : folder_ / name;
}

std::filesystem::path PageStore::Keep(std::filesystem::path const& file) {
    std::filesystem::path const path = NextPath();
    std::error_code error;
    if (format_ == PageFormat::Png) {
        std::filesystem::rename(file, path, error);
    } else {
        auto const page = PageFile::Parse(ReadRegularFile(file));
        if (!page) throw OutputError("cannot read back the page " + file.string());
        error = WriteFileAtomically(path, format_ == PageFormat::Pbm ? page->ToPbm() : page->ToPdf());
        std::error_code ignored;
        std::filesystem::remove(file, ignored);
    }
    if (error) throw CannotWrite(path, error);
    ++pages_;
    return path;
}
