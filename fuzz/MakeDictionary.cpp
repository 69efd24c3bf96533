#include <cstdio>
#include <string>

#include "frontend/processor/CreateHandlers.h"

// Writes the words of the language for libFuzzer, one a line: each command with its prefix, and what else matters to
// those who read streams.

namespace {

std::string Letters(std::uint64_t id) {
    std::string letters;
    for (int shift = 24; shift >= 0; shift -= 8) {
        if (auto const letter = static_cast<char>(id >> shift & 0xFF)) letters += letter;
    }
    return letters;
}

}  // namespace

int main() {
    CommandHandlerPool const pool = CreateHandlers(true, false);
    for (auto const& [id, handler] : pool) {
        auto const type = handler->GetSyntacticType();
        std::string const letters = Letters(id);
        if (type != SyntacticType::Control) std::printf("\"^%s\"\n", letters.c_str());
        if (type != SyntacticType::Format) std::printf("\"~%s\"\n", letters.c_str());
    }
    for (char const* word : {R"(\xFF\xFE)", R"(\xFE\xFF)", R"(\xEF\xBB\xBF)", "^XA^XF", "^FS^XZ", ":B64:", ":Z64:",
                             "R:", "E:", ".GRF", ".ZPL", "! U1 getvar ", "^CI28", "^CI0", "_5E", "_1"})
        std::printf("\"%s\"\n", word);
}
