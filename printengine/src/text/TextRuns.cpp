#include "printengine/src/text/TextRuns.h"

#include <algorithm>

#include "printengine/src/scripts/Modules.h"

namespace PrintEngine::Text {

namespace {

using Scripts::CharacterKind;
using Scripts::CharacterTraits;
using Kind = TextRun::Kind;

bool IsGreek(CharacterKind kind) { return kind == CharacterKind::PlainGreek || kind == CharacterKind::AccentedGreek; }

/// The run that a character begins.
TextRun Begin(CharacterTraits const& traits, std::uint32_t at, std::uint8_t level) {
    Kind const kind = traits.kind == CharacterKind::Shaped ? Kind::Shaped
                      : IsGreek(traits.kind)               ? Kind::Word
                                                           : Kind::Plain;
    return {at, at + 1, kind, traits.script, level};
}

/// Whether a character belongs to the run under way.
bool GoesOn(TextRun const& run, CharacterTraits const& traits, std::uint8_t level) {
    bool const isMark = traits.kind == CharacterKind::Mark;
    if (run.kind == Kind::Shaped && (isMark || Scripts::IsInvisibleKind(traits.kind))) return true;
    if (run.level != level) return false;
    switch (run.kind) {
        case Kind::Plain: return traits.kind == CharacterKind::Plain || traits.kind == CharacterKind::Ideographic;
        case Kind::Word: return IsGreek(traits.kind);
        case Kind::Shaped: return traits.kind == CharacterKind::Shaped && traits.script == run.script;
    }
    return false;
}

/// Takes the last character off the run before a mark, and makes the two a run of their own.
void BeginWithBase(std::vector<TextRun>& runs, std::uint32_t at, std::uint8_t level) {
    TextRun marked{at, at + 1, Kind::Shaped, Scripts::Script::None, level};
    if (!runs.empty() && runs.back().end == at && runs.back().kind != Kind::Shaped) {
        marked.begin = at - 1;
        marked.level = runs.back().level;
        if (--runs.back().end == runs.back().begin) runs.pop_back();
    }
    runs.push_back(marked);
}

/// Whether a text holds Arabic as shapes of letters alone, in the order in which they are drawn: who sends that has
/// done himself what other printers do not.
bool IsSetBySender(std::u32string_view text) {
    auto const isShape = [](char32_t c) { return (c >= 0xFB50 && c <= 0xFBFF) || (c >= 0xFE80 && c <= 0xFEFC); };
    auto const isLetter = [](char32_t c) { return (c >= 0x620 && c <= 0x64A) || (c >= 0x66E && c <= 0x6D3); };
    return std::any_of(text.begin(), text.end(), isShape) && std::none_of(text.begin(), text.end(), isLetter);
}

}  // namespace

TextLevels FindLevels(std::u32string& text, ParagraphDirection direction) {
    if (direction != ParagraphDirection::RightToLeft && std::none_of(text.begin(), text.end(), Scripts::MayTurn))
        return {};
    auto const* const module = Scripts::ScriptsModule();
    if (!module || text.empty() || IsSetBySender(text)) return {};
    TextLevels found;
    found.levels.resize(text.size());
    std::u32string mirrored = text;
    int const base = module->order(mirrored.data(), static_cast<std::uint32_t>(mirrored.size()),
                                   static_cast<int>(direction), found.levels.data());
    if (base < 0) return {};
    text = std::move(mirrored);
    found.isRightToLeft = base == 1;
    return found;
}

std::vector<TextRun> FindRuns(std::u32string const& text, std::vector<std::uint8_t> const& levels) {
    std::vector<TextRun> runs;
    bool isOpen = false;  // the last run goes on
    for (std::uint32_t i = 0; i < text.size(); ++i) {
        CharacterTraits const traits = Scripts::TraitsOf(text[i]);
        if (isOpen && GoesOn(runs.back(), traits, levels[i])) {
            runs.back().end = i + 1;
        } else if (Scripts::IsInvisibleKind(traits.kind)) {
            isOpen = false;
        } else if (traits.kind == CharacterKind::Mark) {
            BeginWithBase(runs, i, levels[i]);
            isOpen = true;
        } else {
            runs.push_back(Begin(traits, i, levels[i]));
            isOpen = true;
        }
    }
    return runs;
}

void OrderRuns(std::vector<TextRun>& runs) {
    std::uint8_t highest = 0;
    for (auto const& run : runs) highest = std::max(highest, run.level);
    for (std::uint8_t level = highest; level > 0; --level) {
        auto const isBelow = [level](TextRun const& run) { return run.level < level; };
        for (auto at = runs.begin(); at != runs.end();) {
            auto const first = std::find_if_not(at, runs.end(), isBelow);
            auto const last = std::find_if(first, runs.end(), isBelow);
            std::reverse(first, last);
            at = last;
        }
    }
}

}  // namespace PrintEngine::Text
