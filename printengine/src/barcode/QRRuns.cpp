#include "printengine/src/barcode/QRRuns.h"

#include <algorithm>
#include <array>

namespace Barcode::Encoder {

using enum QRMode;

namespace {

constexpr std::size_t ModeCount = 4;
constexpr unsigned ModeBits = 4;
/// Costs are told in parts of a bit: three digits take ten bits, two characters of mode alphanumeric eleven.
constexpr unsigned BitParts = 6;

constexpr std::size_t Index(QRMode mode) { return static_cast<std::size_t>(mode); }

unsigned CountBits(QRMode mode, QRSizes sizes) {
    static constexpr std::uint8_t Bits[ModeCount][3] = {{10, 12, 14}, {9, 11, 13}, {8, 16, 16}, {8, 10, 12}};
    return Bits[Index(mode)][static_cast<std::size_t>(sizes)];
}

bool IsDigit(QRCharacter c) { return c >= '0' && c <= '9'; }
bool IsPair(QRCharacter c) { return c > 0xFF; }
std::size_t BytesOf(QRCharacter c) { return IsPair(c) ? 2 : 1; }

/// ISO/IEC 18004, table 5: the value of a character in mode alphanumeric, or no value of it.
unsigned AlphanumericValue(QRCharacter c) {
    static constexpr auto Values = [] {
        constexpr std::string_view Characters = "0123456789ABCDEFGHIJKLMNOPQRSTUVWXYZ $%*+-./:";
        std::array<std::uint8_t, 256> values{};
        values.fill(0xFF);
        for (std::size_t i = 0; i < Characters.size(); ++i)
            values[static_cast<std::uint8_t>(Characters[i])] = static_cast<std::uint8_t>(i);
        return values;
    }();
    return IsPair(c) ? 0xFF : Values[c];
}
bool IsAlphanumeric(QRCharacter c) { return AlphanumericValue(c) != 0xFF; }

/// What two bytes are reduced by to be packed (ISO/IEC 18004, 7.4.6), 0 if they cannot be.
unsigned KanjiBase(unsigned pair) {
    constexpr unsigned First = 0x8140, LastOfFirst = 0x9FFC, Second = 0xE040, LastOfSecond = 0xEBBF;
    unsigned const trail = pair & 0xFFU;
    if (trail < 0x40 || trail == 0x7F || trail > 0xFC) return 0;
    if (pair >= First && pair <= LastOfFirst) return First;
    return pair >= Second && pair <= LastOfSecond ? 0xC140 : 0;
}

/// What each character costs in each mode. Groups of digits and letters are counted from where a character of their
/// kind is met first, whatever run they become part of: so a cost is that of an average character of its group.
class Costs {
public:
    explicit Costs(std::vector<QRCharacter> const& characters) : characters_(characters) {}

    /// Of the character at `at`, in parts of a bit; 0 in a mode that lacks it. Asked for from the first on.
    std::array<unsigned, ModeCount> At(std::size_t at) {
        QRCharacter const c = characters_[at];
        auto const bytes = static_cast<unsigned>(BytesOf(c));
        return {Digit(at), Alphanumeric(at), bytes * 8 * BitParts, bytes == 2 ? 13 * BitParts : 0};
    }

private:
    unsigned Digit(std::size_t at) {
        constexpr std::size_t MostLookedAt = 4;
        if (at < digitsEnd_) return digitCost_;
        std::size_t const limit = std::min(at + MostLookedAt, characters_.size());
        for (digitsEnd_ = at; digitsEnd_ < limit && IsDigit(characters_[digitsEnd_]);) ++digitsEnd_;
        std::size_t const digits = digitsEnd_ - at;
        return digitCost_ = digits == 0 ? 0 : digits == 1 ? 24 : digits == 2 ? 21 : 20;
    }

    unsigned Alphanumeric(std::size_t at) {
        if (at < pairEnd_) return pairCost_;
        if (!IsAlphanumeric(characters_[at])) return 0;
        bool const isPair = at + 1 < characters_.size() && IsAlphanumeric(characters_[at + 1]);
        pairEnd_ = at + (isPair ? 2 : 1);
        return pairCost_ = isPair ? 33 : 36;
    }

    std::vector<QRCharacter> const& characters_;
    std::size_t digitsEnd_ = 0;
    unsigned digitCost_ = 0;
    std::size_t pairEnd_ = 0;
    unsigned pairCost_ = 0;
};

/// The mode of each character on the cheapest way through the text.
std::vector<QRMode> Modes(std::vector<QRCharacter> const& characters, QRSizes sizes) {
    std::array<unsigned, ModeCount> heads{};
    for (std::size_t mode = 0; mode < ModeCount; ++mode)
        heads[mode] = (ModeBits + CountBits(static_cast<QRMode>(mode), sizes)) * BitParts;
    // What the way up to a character costs that goes on in a mode, and the mode which the character itself is in.
    auto ways = heads;
    std::vector<std::array<QRMode, ModeCount>> modes(characters.size());
    Costs costs(characters);
    for (std::size_t at = 0; at < characters.size(); ++at) {
        auto const cost = costs.At(at);
        for (std::size_t mode = 0; mode < ModeCount; ++mode) ways[mode] += cost[mode];
        std::size_t best = Index(Byte);
        for (std::size_t mode = ModeCount; mode-- > 0;) {
            if (cost[mode] != 0 && ways[mode] <= ways[best]) best = mode;
        }
        for (std::size_t mode = 0; mode < ModeCount; ++mode) {
            bool const changes = cost[mode] == 0 || ways[best] + heads[mode] < ways[mode];
            modes[at][mode] = static_cast<QRMode>(changes ? best : mode);
            if (changes) ways[mode] = ways[best] + heads[mode];
        }
    }
    std::vector<QRMode> result(characters.size());
    auto mode = static_cast<QRMode>(std::min_element(ways.begin(), ways.end()) - ways.begin());
    for (std::size_t at = characters.size(); at-- > 0;) result[at] = mode = modes[at][Index(mode)];
    return result;
}

}  // namespace

std::vector<QRCharacter> QRCharacters(std::string_view text, bool kanji) {
    std::vector<QRCharacter> characters;
    characters.reserve(text.size());
    for (std::size_t i = 0; i < text.size(); ++i) {
        unsigned character = static_cast<std::uint8_t>(text[i]);
        if (kanji && i + 1 < text.size()) {
            unsigned const pair = character << 8 | static_cast<std::uint8_t>(text[i + 1]);
            if (KanjiBase(pair) != 0) character = pair, ++i;
        }
        characters.push_back(static_cast<QRCharacter>(character));
    }
    return characters;
}

std::vector<QRRun> QRRuns(std::vector<QRCharacter> const& characters, QRSizes sizes) {
    auto const modes = Modes(characters, sizes);
    std::vector<QRRun> runs;
    for (std::size_t at = 0; at < modes.size(); ++at) {
        if (runs.empty() || runs.back().mode != modes[at]) runs.push_back({modes[at], at, at});
        runs.back().end = at + 1;
    }
    return runs;
}

void QRBits::Add(unsigned value, unsigned bits) {
    rest_ = rest_ << bits | value;
    for (waiting_ += bits; waiting_ >= 8; waiting_ -= 8)
        codewords_.push_back(static_cast<std::uint8_t>(rest_ >> (waiting_ - 8)));
    rest_ &= (1U << waiting_) - 1;
}

void QRBits::Add(std::vector<QRCharacter> const& characters, QRRun const& run, QRSizes sizes) {
    std::size_t count = run.end - run.begin;
    if (run.mode == Byte) {
        count = 0;
        for (std::size_t i = run.begin; i < run.end; ++i) count += BytesOf(characters[i]);
    }
    Add(1U << Index(run.mode), ModeBits);
    Add(static_cast<unsigned>(count), CountBits(run.mode, sizes));
    std::size_t const group = run.mode == Numeric ? 3 : run.mode == Alphanumeric ? 2 : 1;
    for (std::size_t i = run.begin; i < run.end;) {
        std::size_t const end = std::min(i + group, run.end);
        auto const size = static_cast<unsigned>(end - i);
        QRCharacter const c = characters[i];
        unsigned value = 0;
        switch (run.mode) {
            case Numeric:
                for (; i < end; ++i) value = value * 10 + (characters[i] - unsigned{'0'});
                Add(value, 1 + 3 * size);
                break;
            case Alphanumeric:
                for (; i < end; ++i) value = value * 45 + AlphanumericValue(characters[i]);
                Add(value, 1 + 5 * size);
                break;
            case Byte: Add(c, IsPair(c) ? 16 : 8); break;
            case Kanji:
                value = c - KanjiBase(c);
                Add((value >> 8) * 0xC0 + (value & 0xFF), 13);
                break;
        }
        i = end;
    }
}

std::vector<std::uint8_t> QRBits::Fill(std::size_t capacity) {
    constexpr std::size_t TerminatorBits = 4;
    constexpr std::uint8_t Pads[] = {0xEC, 0x11};
    Add(0, static_cast<unsigned>(std::min(TerminatorBits, capacity * 8 - Size())));
    if (waiting_ != 0) Add(0, 8 - waiting_);
    for (std::size_t i = 0; codewords_.size() < capacity; ++i) codewords_.push_back(Pads[i % 2]);
    return std::move(codewords_);
}

}  // namespace Barcode::Encoder
