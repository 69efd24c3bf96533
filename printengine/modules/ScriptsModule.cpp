#include <fribidi.h>
#include <hb-ot.h>
#include <hb.h>

#include <algorithm>
#include <cstdlib>

#include "printengine/modules/SystemFonts.h"
#include "printengine/src/scripts/ModuleTables.h"

namespace {

constexpr int UnitsInEm = 1 << 16;

void* OpenFace(char const* file) {
    hb_blob_t* const blob = hb_blob_create_from_file_or_fail(file);
    if (!blob) return nullptr;
    hb_face_t* const face = hb_face_create(blob, 0);
    hb_blob_destroy(blob);
    hb_font_t* const font = hb_font_create(face);
    hb_face_destroy(face);
    hb_font_set_scale(font, UnitsInEm, UnitsInEm);
    hb_font_make_immutable(font);
    if (hb_face_get_glyph_count(face) != 0) return font;
    hb_font_destroy(font);
    return nullptr;
}

void CloseFace(void* face) { hb_font_destroy(static_cast<hb_font_t*>(face)); }

/// The script of the first character that has one of its own.
hb_script_t ScriptOf(char32_t const* text, std::uint32_t first, std::uint32_t count) {
    for (std::uint32_t i = first; i < first + count; ++i) {
        hb_script_t const script = hb_unicode_script(hb_unicode_funcs_get_default(), text[i]);
        if (script != HB_SCRIPT_COMMON && script != HB_SCRIPT_INHERITED) return script;
    }
    return HB_SCRIPT_COMMON;
}

std::uint32_t Shape(void* face, char32_t const* text, std::uint32_t length, std::uint32_t first, std::uint32_t count,
                    int isRightToLeft, ZplShapedGlyph* glyphs, std::uint32_t capacity) {
    hb_buffer_t* const buffer = hb_buffer_create();
    hb_buffer_add_codepoints(buffer, reinterpret_cast<hb_codepoint_t const*>(text), static_cast<int>(length), first,
                             static_cast<int>(count));
    hb_buffer_set_direction(buffer, isRightToLeft ? HB_DIRECTION_RTL : HB_DIRECTION_LTR);
    hb_buffer_set_script(buffer, ScriptOf(text, first, count));
    hb_buffer_set_flags(buffer, static_cast<hb_buffer_flags_t>(HB_BUFFER_FLAG_REMOVE_DEFAULT_IGNORABLES |
                                                               HB_BUFFER_FLAG_DO_NOT_INSERT_DOTTED_CIRCLE));
    // Letters of one script are to be as wide beside each other as they are alone.
    hb_feature_t const noKerning{HB_TAG('k', 'e', 'r', 'n'), 0, HB_FEATURE_GLOBAL_START, HB_FEATURE_GLOBAL_END};
    hb_shape(static_cast<hb_font_t*>(face), buffer, &noKerning, 1);
    unsigned made = 0;
    hb_glyph_info_t const* const infos = hb_buffer_get_glyph_infos(buffer, &made);
    hb_glyph_position_t const* const positions = hb_buffer_get_glyph_positions(buffer, nullptr);
    for (unsigned i = 0; i < made && i < capacity; ++i) {
        auto const& place = positions[i];
        glyphs[i] = {infos[i].codepoint, infos[i].cluster, place.x_advance, place.x_offset, place.y_offset};
    }
    hb_buffer_destroy(buffer);
    return made;
}

int RunsRightToLeft(char32_t character) {
    return hb_script_get_horizontal_direction(hb_unicode_script(hb_unicode_funcs_get_default(), character)) ==
           HB_DIRECTION_RTL;
}

char32_t Compose(char32_t const* text, std::uint32_t length) {
    hb_unicode_funcs_t* const unicode = hb_unicode_funcs_get_default();
    constexpr std::uint32_t MostMarks = 8;
    if (length < 2 || length > MostMarks + 1) return 0;
    char32_t marks[MostMarks];
    std::copy(text + 1, text + length, marks);
    // The tables know only one order of marks.
    std::stable_sort(marks, marks + (length - 1), [unicode](char32_t a, char32_t b) {
        return hb_unicode_combining_class(unicode, a) < hb_unicode_combining_class(unicode, b);
    });
    hb_codepoint_t letter = text[0];
    for (std::uint32_t i = 0; i + 1 < length; ++i) {
        hb_codepoint_t composed = 0;
        if (!hb_unicode_compose(unicode, letter, marks[i], &composed)) return 0;
        letter = composed;
    }
    return letter;
}

/// Memory that goes with its scope.
template <typename Value>
struct Buffer {
    explicit Buffer(std::size_t count) : values(static_cast<Value*>(std::malloc(count * sizeof(Value)))) {}
    ~Buffer() { std::free(values); }
    Buffer(Buffer const&) = delete;
    Buffer& operator=(Buffer const&) = delete;

    Value* values;
};

int Order(char32_t* text, std::uint32_t length, int direction, std::uint8_t* levels) {
    Buffer<FriBidiCharType> types(length);
    Buffer<FriBidiBracketType> brackets(length);
    Buffer<FriBidiLevel> found(length);
    if (length == 0 || !types.values || !brackets.values || !found.values) return -1;
    auto* const characters = reinterpret_cast<FriBidiChar*>(text);
    auto const count = static_cast<FriBidiStrIndex>(length);
    fribidi_get_bidi_types(characters, count, types.values);
    fribidi_get_bracket_types(characters, count, types.values, brackets.values);
    FriBidiParType base = direction < 0 ? FRIBIDI_PAR_ON : direction == 0 ? FRIBIDI_PAR_LTR : FRIBIDI_PAR_RTL;
    if (fribidi_get_par_embedding_levels_ex(types.values, brackets.values, count, &base, found.values) == 0) return -1;
    for (std::uint32_t i = 0; i < length; ++i) {
        levels[i] = static_cast<std::uint8_t>(found.values[i]);
        FriBidiChar mirror = 0;
        if (levels[i] % 2 != 0 && fribidi_get_mirror_char(characters[i], &mirror)) characters[i] = mirror;
    }
    return base == FRIBIDI_PAR_RTL ? 1 : 0;
}

constexpr ZplScriptsModule Module{
    ZplModuleVersion, OpenFace, CloseFace,      Shape,          RunsRightToLeft,
    Compose,          Order,    FindSystemFace, FindSystemFile, HoldsSystemFonts,
};

}  // namespace

extern "C" __attribute__((visibility("default"))) ZplScriptsModule const* ZplScripts() { return &Module; }
