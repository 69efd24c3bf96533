#pragma once

#include <filesystem>
#include <map>
#include <optional>
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
    /// The path of a file of that name, letter case set aside, below the folder, or among those that were added to the
    /// system's; empty if there is none.
    std::filesystem::path Find(std::string_view fileName);
    /// The same, at last among all that the machine knows, which takes a while.
    std::filesystem::path FindAnywhere(std::string_view fileName);
    /// The same as Find, but only where it usually lies.
    std::filesystem::path FindUsual(std::string_view fileName) const;
    /// The font among all of the machine's that has these characters and suits best; empty if none has. Invisible ones
    /// count for nothing.
    std::filesystem::path FindOfMachine(std::u32string_view characters, bool isBold);
    /// Names and font letters by which a label can ask for a font file.
    std::vector<std::string> Names() const;
    /// Changes whenever an earlier answer may no longer hold.
    unsigned Version() const { return version_; }

private:
    void WalkFolders();
    /// Whether the folder is one in which the machine keeps its fonts, so that its other folders count too.
    bool IsOfMachine();

    std::filesystem::path folder_;
    std::map<std::string, std::filesystem::path, std::less<>> set_;
    std::map<std::string, std::filesystem::path, std::less<>> walked_;  ///< by lower-case file name
    bool isWalked_ = false;
    std::optional<bool> isOfMachine_;
    unsigned version_ = 0;
};

}  // namespace PrintEngine::Fonts
