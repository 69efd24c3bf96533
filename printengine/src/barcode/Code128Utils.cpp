#include "Barcode/Encoder/Code128Utils.h"

#include <array>
#include <cstdint>

#include "printengine/src/barcode/Code128Patterns.h"
#include "printengine/src/barcode/Elements.h"

namespace Barcode::Encoder {

namespace {

constexpr int CharacterModules = 11;
constexpr int StopModules = 13;

/// The modules of a pattern, a bit each, the last in the lowest; 1 is dark. The pattern has `elements` digits, the
/// first of which is a bar.
constexpr std::uint16_t ModulesOf(int pattern, int elements) {
    unsigned modules = 0;
    for (int at = 0; elements > 0; pattern /= 10, --elements) {
        int const width = pattern % 10;
        if (elements % 2 != 0) modules |= ((1U << width) - 1) << at;
        at += width;
    }
    return static_cast<std::uint16_t>(modules);
}

}  // namespace

// Blank to underscore are 0 to 63 in both subsets; 64 to 95 are the control characters in A, and what follows the
// underscore in B.
int Code128Utils::CharToSCV(unsigned char character, ControlCharacter subset) {
    if (character >= 128 || subset == ControlCharacter::CodeC) return -1;
    if (character < 32) return subset == ControlCharacter::CodeA ? character + 64 : -1;
    if (character < 96) return character - 32;
    return subset == ControlCharacter::CodeB ? character - 32 : -1;
}

void Code128Utils::CreateBars(unsigned char value, std::vector<Model::Block>& blocks) {
    static constexpr auto Modules = [] {
        std::array<std::uint16_t, Code128Patterns.size()> modules{};
        for (std::size_t i = 0; i < modules.size(); ++i) modules[i] = ModulesOf(Code128Patterns[i], 6);
        return modules;
    }();
    AppendModules(Modules[value], CharacterModules, blocks);
}

void Code128Utils::AddStopCode(std::vector<Model::Block>& blocks) {
    AppendModules(ModulesOf(Code128StopPattern, 7), StopModules, blocks);
}

int Code128Utils::CheckCharacter(std::vector<int> const& values) {
    // The start character weighs as much as the first behind it.
    std::size_t sum = values.empty() ? 0 : static_cast<std::size_t>(values.front());
    for (std::size_t i = 1; i < values.size(); ++i) sum = (sum + i * static_cast<std::size_t>(values[i])) % 103;
    return static_cast<int>(sum % 103);
}

}  // namespace Barcode::Encoder
