#include "printengine/src/page/PageLayout.h"

#include <algorithm>
#include <cstring>
#include <span>

#include "printengine/src/raster/BitRuns.h"
#include "printengine/src/raster/Bits.h"

namespace PrintEngine::Pages {

using Drawing::Word;
using Drawing::WordBits;

namespace {

std::size_t WordsFor(int width) { return static_cast<std::size_t>(width + WordBits - 1) / WordBits; }

/// Makes each pixel of `source` `times` pixels wide.
void Widen(std::span<Word const> source, std::size_t times, std::span<Word> row) {
    Drawing::ForRuns(source,
                     [&](std::size_t left, std::size_t right) { Drawing::SetRun(row, left * times, right * times); });
}

/// Mirrors the first `width` pixels of a row, of which the others are 0.
void MirrorRow(std::span<Word> row, int width) {
    std::reverse(row.begin(), row.end());
    for (Word& word : row) word = Drawing::Reversed(word);
    auto const shift = static_cast<int>(row.size()) * WordBits - width;
    if (shift == 0) return;
    for (std::size_t i = 0; i < row.size(); ++i) {
        row[i] = row[i] << shift | (i + 1 < row.size() ? row[i + 1] >> (WordBits - shift) : 0);
    }
}

}  // namespace

void ComposeRow(Drawing::Raster const& raster, PageLayout const& layout, int row, std::vector<Word>& scratch,
                std::uint8_t* out) {
    std::size_t const bytes = PackedRowBytes(layout.width);
    int const shifted = row - layout.shiftDown;
    int const upright = layout.turned ? layout.height - 1 - shifted : shifted;
    auto const source =
        shifted < 0 || shifted >= layout.height ? std::span<Word const>{} : raster.Row(upright / layout.enlargement);
    if (source.empty()) {
        std::memset(out, 0, bytes);
        return;
    }

    std::size_t const words = WordsFor(layout.width);
    scratch.assign(words, 0);
    auto const visible = source.first(std::min(source.size(), words));
    if (layout.enlargement > 1) {
        Widen(visible, static_cast<std::size_t>(layout.enlargement), scratch);
    } else {
        std::copy(visible.begin(), visible.end(), scratch.begin());
    }
    int const beyond = static_cast<int>(words) * WordBits - layout.width;
    scratch.back() &= ~Word{0} << beyond;
    if (layout.mirrored != layout.turned) MirrorRow(scratch, layout.width);
    for (Word& word : scratch) word = Drawing::BigEndian(word);
    std::memcpy(out, scratch.data(), bytes);
}

}  // namespace PrintEngine::Pages
