#include "frontend/context/CharacterSets.h"

#include <iconv.h>

#include <algorithm>
#include <cerrno>
#include <iterator>
#include <map>
#include <memory>
#include <mutex>

#include "frontend/context/Utf8Text.h"
#include "frontend/stream/Ascii.h"
#include "frontend/stream/BadNumber.h"
#include "frontend/stream/ZplParse.h"

namespace {

// The double-byte and multi-byte Asian sets take their table from the printer; without one the characters of GB 18030
// are the most useful, since it covers all of Unicode and keeps 7-bit characters.
constexpr CharacterSet CharacterSets[] = {
    // clang-format off
    {0,  Encoding::SingleByte, "CP850",   false, {}},                // USA 1
    {1,  Encoding::SingleByte, "CP850",   false, {}},                // USA 2
    {2,  Encoding::SingleByte, "CP850",   false, U"£$@[\\]^`{|}‾"},  // United Kingdom, BS 4730
    {3,  Encoding::SingleByte, "CP850",   false, U"£$¾ĳ½|^`¨ƒ¼´"},   // Netherlands
    {4,  Encoding::SingleByte, "CP850",   false, U"#$@ÆØÅ^`æøå‾"},   // Denmark and Norway, NS 4551-1
    {5,  Encoding::SingleByte, "CP850",   false, U"#¤ÉÄÖÅÜéäöåü"},   // Sweden and Finland, SEN 850200 C
    {6,  Encoding::SingleByte, "CP850",   false, U"#$§ÄÖÜ^`äöüß"},   // Germany, DIN 66003
    {7,  Encoding::SingleByte, "CP850",   false, U"£$à°ç§^µéùè¨"},   // France 1, NF Z 62-010
    {8,  Encoding::SingleByte, "CP850",   false, U"£$à°ç§^`éùè¨"},   // France 2, NF Z 62-010 of 1973
    {9,  Encoding::SingleByte, "CP850",   false, U"£$§°çé^ùàòèì"},   // Italy
    {10, Encoding::SingleByte, "CP850",   false, U"£$§¡Ñ¿^`°ñç~"},   // Spain
    {11, Encoding::SingleByte, "CP850",   false, {}},                // other
    {12, Encoding::SingleByte, "CP850",   false, U"#$@[¥]^`{|}‾"},   // Japan, JIS X 0201
    {13, Encoding::SingleByte, "CP850",   false, {}},
    {14, Encoding::SingleByte, "GB18030", true,  {}},                // double-byte Asian
    {15, Encoding::SingleByte, "CP932",   true,  {}},                // Shift-JIS
    {16, Encoding::SingleByte, "EUC-JP",  true,  {}},
    {17, Encoding::SingleByte, "UCS-2BE", true,  {}},
    {24, Encoding::SingleByte, "CP874",   false, {}},                // single-byte Asian
    {26, Encoding::SingleByte, "GB18030", true,  {}},                // multi-byte Asian
    {27, Encoding::SingleByte, "CP1252",  false, {}},
    {28, Encoding::Utf8,       "",        true,  {}},
    {29, Encoding::Utf16Be,    "",        true,  {}},
    {30, Encoding::Utf16Le,    "",        true,  {}},
    {31, Encoding::SingleByte, "CP1250",  false, {}},
    {33, Encoding::SingleByte, "CP1251",  false, {}},
    {34, Encoding::SingleByte, "CP1253",  false, {}},
    {35, Encoding::SingleByte, "CP1254",  false, {}},
    {36, Encoding::SingleByte, "CP1255",  false, {}},
    // clang-format on
};

// Printers show the euro sign here in the sets made from code page 850, which is older than the euro.
constexpr std::size_t EuroPosition = 0x15;
constexpr unsigned LastSetWithEuroPosition = 13;

/// An open conversion of the C library to UTF-8.
class IconvConverter {
public:
    explicit IconvConverter(char const* from) : descriptor_(iconv_open("UTF-8", from)) {}
    ~IconvConverter() {
        if (IsOpen()) iconv_close(descriptor_);
    }
    IconvConverter(IconvConverter const&) = delete;
    IconvConverter& operator=(IconvConverter const&) = delete;

    /// What cannot be converted is left out; without the library's table only 7-bit characters can be.
    std::string Convert(std::string_view data);

private:
    bool IsOpen() const { return descriptor_ != reinterpret_cast<iconv_t>(-1); }

    iconv_t descriptor_;
};

std::string IconvConverter::Convert(std::string_view data) {
    std::string text;
    if (!IsOpen()) {
        std::copy_if(data.begin(), data.end(), std::back_inserter(text), IsAscii);
        return text;
    }
    auto* input = const_cast<char*>(data.data());  // iconv takes a non-constant pointer and does not write
    std::size_t inputLeft = data.size();
    // The last call gives no input: it brings out a character that waits for a combining one, and the initial state.
    for (bool atEnd = false;;) {
        char piece[256];
        char* output = piece;
        std::size_t outputLeft = sizeof piece;
        auto const result = iconv(descriptor_, atEnd ? nullptr : &input, &inputLeft, &output, &outputLeft);
        int const error = result == static_cast<std::size_t>(-1) ? errno : 0;
        text.append(piece, output);
        if (atEnd) return text;
        if (error == EILSEQ) {
            ++input;
            --inputLeft;
        } else if (error != E2BIG) {  // all is done, or the last character is cut off
            atEnd = true;
        }
    }
}

CharacterTable MakeTable(CharacterSet const& set) {
    CharacterTable table;
    IconvConverter converter(set.iconvName);
    // Position 0 is no character in any set.
    for (std::size_t position = 1; position < table.size(); ++position) {
        auto const byte = static_cast<char>(position);
        table[position] = converter.Convert({&byte, 1});
    }
    if (set.number <= LastSetWithEuroPosition) table[EuroPosition] = FromCodePoints(U"€");
    for (std::size_t i = 0; i < set.nationalCharacters.size(); ++i) {
        table[NationalPositions[i]] = FromCodePoints(set.nationalCharacters.substr(i, 1));
    }
    return table;
}

}  // namespace

CharacterSet const* FindCharacterSet(unsigned number) {
    auto const* const set =
        std::find_if(std::begin(CharacterSets), std::end(CharacterSets),
                     [number](CharacterSet const& candidate) { return candidate.number == number; });
    return set == std::end(CharacterSets) ? nullptr : set;
}

CharacterSet const* FindNamedCharacterSet(ZplCommand const& command) {
    try {
        auto const number = ZplParse<unsigned>(command, 0);
        return number ? FindCharacterSet(*number) : nullptr;
    } catch (NumberOutOfRange const&) {
        return nullptr;
    }
}

CharacterTable const& TableOf(CharacterSet const& set) {
    static std::mutex mutex;
    static std::map<unsigned, CharacterTable> tables;
    std::lock_guard const lock(mutex);
    auto const [entry, isNew] = tables.try_emplace(set.number);
    if (isNew) entry->second = MakeTable(set);
    return entry->second;
}

std::string ConvertMultiByte(CharacterSet const& set, std::string_view data) {
    static std::mutex mutex;  // a conversion has a state of its own and serves one caller at a time
    static std::map<unsigned, IconvConverter> converters;
    std::lock_guard const lock(mutex);
    return converters.try_emplace(set.number, set.iconvName).first->second.Convert(data);
}
