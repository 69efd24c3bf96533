#include <algorithm>
#include <cstdint>
#include <cstring>
#include <span>
#include <utility>

#include "printengine/src/ScriptGraphicContextState.h"

namespace Scripting {

using PrintEngine::Drawing::BitRows;
using PrintEngine::Drawing::Raster;
using PrintEngine::Drawing::Word;
using PrintEngine::Drawing::WordBits;
using PrintEngine::Pages::PageComposer;
using PrintEngine::Pages::PageLayout;

namespace {

/// Whether a level or upright line goes on in the direction of the one before.
bool GoesOn(PixelLine const& line, PixelLine const& next) {
    bool const isLevel = line.y1 == line.y2 && next.y1 == line.y1 && next.y2 == line.y1;
    bool const isUpright = line.x1 == line.x2 && next.x1 == line.x1 && next.x2 == line.x1;
    return isLevel || isUpright;
}

/// 64 pixels of a row from `x` on, which may lie left of 0.
Word WordAt(std::span<Word const> row, int x) {
    int const first = x >= 0 ? x / WordBits : -((WordBits - 1 - x) / WordBits);
    int const shift = x - first * WordBits;
    auto const at = [&row](int index) {
        return index >= 0 && static_cast<std::size_t>(index) < row.size() ? row[static_cast<std::size_t>(index)] : 0;
    };
    return shift == 0 ? at(first) : at(first) << shift | at(first + 1) >> (WordBits - shift);
}

/// The pixels of a row from `left` on, as many as `out` holds.
void CopyPixels(std::span<Word const> row, int left, std::span<Word> out) {
    auto const first = static_cast<std::size_t>(std::max(left, 0)) / WordBits;
    int const shift = left % WordBits;
    if (left >= 0 && first + out.size() < row.size()) {
        // Shifted twice, as a shift by 64 is undefined.
        for (std::size_t i = 0; i < out.size(); ++i)
            out[i] = row[first + i] << shift | row[first + i + 1] >> 1 >> (WordBits - 1 - shift);
    } else {
        for (std::size_t i = 0; i < out.size(); ++i) out[i] = WordAt(row, left + static_cast<int>(i) * WordBits);
    }
}

/// The pixels of the last word of a row that lie in its box.
Word LastInside(PixelBox const& box) { return ~Word{0} << ((WordBits - box.Width() % WordBits) % WordBits); }

/// The pixels of a box of a raster.
PixelRows RowsOf(Raster const& raster, PixelBox const& box) {
    PixelRows rows{box, {}, {}};
    if (box.IsEmpty()) return rows;
    std::size_t const words = rows.WordsPerRow();
    auto const height = static_cast<std::size_t>(box.Height());
    rows.words.resize(words * height);
    rows.starts.resize(height);
    for (std::size_t y = 0; y < height; ++y) {
        rows.starts[y] = static_cast<std::uint32_t>(y * words);
        std::span const out(rows.words.data() + y * words, words);
        CopyPixels(raster.Row(box.top + static_cast<int>(y)), box.left, out);
        out.back() &= LastInside(box);
    }
    return rows;
}

/// Whether two rows are surely alike from `left` up to `right`: in all words that hold these pixels.
bool AreAlike(std::span<Word const> row, std::span<Word const> other, int left, int right) {
    auto const first = static_cast<std::size_t>(std::max(left, 0)) / WordBits;
    auto const behind = static_cast<std::size_t>(std::max(right + WordBits - 1, 0)) / WordBits;
    auto const end = std::min(behind, row.size());
    if (end != std::min(behind, other.size())) return false;
    return first >= end || std::memcmp(row.data() + first, other.data() + first, (end - first) * sizeof(Word)) == 0;
}

/// The pixels of a raster as those of a box, whose rows that are alike become one.
PixelRows RowsOnce(Raster const& raster, PixelBox const& box) {
    PixelRows rows{box, {}, {}};
    std::vector<Word> row(rows.WordsPerRow());
    for (int y = 0; y < box.Height(); ++y) {
        CopyPixels(raster.Row(y), 0, row);
        bool const isLikeAbove = y > 0 && std::equal(row.begin(), row.end(), rows.Row(y - 1));
        if (!isLikeAbove) rows.words.insert(rows.words.end(), row.begin(), row.end());
        rows.starts.push_back(static_cast<std::uint32_t>(rows.words.size() - row.size()));
    }
    return rows;
}

/// The ink of a picture, whose rows that are alike become one.
PixelRows InkRows(BitRows const& picture, PixelBox const& ink, PixelBox const& box) {
    PixelRows rows{box, {}, {}};
    rows.starts.reserve(static_cast<std::size_t>(ink.Height()));
    std::size_t const words = rows.WordsPerRow();
    std::size_t const bytes = (static_cast<std::size_t>(picture.width) + 7) / 8;
    auto const row = [&](int y) { return picture.bytes + static_cast<std::size_t>(y) * picture.stride; };
    int const shift = ink.left % WordBits;
    int const last = (picture.width - 1) / WordBits;
    for (int y = ink.top, next = y; y < ink.bottom; y = next) {
        do ++next;
        while (next < ink.bottom && std::memcmp(row(y), row(next), bytes) == 0);
        rows.starts.insert(rows.starts.end(), static_cast<std::size_t>(next - y),
                           static_cast<std::uint32_t>(rows.words.size()));
        int word = ink.left / WordBits;
        Word bits = picture.Fetch(y, word);
        for (std::size_t i = 0; i < words; ++i) {
            Word const behind = ++word <= last ? picture.Fetch(y, word) : 0;
            rows.words.push_back(bits << shift | behind >> 1 >> (WordBits - 1 - shift));
            bits = behind;
        }
    }
    return rows;
}

}  // namespace

void ScriptGraphicContext::State::CountBaseline(PrintEngine::Text::TextFrame const& frame, std::int64_t width,
                                                std::int64_t v) {
    if (!ink) return;
    auto const scale = Scale();
    // The corner (u, v) of dots, turned as the dots are.
    auto const corner = [&](std::int64_t u) -> std::pair<int, int> {
        switch (frame.degrees) {
            case 90: return {scale.Edge(frame.x + 1 - v), scale.Edge(frame.y + u)};
            case 180: return {scale.Edge(frame.x + 1 - u), scale.Edge(frame.y + 1 - v)};
            case 270: return {scale.Edge(frame.x + v), scale.Edge(frame.y + 1 - u)};
            default: return {scale.Edge(frame.x + u), scale.Edge(frame.y + v)};
        }
    };
    auto const [x1, y1] = corner(0);
    auto const [x2, y2] = corner(width);
    PixelLine const line{x1, y1, x2, y2};
    if (!ink->baseline) {
        ink->baseline = line;
    } else if (GoesOn(*ink->baseline, line)) {
        ink->baseline->x2 = x2;
        ink->baseline->y2 = y2;
    }
}

void ScriptGraphicContext::State::KeepPicture(BitRows const& picture, PixelBox const& ink, int left, int top) {
    constexpr std::size_t MostWords = std::size_t{4} << 20;
    PixelBox const box{left + ink.left, top + ink.top, left + ink.right, top + ink.bottom};
    if (ink.IsEmpty()) return;
    // Counted with all rows, so that the limit is one of what a label shows.
    std::size_t const words = PixelRows{box, {}, {}}.WordsPerRow() * static_cast<std::size_t>(ink.Height());
    if (words > MostWords - pictureWords) return;
    pictureWords += words;
    if (degrees == 0) {
        pictures.push_back(InkRows(picture, ink, box));
        return;
    }
    scratch.Reset(ink.Width(), ink.Height());
    scratch.Blit(picture, -ink.left, -ink.top, degrees, PrintEngine::Drawing::Ink::Black);
    pictures.push_back(RowsOnce(scratch, box));
}

void ScriptGraphicContext::StartField() {
    state_->ink.emplace();
    state_->keepsPictures = false;
    state_->pictures.clear();
}

void ScriptGraphicContext::KeepPictures() { state_->keepsPictures = true; }

std::vector<PixelRows> ScriptGraphicContext::TakePictures() { return std::exchange(state_->pictures, {}); }

PixelRows ScriptGraphicContext::InkIn(PixelBox const& drawn) const { return RowsOf(state_->raster, drawn); }

bool ScriptGraphicContext::Shows(PixelRows const& drawn) const {
    PixelBox const& box = drawn.box;
    std::vector<Word> shown(drawn.WordsPerRow());
    std::span<Word const> above;
    for (int y = 0; y < box.Height(); ++y) {
        auto const row = state_->raster.Row(box.top + y);
        auto const before = std::exchange(above, row);
        // Most rows of a symbol are like those above them, and so they are on the label.
        if (drawn.IsOneWithAbove(y) && AreAlike(row, before, box.left, box.right)) continue;
        CopyPixels(row, box.left, shown);
        shown.back() &= LastInside(box);
        if (!std::equal(shown.begin(), shown.end(), drawn.Row(y))) return false;
    }
    return true;
}

bool ScriptGraphicContext::IsWhite(PixelBox const& drawn) const {
    Raster const& raster = state_->raster;
    int const left = std::max(drawn.left, 0);
    if (left >= drawn.right) return true;
    auto const first = static_cast<std::size_t>(left / WordBits);
    auto const last = static_cast<std::size_t>((drawn.right - 1) / WordBits);
    Word const head = ~Word{0} >> left % WordBits;
    Word const tail = ~Word{0} << (WordBits - 1 - (drawn.right - 1) % WordBits);
    for (int y = std::max(drawn.top, raster.Top()); y < std::min(drawn.bottom, raster.Bottom()); ++y) {
        auto const row = raster.Row(y);
        if (row.size() <= first) continue;
        Word ink = row[first] & head & (first == last ? tail : ~Word{0});
        for (std::size_t i = first + 1; i < std::min(last, row.size()); ++i) ink |= row[i];
        if (first < last && last < row.size()) ink |= row[last] & tail;
        if (ink != 0) return false;
    }
    return true;
}

FieldInk ScriptGraphicContext::EndField() {
    FieldInk const ink = state_->ink.value_or(FieldInk());
    state_->ink.reset();
    return ink;
}

PixelBox ScriptGraphicContext::OnPage(PixelBox const& drawn) const {
    PageLayout const& page = state_->layout;
    auto const enlarged = [&page](int pixels) {
        constexpr std::int64_t Farthest = std::int64_t{1} << 29;
        return static_cast<int>(std::clamp(std::int64_t{pixels} * page.enlargement, -Farthest, Farthest));
    };
    PixelBox box{enlarged(drawn.left), enlarged(drawn.top), enlarged(drawn.right), enlarged(drawn.bottom)};
    if (page.mirrored != page.turned) box = {page.width - box.right, box.top, page.width - box.left, box.bottom};
    if (page.turned) box = {box.left, page.height - box.bottom, box.right, page.height - box.top};
    return {box.left, box.top + page.shiftDown, box.right, box.bottom + page.shiftDown};
}

PixelBox ScriptGraphicContext::PrintArea() const {
    PageLayout const& page = state_->layout;
    // What is moved off one end of the page leaves a white edge at the other.
    return {0, std::max(0, page.shiftDown), page.width, std::min(page.height, page.height + page.shiftDown)};
}

double ScriptGraphicContext::PixelsPerDot() const { return state_->Scale().Factor() * state_->layout.enlargement; }

bool ScriptGraphicContext::IsPageBlank() const {
    PageLayout const& page = state_->layout;
    std::vector<std::uint8_t> row(PrintEngine::Pages::PackedRowBytes(page.width));
    PageComposer composer(state_->raster, page, true);
    for (int y = 0; y < page.height; ++y) {
        composer.Write(y, row.data());
        if (std::any_of(row.begin(), row.end(), [](std::uint8_t byte) { return byte != 0; })) return false;
    }
    return true;
}

}  // namespace Scripting
