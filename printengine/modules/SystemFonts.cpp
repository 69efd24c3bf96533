#include "printengine/modules/SystemFonts.h"

#include <fontconfig/fontconfig.h>
#include <strings.h>

#include <cstring>
#include <mutex>

namespace {

/// Fonts of the machine, by a configuration of its own. They are given back at the end: fontconfig finds the parts of
/// its lists by distances, which no check of memory follows.
struct FontList {
    FontList() : config(FcInitLoadConfigAndFonts()) {
        FcPattern* const all = FcPatternBuild(nullptr, FC_OUTLINE, FcTypeBool, FcTrue, nullptr);
        FcObjectSet* const wanted = FcObjectSetBuild(FC_FILE, FC_INDEX, FC_CHARSET, FC_WEIGHT, FC_WIDTH, FC_SLANT,
                                                     FC_SPACING, FC_FAMILY, FC_COLOR, nullptr);
        fonts = FcFontList(config, all, wanted);
        FcObjectSetDestroy(wanted);
        FcPatternDestroy(all);
    }
    ~FontList() {
        if (fonts) FcFontSetDestroy(fonts);
        if (config) FcConfigDestroy(config);
    }
    FontList(FontList const&) = delete;
    FontList& operator=(FontList const&) = delete;

    FcConfig* config;
    FcFontSet* fonts = nullptr;
};

/// Read once for the process.
FontList const& Machine() {
    static FontList const list;
    return list;
}

/// All outline fonts; null if there are none.
FcFontSet const* Fonts() { return Machine().fonts; }

int Number(FcPattern* font, char const* object, int otherwise) {
    int value = otherwise;
    return FcPatternGetInteger(font, object, 0, &value) == FcResultMatch ? value : otherwise;
}

char const* Text(FcPattern* font, char const* object) {
    FcChar8* text = nullptr;
    return FcPatternGetString(font, object, 0, &text) == FcResultMatch ? reinterpret_cast<char const*>(text) : "";
}

bool HasAll(FcPattern* font, char32_t const* characters, std::uint32_t count) {
    FcCharSet* set = nullptr;
    if (FcPatternGetCharSet(font, FC_CHARSET, 0, &set) != FcResultMatch) return false;
    for (std::uint32_t i = 0; i < count; ++i) {
        if (!FcCharSetHasChar(set, characters[i])) return false;
    }
    return true;
}

bool BeginsWith(char const* text, char const* beginning) {
    return std::strncmp(text, beginning, std::strlen(beginning)) == 0;
}

/// How far a font is from what is wanted: a plain upright face of the weight. Only the first face of a file is drawn.
int Distance(FcPattern* font, bool isBold) {
    FcBool isColored = FcFalse;
    FcPatternGetBool(font, FC_COLOR, 0, &isColored);
    constexpr int Never = 1 << 20;
    if (isColored || Number(font, FC_INDEX, 0) != 0) return Never;
    char const* const family = Text(font, FC_FAMILY);
    int distance = BeginsWith(family, "Noto Sans") ? 0 : BeginsWith(family, "Noto") ? 200 : 400;
    int const weight = Number(font, FC_WEIGHT, FC_WEIGHT_REGULAR);
    int const wanted = isBold ? FC_WEIGHT_BOLD : FC_WEIGHT_REGULAR;
    distance += weight > wanted ? weight - wanted : wanted - weight;
    if (Number(font, FC_SLANT, FC_SLANT_ROMAN) != FC_SLANT_ROMAN) distance += 1000;
    if (Number(font, FC_SPACING, FC_PROPORTIONAL) == FC_MONO) distance += 100;
    if (Number(font, FC_WIDTH, FC_WIDTH_NORMAL) != FC_WIDTH_NORMAL) distance += 50;
    return distance;
}

std::uint32_t Give(char const* file, char* path, std::uint32_t capacity) {
    std::size_t const length = std::strlen(file);
    if (length >= capacity) return 0;
    std::memcpy(path, file, length + 1);
    return static_cast<std::uint32_t>(length);
}

std::mutex mutex;

}  // namespace

std::uint32_t FindSystemFace(char32_t const* characters, std::uint32_t count, int isBold, char* path,
                             std::uint32_t capacity) {
    std::lock_guard const lock(mutex);
    FcFontSet const* const fonts = Fonts();
    int best = 1 << 20;
    char const* file = "";
    for (int i = 0; fonts && i < fonts->nfont; ++i) {
        int const distance = Distance(fonts->fonts[i], isBold != 0);
        if (distance > best || !HasAll(fonts->fonts[i], characters, count)) continue;
        char const* const candidate = Text(fonts->fonts[i], FC_FILE);
        // Of equals the first by name, whatever order the machine lists them in.
        if (distance == best && std::strcmp(candidate, file) >= 0) continue;
        best = distance;
        file = candidate;
    }
    return Give(file, path, capacity);
}

std::uint32_t FindSystemFile(char const* name, char* path, std::uint32_t capacity) {
    std::lock_guard const lock(mutex);
    FcFontSet const* const fonts = Fonts();
    char const* found = "";
    for (int i = 0; fonts && i < fonts->nfont; ++i) {
        char const* const file = Text(fonts->fonts[i], FC_FILE);
        char const* const slash = std::strrchr(file, '/');
        if (strcasecmp(slash ? slash + 1 : file, name) != 0) continue;
        if (*found == '\0' || std::strcmp(file, found) < 0) found = file;
    }
    return Give(found, path, capacity);
}

int HoldsSystemFonts(char const* folder) {
    std::lock_guard const lock(mutex);
    FcStrList* const folders = FcConfigGetFontDirs(Machine().config);
    bool holds = false;
    bool isPart = false;  // of another folder with fonts
    auto const parent = static_cast<std::size_t>(std::strrchr(folder, '/') ? std::strrchr(folder, '/') - folder : 0);
    while (FcChar8 const* const each = folders ? FcStrListNext(folders) : nullptr) {
        auto const* const path = reinterpret_cast<char const*>(each);
        holds = holds || std::strcmp(path, folder) == 0;
        isPart = isPart || (std::strlen(path) == parent && std::strncmp(path, folder, parent) == 0);
    }
    if (folders) FcStrListDone(folders);
    return holds && !isPart;
}
