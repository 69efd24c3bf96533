#pragma once

#include <functional>
#include <map>
#include <set>
#include <string>
#include <string_view>
#include <unordered_map>
#include <vector>

#include "PrintEngine/Printing/TrueTypeCacheCreator.h"
#include "printengine/src/fonts/Face.h"
#include "printengine/src/fonts/FontFiles.h"
#include "printengine/src/fonts/Strike.h"
#include "printengine/src/scripts/CharacterKinds.h"

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
    /// One that was opened before, by its number.
    Face& At(unsigned number) { return *numbered_[number]; }
    /// Null if there is no such file or it holds no bitmaps.
    Strike* OpenStrike(std::filesystem::path const& file);
    /// Tells of a character that no font has, once, and of no more than a few.
    void WarnOfMissing(std::string const& font, char32_t character);

private:
    bool HasLibrary();

    FontFiles files_;
    Printing::TrueTypeCacheCreator::WarningReceiver receiver_;
    FT_LibraryRec_* library_ = nullptr;
    std::map<std::filesystem::path, std::unique_ptr<Face>> faces_;
    std::vector<Face*> numbered_;
    std::set<char32_t> missing_;  ///< that were told of
    std::map<std::filesystem::path, std::unique_ptr<Strike>> strikes_;
};

/// The files that draw a font: the first draws what it can, the next ones the characters that those before lack.
class FaceChain {
public:
    /// `file` is a path set for the font, or empty; `fileNames` are looked for below the system font folder,
    /// those that begin with '?' only where they usually lie.
    FaceChain(FaceStore& store, std::string font, std::filesystem::path const& file, std::vector<std::string> fileNames,
              bool isBold = false);

    struct Found {
        Face* face = nullptr;  ///< null if no font has the character
        unsigned glyph = 0;
    };
    Found Find(char32_t character);
    /// The first font that has all of the characters, so that a word is drawn by one face; null if none has. Invisible
    /// characters need none.
    Face* FindFor(std::u32string const& characters, Scripts::Script script);
    /// The face of a picture.
    Face& FaceOf(char32_t picture);
    /// The first font that can be opened; null if none can.
    Face* Primary();
    /// Whether the file of this name is the one that draws what it can.
    bool IsDrawnBy(std::string_view fileName);
    /// Tells what cannot be drawn as it should be.
    void Warn(std::string const& line, std::string const& subject) const { store_.Warn(line, subject); }

private:
    Face* At(std::size_t index);
    Found Search(char32_t character);
    Face* SearchFor(std::u32string const& characters, Scripts::Script script);
    Face* FaceOfScript(Scripts::Script script);

    struct Link {
        std::filesystem::path file;
        std::string name;
        bool isOptional = false;  ///< nobody looks for it elsewhere if it is not in its usual place
        bool isTried = false;
        Face* face = nullptr;
    };

    FaceStore& store_;
    std::string font_;
    std::vector<Link> links_;
    std::unordered_map<char32_t, Found> elsewhere_;  ///< characters that the primary font lacks
    std::unordered_map<std::u32string, Face*> words_;
    std::map<Scripts::Script, Face*> ofScripts_;
    bool isBold_;  ///< what stands in is to be
};

}  // namespace PrintEngine::Fonts
