#include "printengine/src/fonts/FontFiles.h"

#include <algorithm>
#include <array>
#include <cstdlib>
#include <iterator>
#include <span>

#include "printengine/src/scripts/CharacterKinds.h"
#include "printengine/src/scripts/Modules.h"

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

/// Where fonts for characters that those lack lie.
constexpr std::array<std::string_view, 3> UsualPlacesOfOthers{
    "opentype/noto/NotoSansCJK-Bold.ttc",
    "opentype/noto/NotoSansCJK-Regular.ttc",
    "truetype/wqy/wqy-microhei.ttc",
};
constexpr std::string_view ScriptsFolder = "truetype/noto/";

constexpr std::size_t LongestPath = 4096;

std::string LowerCase(std::string_view text) {
    std::string result(text);
    for (char& c : result) {
        if (c >= 'A' && c <= 'Z') c = static_cast<char>(c - 'A' + 'a');
    }
    return result;
}

std::string_view FileNameOf(std::string_view path) { return path.substr(path.rfind('/') + 1); }

bool IsFontFileName(std::string_view lowerCaseName) {
    return lowerCaseName.ends_with(".ttf") || lowerCaseName.ends_with(".otf") || lowerCaseName.ends_with(".ttc") ||
           lowerCaseName.ends_with(".otc");
}

}  // namespace

void FontFiles::SetFolder(std::filesystem::path const& folder) {
    if (folder == folder_) return;
    folder_ = folder;
    walked_.clear();
    isWalked_ = false;
    isOfMachine_.reset();
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

std::filesystem::path FontFiles::FindUsual(std::string_view fileName) const {
    // Font names come from streams: one that holds a path is nobody's name.
    if (fileName.empty() || folder_.empty() || fileName.find('/') != fileName.npos) return {};
    std::string const name = LowerCase(fileName);
    auto const there = [](std::filesystem::path path) {
        std::error_code error;
        return std::filesystem::is_regular_file(path, error) ? path : std::filesystem::path{};
    };
    for (auto const& places : {std::span<std::string_view const>(UsualPlaces), {UsualPlacesOfOthers}}) {
        for (std::string_view const place : places) {
            if (LowerCase(FileNameOf(place)) == name) return there(folder_ / place);
        }
    }
    if (!name.starts_with("notosans")) return {};
    return there(folder_ / ScriptsFolder / fileName);
}

std::filesystem::path FontFiles::Find(std::string_view fileName) {
    if (auto usual = FindUsual(fileName); !usual.empty()) return usual;
    std::string const name = LowerCase(fileName);
    if (folder_.empty() || fileName.find('/') != fileName.npos || !IsFontFileName(name)) return {};
    if (!isWalked_) WalkFolders();
    auto const found = walked_.find(name);
    return found == walked_.end() ? std::filesystem::path{} : found->second;
}

std::filesystem::path FontFiles::FindAnywhere(std::string_view fileName) {
    if (auto found = Find(fileName); !found.empty()) return found;
    std::string const name(fileName);
    char path[LongestPath];
    bool const isName = IsFontFileName(LowerCase(name)) && name.find('/') == name.npos;
    if (!isName || !IsOfMachine()) return {};
    return Scripts::ScriptsModule()->findFile(name.c_str(), path, sizeof path) ? path : "";
}

std::filesystem::path FontFiles::FindOfMachine(std::u32string_view characters, bool isBold) {
    std::u32string visible;
    std::remove_copy_if(characters.begin(), characters.end(), std::back_inserter(visible), Scripts::IsInvisible);
    char path[LongestPath];
    if (visible.empty() || !IsOfMachine()) return {};
    auto const count = static_cast<std::uint32_t>(visible.size());
    return Scripts::ScriptsModule()->findFace(visible.data(), count, isBold, path, sizeof path) ? path : "";
}

bool FontFiles::IsOfMachine() {
    if (!isOfMachine_) {
        auto const* const module = folder_.empty() ? nullptr : Scripts::ScriptsModule();
        std::string folder = folder_.string();
        while (folder.size() > 1 && folder.ends_with('/')) folder.pop_back();
        isOfMachine_ = module && module->holdsFonts(folder.c_str());
    }
    return *isOfMachine_;
}

void FontFiles::WalkFolders() {
    isWalked_ = true;
    std::vector<std::filesystem::path> folders{folder_};
    // Beside the fonts of the system stand those that its keeper and its user have added.
    if (folder_ == "/usr/share/fonts") {
        folders.emplace_back("/usr/local/share/fonts");
        if (char const* const home = std::getenv("HOME"); home && *home) {
            folders.push_back(std::filesystem::path(home) / ".local/share/fonts");
            folders.push_back(std::filesystem::path(home) / ".fonts");
        }
    }
    for (auto const& folder : folders) {
        std::error_code error;
        using Walk = std::filesystem::recursive_directory_iterator;
        for (Walk at(folder, std::filesystem::directory_options::skip_permission_denied, error), end;
             !error && at != end; at.increment(error)) {
            std::string name = LowerCase(at->path().filename().string());
            if (IsFontFileName(name)) walked_.emplace(std::move(name), at->path());
        }
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
