#include <algorithm>
#include <cstdint>
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

/// The pixels of a box that begins at (left, top) of a raster.
PixelRows RowsOf(Raster const& raster, PixelBox const& box, int left, int top) {
    PixelRows rows{box, {}};
    if (box.IsEmpty()) return rows;
    std::size_t const words = rows.WordsPerRow();
    rows.words.resize(words * static_cast<std::size_t>(box.Height()));
    int const rest = box.Width() % WordBits;
    Word const inside = rest == 0 ? ~Word{0} : ~(~Word{0} >> rest);
    Word* out = rows.words.data();
    for (int y = 0; y < box.Height(); ++y, out += words) {
        auto const row = raster.Row(top + y);
        if (row.empty()) continue;
        auto const first = static_cast<std::size_t>(std::max(left, 0)) / WordBits;
        int const shift = left % WordBits;
        if (left >= 0 && first + words < row.size()) {
            // Shifted twice, as a shift by 64 is undefined.
            for (std::size_t i = 0; i < words; ++i)
                out[i] = row[first + i] << shift | row[first + i + 1] >> 1 >> (WordBits - 1 - shift);
        } else {
            for (std::size_t i = 0; i < words; ++i) out[i] = WordAt(row, left + static_cast<int>(i) * WordBits);
        }
        out[words - 1] &= inside;
    }
    return rows;
}

/// A picture from the corner of its ink on.
std::vector<Word> InkWords(BitRows const& picture, PixelBox const& ink, std::size_t words) {
    std::vector<Word> result;
    result.reserve(words * static_cast<std::size_t>(ink.Height()));
    int const first = ink.left / WordBits;
    int const shift = ink.left % WordBits;
    int const last = (picture.width - 1) / WordBits;
    for (int y = ink.top; y < ink.bottom; ++y) {
        Word bits = picture.Fetch(y, first);
        for (std::size_t i = 0; i < words; ++i) {
            int const next = first + static_cast<int>(i) + 1;
            Word const behind = next > last ? 0 : next < last ? picture.FetchWhole(y, next) : picture.Fetch(y, next);
            result.push_back(bits << shift | behind >> 1 >> (WordBits - 1 - shift));
            bits = behind;
        }
    }
    return result;
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
    PixelRows kept{{left + ink.left, top + ink.top, left + ink.right, top + ink.bottom}, {}};
    if (ink.IsEmpty()) return;
    std::size_t const words = kept.WordsPerRow() * static_cast<std::size_t>(ink.Height());
    if (words > MostWords - pictureWords) return;
    pictureWords += words;
    if (degrees == 0) {
        kept.words = InkWords(picture, ink, kept.WordsPerRow());
        pictures.push_back(std::move(kept));
        return;
    }
    scratch.Reset(ink.Width(), ink.Height());
    scratch.Blit(picture, -ink.left, -ink.top, degrees, PrintEngine::Drawing::Ink::Black);
    pictures.push_back(RowsOf(scratch, kept.box, 0, 0));
}

void ScriptGraphicContext::StartField() {
    state_->ink.emplace();
    state_->keepsPictures = false;
    state_->pictures.clear();
}

void ScriptGraphicContext::KeepPictures() { state_->keepsPictures = true; }

std::vector<PixelRows> ScriptGraphicContext::TakePictures() { return std::exchange(state_->pictures, {}); }

PixelRows ScriptGraphicContext::InkIn(PixelBox const& drawn) const {
    return RowsOf(state_->raster, drawn, drawn.left, drawn.top);
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
