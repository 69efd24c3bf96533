#include "printengine/src/barcode/Code128Characters.h"

#include <algorithm>
#include <array>
#include <iterator>
#include <limits>
#include <string>

#include "Barcode/Encoder/Code128Utils.h"

namespace Barcode::Encoder {

using Subset = Code128Subset;

namespace {

constexpr int ShiftValue = 98;
/// In the order of preference where symbols would be equally long.
constexpr std::array AllSubsets{Subset::B, Subset::A, Subset::C};

constexpr int StartValue(Subset subset) { return 103 + static_cast<int>(subset); }

/// The character that switches to a subset; it is the same in both other subsets.
constexpr int SwitchValue(Subset subset) { return 101 - static_cast<int>(subset); }

constexpr bool IsDigit(unsigned char byte) { return byte >= '0' && byte <= '9'; }

constexpr Subset Shifted(Subset subset) { return subset == Subset::A ? Subset::B : Subset::A; }

/// The value of one byte in a subset, -1 if the subset lacks it. Digits of subset C come in pairs and are not told
/// here.
int ValueOf(unsigned char byte, Subset subset) {
    if (byte == Code128Control::Fnc1) return 102;
    if (subset == Subset::C) return -1;
    if (byte == Code128Control::Fnc2) return 97;
    if (byte == Code128Control::Fnc3) return 96;
    return Code128Utils::CharToSCV(byte, static_cast<Code128Utils::ControlCharacter>(subset));
}

/// Where the manual encoder stands.
struct ManualState {
    std::vector<int> characters;
    Subset subset = Subset::B;
    bool isShifted = false;

    void SwitchTo(Subset next) {
        if (next != subset) characters.push_back(SwitchValue(next));
        subset = next;
        isShifted = false;
    }
};

/// The start character of a text; takes off the control byte that asks for it.
Subset TakeStart(std::string_view& text) {
    auto const first = static_cast<unsigned char>(text.front());
    bool const asks =
        first == Code128Control::CodeC || (first >= Code128Control::StartA && first <= Code128Control::StartC);
    if (asks) text.remove_prefix(1);
    if (first == Code128Control::StartA) return Subset::A;
    return first == Code128Control::CodeC || first == Code128Control::StartC ? Subset::C : Subset::B;
}

/// Takes one control byte, character or pair of digits off the text.
void TakeManual(std::string_view& text, ManualState& state) {
    auto const byte = static_cast<unsigned char>(text.front());
    text.remove_prefix(1);
    switch (byte) {
        case Code128Control::CodeA: return state.SwitchTo(Subset::A);
        case Code128Control::CodeB: return state.SwitchTo(Subset::B);
        case Code128Control::CodeC: return state.SwitchTo(Subset::C);
        case Code128Control::Shift: state.isShifted = state.subset != Subset::C; return;
        default: break;
    }
    if (state.subset == Subset::C && IsDigit(byte)) {
        if (text.empty() || !IsDigit(static_cast<unsigned char>(text.front()))) return;
        state.characters.push_back((byte - '0') * 10 + (text.front() - '0'));
        text.remove_prefix(1);
        return;
    }
    int const value = ValueOf(byte, state.isShifted ? Shifted(state.subset) : state.subset);
    if (value >= 0 && state.isShifted) state.characters.push_back(ShiftValue);
    if (value >= 0) state.characters.push_back(value);
    state.isShifted = false;
}

/// How the rest of a text is encoded best from one place in one subset.
struct Choice {
    int length = std::numeric_limits<int>::max() / 2;  ///< symbol characters
    enum { End, Plain, Pair, Shift, Switch } kind = End;
    Subset next = Subset::A;  ///< of a switch
};

using Choices = std::array<Choice, 3>;

void Improve(Choice& choice, Choice const& other) {
    if (other.length < choice.length) choice = other;
}

/// The best ways from `at`, when those from the following places are known.
void FillChoices(std::string_view text, std::size_t at, std::vector<Choices>& choices) {
    auto const byte = static_cast<unsigned char>(text[at]);
    auto const after = [&](std::size_t step, Subset subset) {
        return choices[at + step][static_cast<std::size_t>(subset)].length;
    };
    bool const isPair = at + 1 < text.size() && IsDigit(byte) && IsDigit(static_cast<unsigned char>(text[at + 1]));
    for (Subset const subset : AllSubsets) {
        Choice& choice = choices[at][static_cast<std::size_t>(subset)];
        if (ValueOf(byte, subset) >= 0) Improve(choice, {1 + after(1, subset), Choice::Plain, subset});
        if (subset == Subset::C) {
            if (isPair) Improve(choice, {1 + after(2, subset), Choice::Pair, subset});
        } else if (ValueOf(byte, Shifted(subset)) >= 0) {
            Improve(choice, {2 + after(1, subset), Choice::Shift, subset});
        }
    }
    // From what is best without a switch: two in a row never pay.
    Choices const unswitched = choices[at];
    for (Subset const subset : AllSubsets) {
        for (Subset const next : AllSubsets) {
            Improve(choices[at][static_cast<std::size_t>(subset)],
                    {1 + unswitched[static_cast<std::size_t>(next)].length, Choice::Switch, next});
        }
    }
}

/// Follows the best choices from `at` to the end.
void Follow(std::string_view text, std::vector<Choices> const& choices, std::size_t at, Subset subset,
            std::vector<int>& characters) {
    while (at < text.size()) {
        auto const byte = static_cast<unsigned char>(text[at]);
        Choice const& choice = choices[at][static_cast<std::size_t>(subset)];
        switch (choice.kind) {
            case Choice::Plain: characters.push_back(ValueOf(byte, subset)); break;
            case Choice::Pair: characters.push_back((byte - '0') * 10 + (text[++at] - '0')); break;
            case Choice::Shift:
                characters.insert(characters.end(), {ShiftValue, ValueOf(byte, Shifted(subset))});
                break;
            case Choice::Switch:
                characters.push_back(SwitchValue(choice.next));
                subset = choice.next;
                continue;
            case Choice::End: return;
        }
        ++at;
    }
}

std::string Encodable(std::string_view text) {
    std::string result;
    std::copy_if(text.begin(), text.end(), std::back_inserter(result), [](char c) {
        auto const byte = static_cast<unsigned char>(c);
        return ValueOf(byte, Subset::A) >= 0 || ValueOf(byte, Subset::B) >= 0;
    });
    return result;
}

}  // namespace

std::vector<int> ManualCode128Characters(std::string_view text) {
    if (text.empty()) return {};
    ManualState state;
    state.subset = TakeStart(text);
    state.characters.push_back(StartValue(state.subset));
    while (!text.empty()) TakeManual(text, state);
    if (state.characters.size() == 1) return {};
    return state.characters;
}

std::vector<int> ShortestCode128Characters(std::string_view text, bool startsWithFnc1) {
    std::string data = Encodable(text);
    if (data.empty()) return {};
    if (startsWithFnc1 && static_cast<unsigned char>(data.front()) != Code128Control::Fnc1)
        data.insert(data.begin(), static_cast<char>(Code128Control::Fnc1));

    std::vector<Choices> choices(data.size() + 1);
    for (Choice& end : choices.back()) end.length = 0;
    for (std::size_t at = data.size(); at-- > 0;) FillChoices(data, at, choices);

    auto const lengthFrom = [&](Subset subset) { return choices[0][static_cast<std::size_t>(subset)].length; };
    Subset const start =
        startsWithFnc1 ? Subset::C : *std::min_element(AllSubsets.begin(), AllSubsets.end(), [&](Subset a, Subset b) {
            return lengthFrom(a) < lengthFrom(b);
        });
    std::vector<int> characters{StartValue(start)};
    Follow(data, choices, 0, start, characters);
    return characters;
}

}  // namespace Barcode::Encoder
