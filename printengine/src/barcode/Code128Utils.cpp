#include "Barcode/Encoder/Code128Utils.h"

#include "printengine/src/barcode/Code128Patterns.h"

namespace Barcode::Encoder {

namespace {

/// Bars and spaces of one pattern, a block for each module.
void AppendPattern(int pattern, std::vector<Model::Block>& blocks) {
    int divisor = 1;
    while (pattern / divisor >= 10) divisor *= 10;
    for (bool isBar = true; divisor != 0; divisor /= 10, isBar = !isBar) {
        auto const width = static_cast<std::size_t>(pattern / divisor % 10);
        blocks.insert(blocks.end(), width, isBar ? Model::Block::NarrowBar() : Model::Block::NarrowSpace());
    }
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
    AppendPattern(Code128Patterns[value], blocks);
}

void Code128Utils::AddStopCode(std::vector<Model::Block>& blocks) { AppendPattern(Code128StopPattern, blocks); }

int Code128Utils::CheckCharacter(std::vector<int> const& values) {
    // The start character weighs as much as the first behind it.
    std::size_t sum = values.empty() ? 0 : static_cast<std::size_t>(values.front());
    for (std::size_t i = 1; i < values.size(); ++i) sum = (sum + i * static_cast<std::size_t>(values[i])) % 103;
    return static_cast<int>(sum % 103);
}

}  // namespace Barcode::Encoder
