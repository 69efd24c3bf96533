#include "printengine/src/barcode/PDF417Compaction.h"

#include <algorithm>
#include <array>
#include <cstdint>
#include <limits>
#include <string>

namespace Barcode::Encoder {

namespace {

constexpr unsigned TextLatch = 900, BytesLatch = 901, NumericLatch = 902, ByteShift = 913, SixBytesLatch = 924;

// --- States -----------------------------------------------------------------------------------------------------

/// The four sub-modes of text, each with none or one value of a codeword pending; then up to five bytes of a group of
/// six; then up to 43 digits of a group of 44.
using State = std::uint8_t;
constexpr State Alpha = 0, Lower = 2, Mixed = 4, Punctuation = 6, Bytes = 8, Numeric = 14, StateCount = 58;
constexpr std::size_t BytesInGroup = 6, DigitsInGroup = 44;

constexpr bool IsDigit(char c) { return c >= '0' && c <= '9'; }
constexpr bool IsText(State state) { return state < Bytes; }
constexpr bool IsBytes(State state) { return state >= Bytes && state < Numeric; }
constexpr std::size_t SubMode(State state) { return state / 2; }
constexpr unsigned Pending(State state) { return state % 2; }
constexpr State SubModes[] = {Alpha, Lower, Mixed, Punctuation};

/// Two values make a codeword, which is counted with the first of them.
constexpr unsigned CostOfValues(State state, unsigned values) {
    return (Pending(state) + values + 1) / 2 - Pending(state);
}
constexpr State WithValues(State subMode, State from, unsigned values) {
    return static_cast<State>(subMode + (Pending(from) + values) % 2);
}

// --- Values of text ---------------------------------------------------------------------------------------------

/// ISO/IEC 15438, table 5: the characters of each sub-mode by their values; NUL stands for a latch.
constexpr std::string_view Sets[] = {"ABCDEFGHIJKLMNOPQRSTUVWXYZ ",
                                     "abcdefghijklmnopqrstuvwxyz ",
                                     {"0123456789&\r\t,:#-.$/+%*=^\0 ", 27},
                                     ";<>@[\\]_`~!\r\t,:\n-.$/\"|*()?{}'"};
constexpr unsigned AlphaShift = 27, PunctuationShift = 29, TextPad = 29;
constexpr std::int8_t None = -1;

constexpr auto ValuesOfText = [] {
    std::array<std::array<std::int8_t, 256>, 4> values{};
    for (std::size_t set = 0; set < std::size(Sets); ++set) {
        values[set].fill(None);
        for (std::size_t i = 0; i < Sets[set].size(); ++i) {
            if (Sets[set][i] != 0) values[set][static_cast<unsigned char>(Sets[set][i])] = static_cast<std::int8_t>(i);
        }
    }
    return values;
}();

constexpr std::int8_t ValueOf(char c, State subMode) {
    return ValuesOfText[SubMode(subMode)][static_cast<unsigned char>(c)];
}

/// The latches from one sub-mode to another.
constexpr struct {
    unsigned count;
    unsigned values[2];
} Latches[4][4] = {{{0, {}}, {1, {27}}, {1, {28}}, {2, {28, 25}}},
                   {{2, {28, 28}}, {0, {}}, {1, {28}}, {2, {28, 25}}},
                   {{1, {28}}, {1, {27}}, {0, {}}, {1, {25}}},
                   {{1, {29}}, {2, {29, 27}}, {2, {29, 28}}, {0, {}}}};

// --- The shortest way -------------------------------------------------------------------------------------------

enum class Move : std::uint8_t { Take, ShiftAlpha, ShiftPunctuation, ShiftByte, Latch };

/// How the best way to a state came there.
struct Arrival {
    std::uint32_t cost = std::numeric_limits<std::uint32_t>::max() / 2;  ///< codewords so far
    State from = Alpha;
    Move move = Move::Take;
};
using Arrivals = std::array<Arrival, StateCount>;

void Improve(Arrival& arrival, Arrival const& other) {
    if (other.cost < arrival.cost) arrival = other;
}

void LatchText(Arrivals& at) {
    for (State from = Alpha; from < Bytes; ++from) {
        for (State const to : SubModes) {
            unsigned const count = Latches[SubMode(from)][SubMode(to)].count;
            if (count == 0) continue;
            Improve(at[WithValues(to, from, count)], {at[from].cost + CostOfValues(from, count), from, Move::Latch});
        }
    }
}

/// Digits are only left behind one, and only entered before one.
void Latch(Arrivals& at, bool behindDigit, bool beforeDigit) {
    auto const latch = [&](State from, State to) { Improve(at[to], {at[from].cost + 1, from, Move::Latch}); };
    State const last = behindDigit ? StateCount : Numeric;
    for (State from = Bytes; from < last; ++from) latch(from, Alpha);
    LatchText(at);
    for (State from = Alpha; beforeDigit && from < Numeric; ++from) latch(from, Numeric);
    for (State from = Alpha; from < last; ++from) {
        if (!IsBytes(from)) latch(from, Bytes);
    }
}

void TakeAsText(char c, Arrivals const& here, Arrivals& next) {
    auto const take = [&](State from, unsigned values, Move move) {
        auto const subMode = static_cast<State>(from - Pending(from));
        Improve(next[WithValues(subMode, from, values)], {here[from].cost + CostOfValues(from, values), from, move});
    };
    for (State from = Alpha; from < Bytes; ++from) {
        if (ValueOf(c, from) != None) take(from, 1, Move::Take);
        if (ValueOf(c, Alpha) != None && SubMode(from) == SubMode(Lower)) take(from, 2, Move::ShiftAlpha);
        if (ValueOf(c, Punctuation) != None && SubMode(from) != SubMode(Punctuation))
            take(from, 2, Move::ShiftPunctuation);
        // Behind a pad the sub-mode would not be the one before it.
        if (Pending(from) == 0) Improve(next[from], {here[from].cost + 2, from, Move::ShiftByte});
    }
}

/// Six bytes take five codewords, fewer take one each.
void TakeAsByte(Arrivals const& here, Arrivals& next) {
    for (std::size_t k = 0; k < BytesInGroup; ++k) {
        auto const from = static_cast<State>(Bytes + k);
        unsigned const cost = k + 1 < BytesInGroup ? 1 : 0;
        Improve(next[Bytes + (k + 1) % BytesInGroup], {here[from].cost + cost, from, Move::Take});
    }
}

/// n digits of a group take a third of n codewords and one more.
void TakeAsDigit(Arrivals const& here, Arrivals& next) {
    for (std::size_t k = 0; k < DigitsInGroup; ++k) {
        auto const from = static_cast<State>(Numeric + k);
        unsigned const cost = k == 0 || (k + 1) % 3 == 0 ? 1 : 0;
        Improve(next[Numeric + (k + 1) % DigitsInGroup], {here[from].cost + cost, from, Move::Take});
    }
}

struct Step {
    State from;
    State to;
    Move move;
};

std::vector<Step> ShortestWay(std::string_view text, PDF417Start start) {
    std::vector<Arrivals> table(text.size() + 1);
    if (start == PDF417Start::Text) {
        table[0][Alpha].cost = 0;
    } else {
        for (State const state : {Alpha, Bytes, Numeric}) table[0][state].cost = 1;
    }
    for (std::size_t at = 0; at < text.size(); ++at) {
        bool const isDigit = IsDigit(text[at]);
        Latch(table[at], at > 0 && IsDigit(text[at - 1]), isDigit);
        TakeAsText(text[at], table[at], table[at + 1]);
        TakeAsByte(table[at], table[at + 1]);
        if (isDigit) TakeAsDigit(table[at], table[at + 1]);
    }
    auto const best = std::min_element(table.back().begin(), table.back().end(),
                                       [](Arrival const& a, Arrival const& b) { return a.cost < b.cost; });
    auto state = static_cast<State>(best - table.back().begin());
    std::vector<Step> way;
    for (std::size_t at = text.size(); at > 0 || table[at][state].move == Move::Latch;) {
        Arrival const& arrival = table[at][state];
        way.push_back({arrival.from, state, arrival.move});
        if (arrival.move != Move::Latch) --at;
        state = arrival.from;
    }
    // Where the way begins, told as a latch of no codewords.
    way.push_back({state, state, Move::Latch});
    std::reverse(way.begin(), way.end());
    return way;
}

// --- Codewords --------------------------------------------------------------------------------------------------

class Writer {
public:
    Writer(std::string_view text, PDF417Start start) : text_(text), isLatched_(start == PDF417Start::Text) {}

    std::vector<unsigned> Run(std::vector<Step> const& way) {
        for (auto const& [from, to, move] : way) {
            if (move == Move::Latch) {
                SwitchTo(from, to);
            } else {
                Take(text_[at_++], from, move);
            }
        }
        Flush();
        return std::move(out_);
    }

private:
    void SwitchTo(State from, State to) {
        if (IsText(from) && IsText(to) && from != to) {
            auto const& latch = Latches[SubMode(from)][SubMode(to)];
            values_.insert(values_.end(), latch.values, latch.values + latch.count);
            return;
        }
        Flush();
        if (!IsText(to)) {
            isLatched_ = false;
        } else if (from != to || !isLatched_) {
            out_.push_back(TextLatch);
        }
    }

    void Take(char c, State from, Move move) {
        if (IsBytes(from)) {
            bytes_ += c;
        } else if (!IsText(from)) {
            digits_ += c;
        } else if (move == Move::ShiftByte) {
            Flush();
            out_.insert(out_.end(), {ByteShift, static_cast<unsigned char>(c)});
        } else {
            State const set = move == Move::ShiftAlpha ? Alpha : move == Move::ShiftPunctuation ? Punctuation : from;
            if (move == Move::ShiftAlpha) values_.push_back(AlphaShift);
            if (move == Move::ShiftPunctuation) values_.push_back(PunctuationShift);
            values_.push_back(static_cast<unsigned>(ValueOf(c, set)));
        }
    }

    void Flush() {
        FlushText();
        FlushBytes();
        FlushDigits();
    }

    void FlushText() {
        if (values_.size() % 2 != 0) values_.push_back(TextPad);
        for (std::size_t i = 0; i < values_.size(); i += 2) out_.push_back(values_[i] * 30 + values_[i + 1]);
        values_.clear();
    }

    void FlushBytes() {
        if (bytes_.empty()) return;
        out_.push_back(bytes_.size() % BytesInGroup == 0 ? SixBytesLatch : BytesLatch);
        std::size_t at = 0;
        for (; at + BytesInGroup <= bytes_.size(); at += BytesInGroup) {
            // Six bytes as a number of five digits in base 900.
            std::uint64_t value = 0;
            for (char const c : bytes_.substr(at, BytesInGroup)) value = value << 8 | static_cast<unsigned char>(c);
            for (std::uint64_t power = 900ULL * 900 * 900 * 900; power > 0; power /= 900)
                out_.push_back(static_cast<unsigned>(value / power % 900));
        }
        for (char const c : bytes_.substr(at)) out_.push_back(static_cast<unsigned char>(c));
        bytes_.clear();
    }

    void FlushDigits() {
        if (digits_.empty()) return;
        out_.push_back(NumericLatch);
        // The 1 in front keeps the zeros that a group begins with.
        for (std::size_t at = 0; at < digits_.size(); at += DigitsInGroup)
            WriteDigits("1" + digits_.substr(at, DigitsInGroup));
        digits_.clear();
    }

    /// A decimal number in base 900, divided digit by digit.
    void WriteDigits(std::string number) {
        std::vector<unsigned> codewords;
        while (!number.empty()) {
            unsigned rest = 0;
            for (char& digit : number) {
                rest = rest * 10 + static_cast<unsigned>(digit - '0');
                digit = static_cast<char>('0' + rest / 900);
                rest %= 900;
            }
            number.erase(0, number.find_first_not_of('0'));
            codewords.push_back(rest);
        }
        out_.insert(out_.end(), codewords.rbegin(), codewords.rend());
    }

    std::string_view text_;
    bool isLatched_;  ///< to text, as a symbol may be from the start
    std::size_t at_ = 0;
    std::vector<unsigned> out_;
    std::vector<unsigned> values_;  ///< of text, not yet in pairs
    std::string bytes_;
    std::string digits_;
};

}  // namespace

std::vector<unsigned> CompactPDF417(std::string_view text, PDF417Start start) {
    return Writer(text, start).Run(ShortestWay(text, start));
}

std::vector<unsigned> PDF417Corrections(std::vector<unsigned> const& data, unsigned count) {
    // Codewords are numbers modulo a prime of which 3 is a primitive root; the generator has the roots 3^1 to 3^count.
    constexpr unsigned Field = 929;
    std::vector<unsigned> generator{1};  // highest power first
    for (unsigned i = 0, root = 3; i < count; ++i, root = root * 3 % Field) {
        generator.push_back(0);
        for (std::size_t j = generator.size() - 1; j > 0; --j)
            generator[j] = (generator[j] + (Field - root) * generator[j - 1]) % Field;
    }
    std::vector<unsigned> rest(count);
    for (unsigned const codeword : data) {
        unsigned const factor = (codeword + rest[0]) % Field;
        std::copy(rest.begin() + 1, rest.end(), rest.begin());
        rest.back() = 0;
        for (unsigned j = 0; j < count; ++j) rest[j] = (rest[j] + (Field - factor) * generator[j + 1]) % Field;
    }
    for (unsigned& codeword : rest) codeword = (Field - codeword) % Field;
    return rest;
}

}  // namespace Barcode::Encoder
