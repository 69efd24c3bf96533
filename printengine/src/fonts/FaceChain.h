#pragma once

#include <functional>
#include <map>
#include <string>
#include <string_view>
#include <unordered_map>
#include <vector>

#include "PrintEngine/Printing/TrueTypeCacheCreator.h"
#include "printengine/src/fonts/Face.h"
#include "printengine/src/fonts/FontFiles.h"
#include "printengine/src/fonts/Strike.h"

namespace PrintEngine::Fonts {

/// Finds font files, opens them when they are first needed and keeps them open.
class FaceStore {
public:
    FaceStore() = default;
    ~FaceStore();
    FaceStore(FaceStore const&) = delete;
    FaceStore& operator=(FaceStore const&) = delete;

    FontFiles& Files() { return files_; }
    void SetWarningReceiver(Printing::TrueTypeCacheCreator::WarningReceiver receiver) {
        receiver_ = std::move(receiver);
    }
    void Warn(std::string const& line, std::string const& subject = {}) const {
        if (receiver_) receiver_(line, subject);
    }

    /// Null if there is no such file or it is no font.
    Face* Open(std::filesystem::path const& file);
    /// Null if there is no such file or it holds no bitmaps.
    Strike* OpenStrike(std::filesystem::path const& file);

private:
    bool HasLibrary();

    FontFiles files_;
    Printing::TrueTypeCacheCreator::WarningReceiver receiver_;
    FT_LibraryRec_* library_ = nullptr;
    std::map<std::filesystem::path, std::unique_ptr<Face>> faces_;
    std::map<std::filesystem::path, std::unique_ptr<Strike>> strikes_;
};

/// The files that draw a font: the first draws what it can, the next ones the characters that those before lack.
class FaceChain {
public:
    /// `file` is a path set for the font, or empty; `fileNames` are looked for below the system font folder.
    FaceChain(FaceStore& store, std::string font, std::filesystem::path const& file,
              std::vector<std::string> fileNames);

    struct Found {
        Face* face = nullptr;  ///< null if no font has the character
        unsigned glyph = 0;
    };
    Found Find(char32_t character);
    /// The first font that can be opened; null if none can.
    Face* Primary();
    /// Whether the file of this name is the one that draws what it can.
    bool IsDrawnBy(std::string_view fileName);

private:
    Face* At(std::size_t index);
    Found Search(char32_t character);

    struct Link {
        std::filesystem::path file;
        std::string name;
        bool isTried = false;
        Face* face = nullptr;
    };

    FaceStore& store_;
    std::string font_;
    std::vector<Link> links_;
    std::unordered_map<char32_t, Found> elsewhere_;  ///< characters that the primary font lacks
    bool hasWarned_ = false;
};

}  // namespace PrintEngine::Fonts
