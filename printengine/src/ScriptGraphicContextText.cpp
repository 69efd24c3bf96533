#include <algorithm>
#include <cmath>

#include "printengine/src/ScriptGraphicContextState.h"
#include "printengine/src/fonts/CellTypeface.h"
#include "printengine/src/fonts/EmSize.h"
#include "printengine/src/text/Utf8.h"

namespace Scripting {

using PrintEngine::Fonts::BoundedTrueTypeEm;
using PrintEngine::Fonts::Typeface;
using PrintEngine::Text::TakeCharacter;
using PrintEngine::Text::TextFrame;
using PrintEngine::Text::TextPainter;

namespace {

/// Of a label's text, so much names its job.
constexpr std::size_t MaxLabelText = 64;

/// The size of a TrueType line: the same for all texts of a font and size.
struct TrueTypeLine {
    int height = 0;
    int ascent = 0;
};

TrueTypeLine LineOf(double lineHeight, double pointSize) {
    TrueTypeLine line;
    line.height = static_cast<int>(std::lround(lineHeight * BoundedTrueTypeEm(pointSize)));
    line.ascent = line.height - static_cast<int>(std::lround(0.37 * line.height));
    return line;
}

/// How far from its first character on a text runs along its baseline, of which `width` dots are the whole: characters
/// that stand above each other each have their own.
std::int64_t LineWidth(Typeface& typeface, std::string_view text, PrintEngine::Text::TextStyle const& style,
                       std::int64_t width) {
    if (style.flow == ScriptTextFlow::Horizontal) return width;
    std::int64_t const first = std::int64_t{typeface.Advance(TakeCharacter(text))} * style.magnificationX;
    return style.flow == ScriptTextFlow::Vertical ? first : first - width;
}

/// Calls `take(line, index)` for the lines of a text. A line feed at the very end starts no further line.
template <typename TakeLine>
void ForLines(std::string_view text, TakeLine take) {
    for (int index = 0; !text.empty(); ++index) {
        std::size_t const end = std::min(text.find('\n'), text.size());
        take(text.substr(0, end), index);
        text.remove_prefix(std::min(end + 1, text.size()));
    }
}

}  // namespace

void ScriptGraphicContext::State::NoteContent(std::string_view text) {
    hasContent = true;
    if (!labelText.empty()) return;
    for (std::size_t count = 0; !text.empty() && count < MaxLabelText;) {
        std::string_view const before = text;
        char32_t const character = TakeCharacter(text);
        if (PrintEngine::Fonts::IsControl(character)) continue;
        labelText += before.substr(0, before.size() - text.size());
        ++count;
    }
}

template <typename Paint>
void ScriptGraphicContext::State::PaintText(Paint paint) {
    auto const scale = Scale();
    bool const isInverting = Ink() == PrintEngine::Drawing::Ink::Invert;
    bool hasLeftOut = false;
    OnRasters([&](PrintEngine::Drawing::Raster& page) {
        TextPainter painter(isInverting ? scratch : page, scale, fonts.Glyphs(), textLayout,
                            isInverting ? PrintEngine::Drawing::Ink::Black : Ink());
        painter.CountInk(Counted(&FieldInk::text));
        if (isInverting) scratch.Reset(layout.width, layout.height);
        paint(painter);
        if (isInverting) page.Draw(scratch, PrintEngine::Drawing::Ink::Invert);
        hasLeftOut = hasLeftOut || painter.HasLeftOut();
    });
    if (hasLeftOut) fonts.Warn("characters larger than a page are left out");
}

std::vector<std::string> ScriptGraphicContext::GetFontFileNames() const { return state_->fonts.Files().Names(); }

std::string ScriptGraphicContext::PrepareScaledFont(
    std::string_view name, ScaledFontMetrics const& metrics, std::function<bool(char32_t)> const&,
    std::function<unsigned short(std::string_view, unsigned short)> const&) {
    return state_->fonts.Prepare(name, metrics, state_->printerContext->DesignDpi().Value());
}

bool ScriptGraphicContext::IsBitmapTypeface(std::string_view font) const {
    return state_->fonts.IsBitmapOrPrepared(font);
}

int ScriptGraphicContext::GetFontHeight(std::string_view font) const { return state_->fonts.Find(font).Height(); }

int ScriptGraphicContext::GetFontAscent(std::string_view font) const { return state_->fonts.Find(font).Ascent(); }

int ScriptGraphicContext::GetFontDescent(std::string_view font) const { return state_->fonts.Find(font).Descent(); }

int ScriptGraphicContext::GetFontLeading(std::string_view) const { return 0; }

int ScriptGraphicContext::GetCharacterWidth(std::string_view font, char32_t character) const {
    return state_->fonts.Find(font).Advance(character);
}

SpaceMetrics ScriptGraphicContext::GetSpaceMetrics(std::string_view font) const {
    int const height = PrintEngine::Text::CharacterLineHeight(state_->fonts.Find(font));
    return {height, height};
}

bool ScriptGraphicContext::NeedsGlyphAdjustment(std::string_view) const { return false; }

void ScriptGraphicContext::PrepareText(std::string_view, std::string& text) {
    // Characters that are not drawn would spoil the average width of the rest. Joiners and the like say how letters
    // beside them are drawn, and soft hyphens where a line may end.
    constexpr char32_t SoftHyphen = 0xAD;
    bool const needsJoiners = PrintEngine::Scripts::NeedsLayout(text);
    std::string printable;
    for (std::string_view rest = text; !rest.empty();) {
        std::string_view const before = rest;
        char32_t const character = TakeCharacter(rest);
        bool const isJoiner = needsJoiners && PrintEngine::Scripts::IsInvisible(character);
        if (isJoiner || character == SoftHyphen || !PrintEngine::Fonts::IsControl(character))
            printable += before.substr(0, before.size() - rest.size());
    }
    text = std::move(printable);
}

int ScriptGraphicContext::MeasureText(std::string_view font, std::string_view text, unsigned magnificationX,
                                      int spacing, bool) const {
    return PrintEngine::Text::MeasureWidth(state_->fonts.Find(font), state_->textLayout, text, magnificationX, spacing);
}

Extent ScriptGraphicContext::MeasureTrueTypeText(std::string_view font, std::string_view text, int, double pointSize,
                                                 double widthPercent) const {
    double const em = BoundedTrueTypeEm(pointSize);
    int const lineHeight = LineOf(state_->fonts.TrueTypeLineHeight(font), pointSize).height;
    Typeface& typeface = state_->fonts.TrueType(font, em * widthPercent / 100, em);
    Extent extent;
    std::int64_t height = 0;
    ForLines(text, [&](std::string_view line, int) {
        extent.width =
            std::max(extent.width, PrintEngine::Text::MeasureWidth(typeface, state_->textLayout, line, 1, 0));
        height += lineHeight;
    });
    extent.height = static_cast<int>(std::min<std::int64_t>(height, 1 << 28));
    return extent;
}

/// The pen starts where turning the text's box, as GetGraphicContextOrigin has moved it, puts its first dot.
void ScriptGraphicContext::DrawText(int x, int y, std::string_view text, ScriptTextJustification, int spacing, bool,
                                    bool) {
    State& state = *state_;
    if (text.empty()) return;
    // White text is no text of the sender: it says why a barcode was refused.
    state.NoteContent(state.color == 1 ? std::string_view() : text);
    Typeface& typeface = state.fonts.Find(state.font);
    state.textStyle.spacing = spacing;
    std::int64_t const width =
        PrintEngine::Text::MeasureWidth(typeface, state.textLayout, text, state.textStyle.magnificationX, spacing);
    std::int64_t const height = std::int64_t{typeface.Height()} * state.textStyle.magnificationY;
    if (!state.Spend(width, height, text.size())) return;
    TextFrame frame{state.originX + x, state.originY + y, state.degrees};
    if (state.degrees == 90 || state.degrees == 180) (state.degrees == 90 ? frame.x : frame.y) += height - 1;
    if (state.degrees == 180 || state.degrees == 270) (state.degrees == 180 ? frame.x : frame.y) += width - 1;
    state.CountBaseline(frame, LineWidth(typeface, text, state.textStyle, width),
                        std::int64_t{typeface.Ascent()} * state.textStyle.magnificationY);
    state.PaintText([&](TextPainter& painter) { painter.Draw(typeface, text, state.textStyle, frame, 0, 0); });
}

void ScriptGraphicContext::DrawTrueTypeText(std::string_view font, int x, int y, int width, int height,
                                            std::string_view text, bool, double pointSize, double widthPercent, int,
                                            ScriptTextJustification, int spacing) {
    State& state = *state_;
    if (text.empty()) return;
    state.NoteContent(text);
    double const em = BoundedTrueTypeEm(pointSize);
    TrueTypeLine const line = LineOf(state.fonts.TrueTypeLineHeight(font), pointSize);
    Typeface& typeface = state.fonts.TrueType(font, em * widthPercent / 100, em);
    if (!state.Spend(width, height, text.size())) return;

    // The box turns about its centre.
    std::int64_t const half = (std::int64_t{width} - height) / 2;
    TextFrame frame{state.originX + x, state.originY + y, state.degrees};
    if (state.degrees == 90 || state.degrees == 270) {
        frame.x += half;
        frame.y -= half;
    }
    if (state.degrees == 90 || state.degrees == 180) (state.degrees == 90 ? frame.x : frame.y) += height - 1;
    if (state.degrees == 180 || state.degrees == 270) (state.degrees == 180 ? frame.x : frame.y) += width - 1;

    // At 0 and 270 degrees the caller has moved the box up by this much of an em.
    bool const isMoved = state.degrees == 0 || state.degrees == 270;
    std::int64_t const moved = isMoved ? std::lround(std::round(em) * 0.19) : 0;
    PrintEngine::Text::TextStyle const style{1, 1, spacing, ScriptTextFlow::Horizontal};
    std::string_view const first = text.substr(0, text.find('\n'));
    if (state.ink)
        state.CountBaseline(frame, PrintEngine::Text::MeasureWidth(typeface, state.textLayout, first, 1, spacing),
                            moved + line.ascent);
    state.PaintText([&](TextPainter& painter) {
        ForLines(text, [&](std::string_view lineText, int index) {
            std::int64_t const baseline = moved + line.ascent + std::int64_t{index} * line.height;
            painter.Draw(typeface, lineText, style, frame, 0, baseline - typeface.Ascent());
        });
    });
}

}  // namespace Scripting
