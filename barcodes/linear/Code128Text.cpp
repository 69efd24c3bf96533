#include "barcodes/linear/Code128Text.h"

#include <algorithm>
#include <iterator>

#include "Barcode/Algorithm/MODX.h"
#include "frontend/stream/Ascii.h"

namespace ZplCore::Code128 {

namespace {

using Barcode::Algorithm::MODX::GenerateUPCCheckDigit;

enum class Subset { A = 1, B = 2, C = 3 };

bool IsPrint(char c) { return c >= ' ' && c <= '~'; }
bool IsAsciiControl(char c) { return static_cast<unsigned char>(c) < ' ' || c == 0x7F; }

/// A group of digits with an even count: the last one is dropped, or the check digit added.
std::string UCCCheckDigit(std::string group, bool ucc) {
    if (group.size() % 2 == 0) return group;
    if (ucc) {
        group += GenerateUPCCheckDigit(group);
    } else {
        group.pop_back();
    }
    return group;
}

std::string SubsetCTransform(std::string_view run, bool ucc) {
    std::string result;
    std::string group;
    for (char const c : run) {
        if (IsAsciiDigit(c)) {
            group += c;
            continue;
        }
        result += UCCCheckDigit(std::move(group), ucc);
        group.clear();
    }
    return result += UCCCheckDigit(std::move(group), ucc);
}

/// Characters of subset A are sent as pairs of digits, the values of the symbology; anything else as itself.
std::string SubsetATransform(std::string_view run) {
    constexpr int FirstControlValue = 64;
    constexpr int LastValue = 95;
    std::string result;
    for (std::size_t i = 0; i < run.size(); ++i) {
        bool const isPair = IsAsciiDigit(run[i]) && i + 1 < run.size() && IsAsciiDigit(run[i + 1]);
        if (!isPair) {
            if (IsAscii(run[i])) result += run[i];
            continue;
        }
        int const value = (run[i] - '0') * 10 + (run[i + 1] - '0');
        if (value > LastValue) {
            result += run.substr(i, 2);
        } else {
            result += static_cast<char>(value < FirstControlValue ? value + ' ' : value - FirstControlValue);
        }
        ++i;
    }
    return result;
}

std::string SubsetBTransform(std::string_view run) {
    std::string result;
    std::copy_if(run.begin(), run.end(), std::back_inserter(result), [](char c) { return IsPrint(c) && c != '~'; });
    return result;
}

std::string SubsetTransform(std::string_view run, Subset subset, bool ucc, bool atStart) {
    std::string result;
    // Also a run of which nothing is left decides the start.
    if (!run.empty() && atStart) result += static_cast<char>(StartB);
    switch (subset) {
        case Subset::A: return result += SubsetATransform(run);
        case Subset::B: return result += SubsetBTransform(run);
        case Subset::C: break;
    }
    return result += SubsetCTransform(run, ucc);
}

enum class AllowedIn { AorB, All, StartOfAorB };

struct Invocation {
    char letter;
    AllowedIn allowed;
    unsigned char inA;  ///< what it stands for in subset A
    unsigned char inB;  ///< and in any other
    Subset next;        ///< meaningful if it switches
    bool switches;
};

/// What a `>` and one of these stand for: a character that has no other way in, a function, or a switch of the subset.
constexpr Invocation Invocations[] = {
    {'0', AllowedIn::AorB, '>', '>', {}, false},
    {'1', AllowedIn::AorB, 31, 127, {}, false},
    {'2', AllowedIn::AorB, Fnc3, Fnc3, {}, false},
    {'3', AllowedIn::AorB, Fnc2, Fnc2, {}, false},
    {'4', AllowedIn::AorB, Shift, Shift, {}, false},
    {'5', AllowedIn::AorB, CodeC, CodeC, Subset::C, true},
    {'6', AllowedIn::All, CodeB, CodeB, Subset::B, true},
    {'7', AllowedIn::All, CodeA, CodeA, Subset::A, true},
    {'8', AllowedIn::All, Fnc1, Fnc1, {}, false},
    {'9', AllowedIn::StartOfAorB, StartA, StartA, Subset::A, true},
    {':', AllowedIn::StartOfAorB, StartB, StartB, Subset::B, true},
    {';', AllowedIn::StartOfAorB, StartC, StartC, Subset::C, true},
    {'<', AllowedIn::AorB, '^', '^', {}, false},
    {'=', AllowedIn::AorB, '~', '~', {}, false},
};

/// The invocation of a letter, or null if it is none or does not count here.
Invocation const* FindInvocation(char letter, Subset subset, bool atStart) {
    auto const found = std::find_if(std::begin(Invocations), std::end(Invocations),
                                    [letter](Invocation const& row) { return row.letter == letter; });
    if (found == std::end(Invocations)) return nullptr;
    bool const counts =
        found->allowed == AllowedIn::All || (subset != Subset::C && (found->allowed == AllowedIn::AorB || atStart));
    return counts ? &*found : nullptr;
}

/// The first 19 digits.
std::string ContainerDigits(std::string_view data) {
    constexpr std::size_t Length = 19;
    std::string digits;
    for (char const c : data) {
        if (IsAsciiDigit(c) && digits.size() < Length) digits += c;
    }
    return digits;
}

}  // namespace

std::string ModeN::ConvertZplInvocations(std::string_view text, bool ucc) {
    std::string result;
    Subset subset = Subset::B;
    for (;;) {
        auto const escape = text.find('>');
        // A lone mark at the end invokes nothing.
        if (escape == std::string_view::npos || escape + 1 == text.size()) break;
        result += SubsetTransform(text.substr(0, escape), subset, ucc, result.empty());
        if (auto const* invocation = FindInvocation(text[escape + 1], subset, result.empty())) {
            result += static_cast<char>(subset == Subset::A ? invocation->inA : invocation->inB);
            if (invocation->switches) subset = invocation->next;
        }
        text.remove_prefix(escape + 2);
    }
    return result += SubsetTransform(text, subset, ucc, result.empty());
}

std::string ModeNEncoderInputTransform(std::string const& data, bool ucc) {
    return ModeN::ConvertZplInvocations(data, ucc);
}

std::string ModeNTransformHRText(std::string const& data, bool ucc) {
    std::string line = ModeN::ConvertZplInvocations(data, ucc);
    std::erase_if(line, [](char c) { return !IsPrint(c); });
    return line;
}

namespace {

std::string WithoutEscapes(std::string const& data) {
    std::string text;
    for (std::size_t i = 0; i < data.size(); ++i) {
        if (data[i] == '\\' && (i == 0 || data[i - 1] != '\\')) continue;
        text += data[i];
    }
    return text;
}

}  // namespace

std::string ModeAEncoderInputTransform(std::string const& data) {
    std::string text = WithoutEscapes(data);
    std::erase_if(text, [](char c) { return static_cast<unsigned char>(c) > 127; });
    return text;
}

std::string ModeAHRTextTransform(std::string const& data) {
    std::string line = WithoutEscapes(data);
    std::erase_if(line, IsAsciiControl);
    return line;
}

Barcode::Encoder::ValidationStatus ModeUValidation(std::string_view data) {
    using Barcode::Encoder::ValidationStatus;
    constexpr std::size_t Length = 19;
    if (!std::all_of(data.begin(), data.end(), IsAsciiDigit)) return ValidationStatus::InvalidCharacter;
    if (data.size() == Length) return ValidationStatus::Valid;
    return data.size() < Length ? ValidationStatus::TooShort : ValidationStatus::TooLong;
}

std::string ModeUEncoderInputTransformWithPadding(std::string_view data) {
    constexpr std::size_t Length = 19;
    std::string digits = ContainerDigits(data);
    digits.insert(0, Length - digits.size(), '0');
    return digits += GenerateUPCCheckDigit(digits);
}

std::string ModeUEncoderInputTransformWithoutPadding(std::string_view data) {
    std::string digits = ContainerDigits(data);
    return digits += GenerateUPCCheckDigit(digits);
}

std::string ModeUTransformHRText(std::string_view data, bool isPadded) {
    return isPadded ? ModeUEncoderInputTransformWithPadding(data) : ModeUEncoderInputTransformWithoutPadding(data);
}

}  // namespace ZplCore::Code128
