#include <algorithm>
#include <array>
#include <limits>

#include "printengine/src/barcode/DataMatrixTokens.h"

// The high-level encoding of ISO/IEC 16022: which mode takes each token, and the codewords of that way.
namespace Barcode::Encoder {

namespace {

constexpr std::uint8_t LatchC40 = 230, LatchBase256 = 231, Fnc1Codeword = 232, UpperShift = 235, LatchText = 239,
                       Unlatch = 254;

std::uint8_t Byte(unsigned value) { return static_cast<std::uint8_t>(value); }

// --- Modes ------------------------------------------------------------------------------------------------------

/// C40 and Text pack three values into two codewords; their states tell how many values wait for the others.
enum State : std::uint8_t { Ascii, C40, C40One, C40Two, Text, TextOne, TextTwo, Base256, StateCount };

/// Up to four values of one token.
struct Values {
    std::array<std::uint8_t, 4> values{};
    std::size_t count = 0;

    void Add(unsigned value) { values[count++] = Byte(value); }
};

/// ISO/IEC 16022, table C.1: the basic set, and three sets behind the shifts 0 to 2. Text has the cases exchanged.
Values PackedValues(unsigned value, bool isText) {
    Values result;
    if (value == DataMatrixToken::Fnc1) {
        result.Add(1);
        result.Add(27);
        return result;
    }
    if (value >= 128) {
        result.Add(1);
        result.Add(30);
        value -= 128;
    }
    bool const isUpper = value >= 'A' && value <= 'Z';
    bool const isLower = value >= 'a' && value <= 'z';
    if (isText && (isUpper || isLower)) value ^= 0x20U;
    auto const add = [&](unsigned shift, unsigned inSet) {
        result.Add(shift);
        result.Add(inSet);
    };
    if (value == ' ') {
        result.Add(3);
    } else if (value >= '0' && value <= '9') {
        result.Add(value - '0' + 4);
    } else if (value >= 'A' && value <= 'Z') {
        result.Add(value - 'A' + 14);
    } else if (value < 32) {
        add(0, value);
    } else if (value <= '/') {
        add(1, value - '!');
    } else if (value <= '@') {
        add(1, value - ':' + 15);
    } else if (value <= '_') {
        add(1, value - '[' + 22);
    } else {
        add(2, value - '`');
    }
    return result;
}

/// How the best way to a state came there.
struct Step {
    unsigned cost = std::numeric_limits<unsigned>::max() / 2;  ///< codewords so far
    State from = Ascii;
    std::uint8_t tokens = 0;  ///< taken by the step; 0 is a change of mode
};
using Steps = std::array<Step, StateCount>;

void Improve(Step& step, Step const& other) {
    if (other.cost < step.cost) step = other;
}

void ChangeModes(Steps& steps) {
    for (State const from : {C40, Text}) Improve(steps[Ascii], {steps[from].cost + 1, from, 0});
    Improve(steps[Ascii], {steps[Base256].cost, Base256, 0});
    for (State const to : {C40, Text}) Improve(steps[to], {steps[Ascii].cost + 1, Ascii, 0});
    Improve(steps[Base256], {steps[Ascii].cost + 2, Ascii, 0});
}

bool IsDigitToken(DataMatrixToken const& token) { return token.IsByte() && token.value >= '0' && token.value <= '9'; }

void TakeToken(std::vector<DataMatrixToken> const& tokens, std::size_t at, std::vector<Steps>& table) {
    DataMatrixToken const& token = tokens[at];
    Steps const& here = table[at];
    Steps& next = table[at + 1];
    unsigned const asciiCost = !token.codewords.empty()              ? static_cast<unsigned>(token.codewords.size())
                               : token.IsByte() && token.value > 127 ? 2U
                                                                     : 1U;
    Improve(next[Ascii], {here[Ascii].cost + asciiCost, Ascii, 1});
    if (at + 1 < tokens.size() && IsDigitToken(token) && IsDigitToken(tokens[at + 1]))
        Improve(table[at + 2][Ascii], {here[Ascii].cost + 1, Ascii, 2});
    if (!token.codewords.empty()) return;
    if (token.IsByte()) Improve(next[Base256], {here[Base256].cost + 1, Base256, 1});
    for (State const mode : {C40, Text}) {
        std::size_t const count = PackedValues(token.value, mode == Text).count;
        for (std::size_t waiting = 0; waiting < 3; ++waiting) {
            auto const from = static_cast<State>(mode + waiting);
            std::size_t const values = waiting + count;
            Improve(next[mode + values % 3], {here[from].cost + static_cast<unsigned>(values / 3 * 2), from, 1});
        }
    }
}

/// The state in which each token is taken, and whether it is one with the digit behind it.
struct Way {
    State mode;
    std::uint8_t tokens;
};

std::vector<Way> ShortestWay(std::vector<DataMatrixToken> const& tokens) {
    std::vector<Steps> table(tokens.size() + 1);
    table[0][Ascii].cost = 0;
    for (std::size_t at = 0; at < tokens.size(); ++at) {
        ChangeModes(table[at]);
        TakeToken(tokens, at, table);
    }
    State state = Ascii;
    for (State const end : {C40, Text, Base256}) {
        if (table.back()[end].cost < table.back()[state].cost) state = end;
    }
    std::vector<Way> way;
    for (std::size_t at = tokens.size(); at > 0;) {
        Step const& step = table[at][state];
        if (step.tokens != 0) way.push_back({step.from, step.tokens});
        at -= step.tokens;
        state = step.from;
    }
    std::reverse(way.begin(), way.end());
    return way;
}

State ModeOf(State state) {
    if (state >= C40 && state <= C40Two) return C40;
    return state >= Text && state <= TextTwo ? Text : state;
}

// --- Codewords --------------------------------------------------------------------------------------------------

class Writer {
public:
    explicit Writer(std::vector<DataMatrixToken> const& tokens) : tokens_(tokens) {}

    DataMatrixCodewords Run(std::vector<Way> const& way) {
        for (auto const& [state, count] : way) {
            SwitchTo(ModeOf(state));
            if (mode_ == Ascii) {
                WriteAscii(count);
            } else if (mode_ == Base256) {
                bytes_.push_back(Byte(tokens_[at_].value));
            } else {
                WritePacked();
            }
            at_ += count;
        }
        bool const isPacked = mode_ == C40 || mode_ == Text;
        SwitchTo(Ascii);
        return {std::move(out_), isPacked};
    }

private:
    void SwitchTo(State mode) {
        if (mode == mode_) return;
        if (mode_ == C40 || mode_ == Text) out_.push_back(Unlatch);
        if (mode_ == Base256) WriteBase256();
        mode_ = mode;
        if (mode == C40) out_.push_back(LatchC40);
        if (mode == Text) out_.push_back(LatchText);
        if (mode == Base256) out_.push_back(LatchBase256);
    }

    void WriteAscii(std::size_t count) {
        DataMatrixToken const& token = tokens_[at_];
        if (!token.codewords.empty()) {
            out_.insert(out_.end(), token.codewords.begin(), token.codewords.end());
        } else if (token.value == DataMatrixToken::Fnc1) {
            out_.push_back(Fnc1Codeword);
        } else if (count == 2) {
            out_.push_back(Byte(130 + (token.value - '0') * 10 + (tokens_[at_ + 1].value - '0')));
        } else if (token.value > 127) {
            out_.insert(out_.end(), {UpperShift, Byte(token.value - 127)});
        } else {
            out_.push_back(Byte(token.value + 1));
        }
    }

    void WritePacked() {
        Values const values = PackedValues(tokens_[at_].value, mode_ == Text);
        for (std::size_t i = 0; i < values.count; ++i) {
            triple_ = triple_ * 40 + values.values[i];
            if (++waiting_ < 3) continue;
            out_.insert(out_.end(), {Byte((triple_ + 1) / 256), Byte((triple_ + 1) % 256)});
            triple_ = waiting_ = 0;
        }
    }

    /// The length field and the bytes, randomised by their places (ISO/IEC 16022, B.2).
    void WriteBase256() {
        std::vector<std::uint8_t> field;
        if (bytes_.size() > 249) field.push_back(Byte(static_cast<unsigned>(bytes_.size() / 250 + 249)));
        field.push_back(Byte(static_cast<unsigned>(bytes_.size() > 249 ? bytes_.size() % 250 : bytes_.size())));
        field.insert(field.end(), bytes_.begin(), bytes_.end());
        for (std::uint8_t const byte : field) {
            std::size_t const random = 149 * (out_.size() + 1) % 255 + 1;
            out_.push_back(static_cast<std::uint8_t>(byte + random));
        }
        bytes_.clear();
    }

    std::vector<DataMatrixToken> const& tokens_;
    std::vector<std::uint8_t> out_;
    std::vector<std::uint8_t> bytes_;
    std::size_t at_ = 0;
    State mode_ = Ascii;
    unsigned triple_ = 0;
    unsigned waiting_ = 0;
};

}  // namespace

DataMatrixCodewords EncodeDataMatrixTokens(std::vector<DataMatrixToken> const& tokens) {
    return Writer(tokens).Run(ShortestWay(tokens));
}

}  // namespace Barcode::Encoder
