#pragma once

#include <filesystem>
#include <map>
#include <string>
#include <string_view>
#include <vector>

namespace PrintEngine::Fonts {

/// Finds font files by name. Nothing is looked for before it is asked for: the place where a font usually lies is tried
/// first, and only a file that is not there makes the folder be walked, once.
class FontFiles {
public:
    void SetFolder(std::filesystem::path const& folder);
    /// The file that draws a font letter or an object name, instead of the one that does by default; an empty path
    /// gives the font back to that one.
    void SetFile(std::string font, std::filesystem::path file);

    /// The file set for a font; empty if none is.
    std::filesystem::path FileSetFor(std::string_view font) const;
    /// The path of a file of that name, letter case set aside, below the folder; empty if there is none. A name that
    /// ends with '*' stands for the first file whose name begins so.
    std::filesystem::path Find(std::string_view fileName);
    /// Names and font letters by which a label can ask for a font file.
    std::vector<std::string> Names() const;
    /// Changes whenever an earlier answer may no longer hold.
    unsigned Version() const { return version_; }

private:
    void WalkFolder();

    std::filesystem::path folder_;
    std::map<std::string, std::filesystem::path, std::less<>> set_;
    std::map<std::string, std::filesystem::path, std::less<>> walked_;  ///< by lower-case file name
    bool isWalked_ = false;
    unsigned version_ = 0;
};

}  // namespace PrintEngine::Fonts
