#include "printengine/src/fonts/FontFiles.h"

#include <algorithm>
#include <array>

namespace PrintEngine::Fonts {

namespace {

/// Where the fonts that every label can use lie below the system font folder.
constexpr std::array<std::string_view, 14> UsualPlaces{
    // The package of this one has its files beside the system font folder.
    "../texmf/fonts/opentype/public/tex-gyre/texgyreheroscn-bold.otf",
    "truetype/roboto/unhinted/RobotoCondensed-Bold.ttf",
    "truetype/roboto/unhinted/RobotoCondensed-Regular.ttf",
    "truetype/roboto/unhinted/RobotoTTF/Roboto-Regular.ttf",
    "truetype/roboto/unhinted/RobotoTTF/Roboto-Bold.ttf",
    "truetype/dejavu/DejaVuSans.ttf",
    "truetype/dejavu/DejaVuSans-Bold.ttf",
    "truetype/dejavu/DejaVuSansMono.ttf",
    "truetype/dejavu/DejaVuSansMono-Bold.ttf",
    "truetype/dejavu/DejaVuSerif.ttf",
    "truetype/dejavu/DejaVuSerif-Bold.ttf",
    "opentype/ocr-b/OCRB.otf",
    "truetype/ocr-a/OCRA.ttf",
    "X11/misc/6x12.pcf.gz",
};

std::string LowerCase(std::string_view text) {
    std::string result(text);
    for (char& c : result) {
        if (c >= 'A' && c <= 'Z') c = static_cast<char>(c - 'A' + 'a');
    }
    return result;
}

std::string_view FileNameOf(std::string_view path) { return path.substr(path.rfind('/') + 1); }

bool IsFontFileName(std::string_view lowerCaseName) {
    return lowerCaseName.ends_with(".ttf") || lowerCaseName.ends_with(".otf") || lowerCaseName.ends_with(".ttc");
}

}  // namespace

void FontFiles::SetFolder(std::filesystem::path const& folder) {
    if (folder == folder_) return;
    folder_ = folder;
    walked_.clear();
    isWalked_ = false;
    ++version_;
}

void FontFiles::SetFile(std::string font, std::filesystem::path file) {
    if (file.empty()) {
        set_.erase(font);
    } else {
        set_[std::move(font)] = std::move(file);
    }
    ++version_;
}

std::filesystem::path FontFiles::FileSetFor(std::string_view font) const {
    auto const found = set_.find(font);
    return found == set_.end() ? std::filesystem::path{} : found->second;
}

std::filesystem::path FontFiles::Find(std::string_view fileName) {
    // Font names come from streams: one that holds a path is nobody's name.
    if (fileName.empty() || folder_.empty() || fileName.find('/') != fileName.npos) return {};
    std::string const name = LowerCase(fileName);
    for (std::string_view const place : UsualPlaces) {
        if (LowerCase(FileNameOf(place)) != name) continue;
        std::error_code error;
        std::filesystem::path path = folder_ / place;
        if (std::filesystem::is_regular_file(path, error)) return path;
    }

    bool const isPrefix = name.ends_with('*');
    if (!isPrefix && !IsFontFileName(name)) return {};
    if (!isWalked_) WalkFolder();
    if (!isPrefix) {
        auto const found = walked_.find(name);
        return found == walked_.end() ? std::filesystem::path{} : found->second;
    }
    std::string_view const prefix = std::string_view(name).substr(0, name.size() - 1);
    auto const found = walked_.lower_bound(prefix);
    return found != walked_.end() && found->first.starts_with(prefix) ? found->second : std::filesystem::path{};
}

void FontFiles::WalkFolder() {
    isWalked_ = true;
    std::error_code error;
    using Walk = std::filesystem::recursive_directory_iterator;
    for (Walk at(folder_, std::filesystem::directory_options::skip_permission_denied, error), end; !error && at != end;
         at.increment(error)) {
        std::string name = LowerCase(at->path().filename().string());
        if (IsFontFileName(name)) walked_.emplace(std::move(name), at->path());
    }
}

std::vector<std::string> FontFiles::Names() const {
    std::vector<std::string> names;
    for (std::string_view const place : UsualPlaces) names.emplace_back(FileNameOf(place));
    for (auto const& [name, file] : set_) {
        if (std::find(names.begin(), names.end(), name) == names.end()) names.push_back(name);
    }
    return names;
}

}  // namespace PrintEngine::Fonts
