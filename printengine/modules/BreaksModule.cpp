#include <unicode/ubrk.h>
#include <unicode/uchar.h>
#include <unicode/ustring.h>

#include <cstdlib>
#include <cstring>

#include "printengine/src/scripts/ModuleTables.h"

namespace {

/// A paragraph in UTF-16, as ICU takes it.
struct Paragraph {
    Paragraph(char32_t const* text, std::uint32_t count)
        : units(static_cast<UChar*>(std::malloc((std::size_t{count} * 2 + 1) * sizeof(UChar)))) {
        for (std::uint32_t i = 0; units && i < count; ++i) {
            UChar32 const character = static_cast<UChar32>(text[i] <= 0x10FFFF ? text[i] : 0xFFFD);
            U16_APPEND_UNSAFE(units, length, character);
        }
    }
    ~Paragraph() { std::free(units); }
    Paragraph(Paragraph const&) = delete;
    Paragraph& operator=(Paragraph const&) = delete;

    UChar* units;
    std::int32_t length = 0;
};

int FindBreaks(char32_t const* text, std::uint32_t length, std::uint8_t* mayEnd) {
    constexpr std::uint32_t Longest = 1 << 28;
    if (length > Longest) return 0;
    Paragraph const paragraph(text, length);
    if (!paragraph.units) return 0;
    UErrorCode error = U_ZERO_ERROR;
    UBreakIterator* const breaks = ubrk_open(UBRK_LINE, "", paragraph.units, paragraph.length, &error);
    if (U_FAILURE(error)) return 0;
    std::memset(mayEnd, 0, length);
    std::int32_t unit = 0;
    std::uint32_t character = 0;
    for (std::int32_t at = ubrk_first(breaks); at != UBRK_DONE && at < paragraph.length; at = ubrk_next(breaks)) {
        for (; unit < at; ++character) U16_FWD_1(paragraph.units, unit, paragraph.length);
        if (unit == at) mayEnd[character] = 1;
    }
    ubrk_close(breaks);
    return 1;
}

std::uint32_t Name(char32_t character, char* text, std::uint32_t capacity) {
    UErrorCode error = U_ZERO_ERROR;
    std::int32_t const length = u_charName(static_cast<UChar32>(character), U_UNICODE_CHAR_NAME, text,
                                           static_cast<std::int32_t>(capacity), &error);
    return U_SUCCESS(error) && error != U_STRING_NOT_TERMINATED_WARNING ? static_cast<std::uint32_t>(length) : 0;
}

constexpr ZplBreaksModule Module{ZplModuleVersion, FindBreaks, Name};

}  // namespace

extern "C" __attribute__((visibility("default"))) ZplBreaksModule const* ZplBreaks() { return &Module; }
