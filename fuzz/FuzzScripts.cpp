#include <cstdint>
#include <string>
#include <string_view>

#include "frontend/context/Utf8Text.h"
#include "fuzz/Fuzz.h"
#include "fuzz/FuzzDesk.h"
#include "jobhost/model/Session.h"
#include "labels/Label.h"

// Texts of any characters, in fields and blocks, every font, turn and flow: they are shaped, put in order, broken into
// lines and drawn.

namespace {

/// The characters that most depend on their neighbours lie below U+3000, and get most of the room.
char32_t CharacterOf(unsigned high, unsigned low) {
    unsigned const pair = high << 8 | low;
    if (pair < 0xC000) return 0x20 + pair % 0x2FE0;
    if (pair < 0xE000) return 0x3000 + (pair & 0x1FFF) * 6;
    if (pair < 0xF000) return 0xF900 + (pair & 0x6FF);
    return 0x10000 + (pair & 0xFFF) * 0xF1;
}

std::string TextOf(std::string_view data) {
    std::u32string text;
    for (std::size_t i = 0; i + 1 < data.size(); i += 2) {
        char32_t const c = CharacterOf(static_cast<unsigned char>(data[i]), static_cast<unsigned char>(data[i + 1]));
        bool const isSpecial = c == U'^' || c == U'~' || c == 0xFEFF || (c >= 0xD800 && c < 0xE000) || c > 0x10FFFF;
        text += isSpecial ? U' ' : c;
    }
    return FromCodePoints(text);
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(std::uint8_t const* data, std::size_t size) {
    if (size < 2) return 0;
    constexpr char const* Fonts[] = {
        "^A0N,20,20", "^A0R,31,17", "^AFI,26,13", "^AAB,9,5", "^A@N,25,25,E:DEJAVUSANS.TTF",
        "^A0B,12,60", "^ADN,36,20", "^AHN,30,19"};
    constexpr char const* Shapes[] = {"",           "^FB90,9,0,J", "^FB40,20,0,R", "^FB150,3,-4,C,20",
                                      "^TBN,70,90", "^FPR",        "^FPV,2",       "^FB60,9,0,J^FPH,3"};
    std::string const stream = "^XA^CI28^FO90,90" + std::string(Fonts[data[0] % 8]) + Shapes[data[0] / 8 % 8] + "^FD" +
                               TextOf({reinterpret_cast<char const*>(data) + 1, size - 1}) + "^FS^XZ";
    auto const session = EmptyDesk().MakeSession();
    auto result = session->Consume(stream, false, true);
    if (result.label) std::get<1>(*result.label).ProcessLabel(0, false);
    return 0;
}
