#include "printengine/src/fonts/FaceChain.h"

#include <ft2build.h>
#include FT_FREETYPE_H

#include <cstdio>

namespace PrintEngine::Fonts {

namespace {

// More distinct missing characters than this come only from a stream that is not text.
constexpr std::size_t MaxRemembered = 16384;

std::string CodePoint(char32_t character) {
    char text[16];
    std::snprintf(text, sizeof text, "U+%04X", static_cast<unsigned>(character));
    return text;
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
    if (isNew) at->second = Face::Open(library_, file);
    return at->second.get();
}

Strike* FaceStore::OpenStrike(std::filesystem::path const& file) {
    if (file.empty() || !HasLibrary()) return nullptr;
    auto const [at, isNew] = strikes_.try_emplace(file);
    if (isNew) at->second = Strike::Open(library_, file);
    return at->second.get();
}

bool FaceStore::HasLibrary() { return library_ || FT_Init_FreeType(&library_) == 0; }

FaceChain::FaceChain(FaceStore& store, std::string font, std::filesystem::path const& file,
                     std::vector<std::string> fileNames)
    : store_(store), font_(std::move(font)) {
    if (!file.empty()) links_.push_back({file, file.filename().string()});
    for (std::string& name : fileNames) links_.push_back({{}, std::move(name)});
}

Face* FaceChain::At(std::size_t index) {
    Link& link = links_[index];
    if (!link.isTried) {
        link.isTried = true;
        if (link.file.empty()) link.file = store_.Files().Find(link.name);
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
    if (!hasWarned_)
        store_.Warn("font " + font_ + ": no installed font has " + CodePoint(character) + ", a box stands for it",
                    "characters " + font_);
    hasWarned_ = true;
    return {};
}

}  // namespace PrintEngine::Fonts
