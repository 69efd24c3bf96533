#include "printengine/src/fonts/FaceChain.h"

#include <ft2build.h>
#include FT_FREETYPE_H

#include <algorithm>
#include <cstdio>

#include "printengine/src/fonts/Typeface.h"
#include "printengine/src/scripts/Modules.h"

namespace PrintEngine::Fonts {

namespace {

// More distinct missing characters than this come only from a stream that is not text.
constexpr std::size_t MaxRemembered = 16384;

constexpr std::size_t LongestWord = 64;
constexpr std::size_t MostTold = 20;

/// The code point of a character, and its name where that is known.
std::string Described(char32_t character) {
    char text[128];
    std::snprintf(text, sizeof text, "U+%04X", static_cast<unsigned>(character));
    std::string described(text);
    if (auto const* const module = Scripts::BreaksModule()) {
        std::size_t const length = module->name(character, text, sizeof text);
        if (length != 0) described.append(" ").append(text, length);
    }
    return described;
}

/// The package whose fonts have most characters of a range.
struct PackageOfRange {
    char32_t first;
    char32_t last;
    char const* package;
};
constexpr PackageOfRange Packages[] = {
    {0x0000, 0x2DFF, "fonts-noto-core"},    {0x2E80, 0x2FFF, "fonts-noto-cjk"},
    {0x3000, 0x9FFF, "fonts-wqy-microhei"}, {0xA000, 0xABFF, "fonts-noto-core"},
    {0xAC00, 0xD7FF, "fonts-wqy-microhei"}, {0xF900, 0xFAFF, "fonts-noto-cjk"},
    {0xFB00, 0xFDFF, "fonts-noto-core"},    {0xFE30, 0xFE4F, "fonts-noto-cjk"},
    {0xFE70, 0xFEFF, "fonts-noto-core"},    {0xFF00, 0xFFEF, "fonts-wqy-microhei"},
    {0x10000, 0x1EFFF, "fonts-noto-core"},  {0x1F000, 0x1FAFF, "fonts-symbola"},
    {0x20000, 0x2FFFF, "fonts-hanazono"},
};

char const* PackageOf(char32_t character) {
    auto const* const row = std::find_if(std::begin(Packages), std::end(Packages), [=](PackageOfRange const& range) {
        return range.first <= character && character <= range.last;
    });
    return row == std::end(Packages) ? nullptr : row->package;
}

/// The faces for scripts that are shaped, by the beginning of the names of their files.
struct FaceOfScript {
    Scripts::Script script;
    char const* name;
};
constexpr FaceOfScript FacesOfScripts[] = {
    {Scripts::Script::Arabic, "NotoSansArabicUI"},
    {Scripts::Script::Bengali, "NotoSansBengaliUI"},
    {Scripts::Script::Devanagari, "NotoSansDevanagariUI"},
    {Scripts::Script::Gujarati, "NotoSansGujaratiUI"},
    {Scripts::Script::Gurmukhi, "NotoSansGurmukhiUI"},
    {Scripts::Script::Kannada, "NotoSansKannadaUI"},
    {Scripts::Script::Khmer, "NotoSansKhmerUI"},
    {Scripts::Script::Lao, "NotoSansLaoUI"},
    {Scripts::Script::Malayalam, "NotoSansMalayalamUI"},
    {Scripts::Script::Myanmar, "NotoSansMyanmarUI"},
    {Scripts::Script::Oriya, "NotoSansOriyaUI"},
    {Scripts::Script::Sinhala, "NotoSansSinhalaUI"},
    {Scripts::Script::Tamil, "NotoSansTamilUI"},
    {Scripts::Script::Telugu, "NotoSansTeluguUI"},
    {Scripts::Script::Thai, "NotoSansThaiUI"},
};

std::string FileOf(Scripts::Script script, bool isBold) {
    auto const* const row = std::find_if(std::begin(FacesOfScripts), std::end(FacesOfScripts),
                                         [=](FaceOfScript const& face) { return face.script == script; });
    if (row == std::end(FacesOfScripts)) return {};
    return std::string(row->name) + (isBold ? "-Bold.ttf" : "-Regular.ttf");
}

bool HasAll(Face const& face, std::u32string const& characters) {
    return std::all_of(characters.begin(), characters.end(),
                       [&](char32_t c) { return Scripts::IsInvisible(c) || face.GlyphIndex(c) != 0; });
}

}  // namespace

FaceStore::~FaceStore() {
    faces_.clear();
    strikes_.clear();
    if (library_) FT_Done_FreeType(library_);
}

Face* FaceStore::Open(std::filesystem::path const& file) {
    if (file.empty() || !HasLibrary()) return nullptr;
    auto const [at, isNew] = faces_.try_emplace(file);
    if (!isNew || numbered_.size() >= Picture::MostFaces) return at->second.get();
    at->second = Face::Open(library_, file);
    if (!at->second) return nullptr;
    at->second->SetNumber(static_cast<unsigned>(numbered_.size()));
    numbered_.push_back(at->second.get());
    return at->second.get();
}

Strike* FaceStore::OpenStrike(std::filesystem::path const& file) {
    if (file.empty() || !HasLibrary()) return nullptr;
    auto const [at, isNew] = strikes_.try_emplace(file);
    if (isNew) at->second = Strike::Open(library_, file);
    return at->second.get();
}

void FaceStore::WarnOfMissing(std::string const& font, char32_t character) {
    if (missing_.size() > MostTold || !missing_.insert(character).second) return;
    if (missing_.size() > MostTold) {
        Warn("boxes stand for further characters that no installed font has", "further characters");
        return;
    }
    std::string const described = Described(character);
    std::string line = "font " + font + ": no installed font has " + described + ", a box stands for it";
    if (char const* const package = PackageOf(character))
        line += std::string("; the package ") + package + " may have it";
    Warn(line, "character " + described);
}

bool FaceStore::HasLibrary() { return library_ || FT_Init_FreeType(&library_) == 0; }

FaceChain::FaceChain(FaceStore& store, std::string font, std::filesystem::path const& file,
                     std::vector<std::string> fileNames, bool isBold)
    : store_(store), font_(std::move(font)), isBold_(isBold) {
    if (!file.empty()) links_.push_back({file, file.filename().string()});
    for (std::string& name : fileNames) {
        bool const isOptional = name.starts_with('?');
        links_.push_back({{}, isOptional ? name.substr(1) : std::move(name), isOptional});
    }
}

Face* FaceChain::At(std::size_t index) {
    Link& link = links_[index];
    if (!link.isTried) {
        link.isTried = true;
        auto& files = store_.Files();
        if (link.file.empty()) link.file = link.isOptional ? files.FindUsual(link.name) : files.FindAnywhere(link.name);
        link.face = store_.Open(link.file);
        if (!link.face && index == 0)
            store_.Warn("font " + font_ + ": " + link.name + " cannot be opened, another stands in", "file " + font_);
    }
    return link.face;
}

Face* FaceChain::Primary() {
    for (std::size_t i = 0; i < links_.size(); ++i) {
        if (Face* const face = At(i)) return face;
    }
    return nullptr;
}

bool FaceChain::IsDrawnBy(std::string_view fileName) {
    return !links_.empty() && At(0) != nullptr && links_[0].name == fileName;
}

FaceChain::Found FaceChain::Find(char32_t character) {
    Face* const primary = Primary();
    if (!primary) return {};
    if (unsigned const glyph = primary->GlyphIndex(character)) return {primary, glyph};
    if (auto const known = elsewhere_.find(character); known != elsewhere_.end()) return known->second;
    if (elsewhere_.size() >= MaxRemembered) elsewhere_.clear();
    return elsewhere_[character] = Search(character);
}

FaceChain::Found FaceChain::Search(char32_t character) {
    for (std::size_t i = 1; i < links_.size(); ++i) {
        Face* const face = At(i);
        unsigned const glyph = face ? face->GlyphIndex(character) : 0;
        if (glyph) return {face, glyph};
    }
    for (bool const isOfMachine : {false, true}) {
        Face* const face = isOfMachine ? store_.Open(store_.Files().FindOfMachine({&character, 1}, isBold_))
                                       : FaceOfScript(Scripts::TraitsOf(character).script);
        unsigned const glyph = face ? face->GlyphIndex(character) : 0;
        if (glyph) return {face, glyph};
    }
    store_.WarnOfMissing(font_, character);
    return {};
}

Face* FaceChain::FindFor(std::u32string const& characters, Scripts::Script script) {
    Face* const primary = Primary();
    if (!primary || HasAll(*primary, characters)) return primary;
    if (characters.size() > LongestWord) return SearchFor(characters, script);
    if (auto const known = words_.find(characters); known != words_.end()) return known->second;
    if (words_.size() >= MaxRemembered) words_.clear();
    return words_[characters] = SearchFor(characters, script);
}

Face* FaceChain::SearchFor(std::u32string const& characters, Scripts::Script script) {
    Face* const ofScript = FaceOfScript(script);
    if (ofScript && HasAll(*ofScript, characters)) return ofScript;
    for (std::size_t i = 1; i < links_.size(); ++i) {
        Face* const face = At(i);
        if (face && HasAll(*face, characters)) return face;
    }
    Face* const ofMachine = store_.Open(store_.Files().FindOfMachine(characters, isBold_));
    return ofMachine && HasAll(*ofMachine, characters) ? ofMachine : nullptr;
}

Face* FaceChain::FaceOfScript(Scripts::Script script) {
    auto const [at, isNew] = ofScripts_.try_emplace(script, nullptr);
    if (isNew) at->second = store_.Open(store_.Files().FindUsual(FileOf(script, isBold_)));
    return at->second;
}

Face& FaceChain::FaceOf(char32_t picture) { return store_.At(Picture::FaceOf(picture)); }

}  // namespace PrintEngine::Fonts
