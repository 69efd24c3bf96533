#include "printengine/src/scripts/CharacterKinds.h"

#include <algorithm>
#include <iterator>

#include "printengine/src/scripts/CharacterTable.h"
#include "printengine/src/text/Utf8.h"

namespace PrintEngine::Scripts {

namespace {

static_assert(std::is_sorted(std::begin(CharacterTable), std::end(CharacterTable),
                             [](auto const& a, auto const& b) { return a.last < b.first; }));

}  // namespace

CharacterTraits LookUp(char32_t character) {
    auto const* const range = std::lower_bound(std::begin(CharacterTable), std::end(CharacterTable), character,
                                               [](CharacterRange const& r, char32_t c) { return r.last < c; });
    if (range == std::end(CharacterTable) || range->first > character) return {};
    return {range->kind, range->script};
}

bool NeedsLayout(std::string_view text) {
    // Bytes below this one make up characters before the first combining mark.
    constexpr unsigned char FirstLead = 0xCC;
    auto const isAbove = [](char c) { return static_cast<unsigned char>(c) >= FirstLead; };
    auto const first = std::find_if(text.begin(), text.end(), isAbove);
    text.remove_prefix(static_cast<std::size_t>(first - text.begin()));
    while (!text.empty()) {
        if (IsSetWithOthers(Text::TakeCharacter(text))) return true;
    }
    return false;
}

}  // namespace PrintEngine::Scripts
