#include "printengine/src/barcode/AztecText.h"

#include <algorithm>
#include <array>
#include <cstdint>
#include <limits>
#include <string_view>

namespace Barcode::Encoder {

namespace {

// --- Modes ------------------------------------------------------------------------------------------------------

/// Behind each mode that has a shift to bytes, a long run of them is a mode of its own.
enum Mode : std::uint8_t { Upper, Lower, Mixed, Punctuation, Digit, UpperBytes, LowerBytes, MixedBytes, ModeCount };
constexpr Mode CharacterModes[] = {Upper, Lower, Mixed, Punctuation, Digit};
constexpr Mode ByteShiftModes[] = {Upper, Lower, Mixed};

constexpr bool IsBytes(Mode mode) { return mode >= UpperBytes; }
constexpr Mode BytesOf(Mode mode) { return static_cast<Mode>(UpperBytes + mode); }
constexpr unsigned WidthOf(Mode mode) { return mode == Digit ? 4 : 5; }

/// ISO/IEC 24778, table 2: single characters by mode and value, from `first` on.
constexpr struct {
    Mode mode;
    int first;
    std::string_view characters;
} Rows[] = {
    {Upper, 1, " ABCDEFGHIJKLMNOPQRSTUVWXYZ"},
    {Lower, 1, " abcdefghijklmnopqrstuvwxyz"},
    {Mixed, 1, " \1\2\3\4\5\6\7\10\11\12\13\14\15\33\34\35\36\37@\\^_`|~\177"},
    {Punctuation, 1, "\r"},
    {Punctuation, 6, "!\"#$%&'()*+,-./:;<=>?[]{}"},
    {Digit, 1, " 0123456789,."},
};
/// Pairs of characters in Punctuation.
constexpr unsigned FirstPair = 2;
constexpr std::string_view Pairs[] = {"\r\n", ". ", ", ", ": "};

constexpr unsigned PunctuationShift = 0, ByteShift = 31, Flag = 0;
constexpr int None = -1;

constexpr auto Values = [] {
    std::array<std::array<std::int8_t, 256>, std::size(CharacterModes)> values{};
    for (auto& mode : values) mode.fill(None);
    for (auto const& row : Rows) {
        for (std::size_t i = 0; i < row.characters.size(); ++i)
            values[row.mode][static_cast<unsigned char>(row.characters[i])] =
                static_cast<std::int8_t>(row.first + static_cast<int>(i));
    }
    return values;
}();

constexpr struct {
    Mode from;
    Mode to;
    unsigned value;
} Latches[] = {{Digit, Upper, 14}, {Punctuation, Upper, 31}, {Mixed, Upper, 29}, {Mixed, Lower, 28},
               {Upper, Lower, 28}, {Upper, Mixed, 29},       {Upper, Digit, 30}, {Lower, Mixed, 29},
               {Lower, Digit, 30}, {Mixed, Punctuation, 30}};

constexpr unsigned UpperShiftOf(Mode mode) { return mode == Lower ? 28 : 15; }

/// The value in `mode` of what `text` begins with, and how many characters that is; None if the mode lacks it.
struct Character {
    int value;
    std::uint16_t length;
};
Character SingleIn(Mode mode, std::string_view text) { return {Values[mode][static_cast<unsigned char>(text[0])], 1}; }
Character PairAt(std::string_view text) {
    auto const* const pair = std::find(std::begin(Pairs), std::end(Pairs), text.substr(0, 2));
    return {pair == std::end(Pairs) ? None : static_cast<int>(FirstPair + (pair - std::begin(Pairs))), 2};
}

// A length of five bits counts to 31; 0 in it announces eleven more, which count on from there.
constexpr std::size_t ShortRun = 31, LongRun = 2078;  // bytes
constexpr unsigned ShortLength = 5, LongLength = 11;  // bits

// --- The shortest way -------------------------------------------------------------------------------------------

/// A step from a mode to another: without characters a latch, from a mode to itself in the other ways.
struct Step {
    enum Kind : std::uint8_t { Latch, Plain, Shifted, ShortBytes, LongByte };

    Mode from = Upper;
    Mode to = Upper;
    Kind kind = Latch;
    std::uint8_t value = 0;    ///< in the mode, or behind the shift
    Mode shift = Punctuation;  ///< to which mode
    std::uint16_t length = 0;  ///< characters
};

/// How the best way to a mode came there.
struct Arrival {
    std::uint32_t cost = std::numeric_limits<std::uint32_t>::max() / 2;  ///< bits so far
    std::uint32_t run = 0;                                               ///< bytes of a long run
    Step step;
};
using Arrivals = std::array<Arrival, ModeCount>;

class Search {
public:
    Search(std::string_view text, Mode start) : text_(text), table_(text.size() + 1) {
        table_[0][start].cost = 0;
        for (std::size_t at = 0; at <= text_.size(); ++at) {
            ChangeModes(table_[at]);
            if (at == text_.size()) break;
            TakeCharacters(at);
            TakeBytes(at);
        }
    }

    std::vector<Step> Way() const {
        auto const& last = table_.back();
        auto const* best = &last[Upper];
        for (Mode const mode : CharacterModes) {
            if (last[mode].cost < best->cost) best = &last[mode];
        }
        std::vector<Step> way;
        auto mode = static_cast<Mode>(best - last.data());
        // Backwards; only the start has cost nothing.
        for (std::size_t at = text_.size(); table_[at][mode].cost != 0;) {
            way.push_back(table_[at][mode].step);
            at -= way.back().length;
            mode = way.back().from;
        }
        std::reverse(way.begin(), way.end());
        return way;
    }

private:
    void Improve(Arrivals& at, std::uint32_t cost, Step const& step, std::uint32_t run = 0) {
        if (cost < at[step.to].cost) at[step.to] = {cost, run, step};
    }

    /// Long runs of bytes end before the latches and begin behind them, so that none of no bytes comes about.
    void ChangeModes(Arrivals& at) {
        for (Mode const mode : ByteShiftModes)
            Improve(at, at[BytesOf(mode)].cost, {BytesOf(mode), mode, Step::Latch, 0, {}, 0});
        // Three latches lead from any mode to any other.
        for (int round = 0; round < 3; ++round) {
            for (auto const& [from, to, value] : Latches)
                Improve(at, at[from].cost + WidthOf(from),
                        {from, to, Step::Latch, static_cast<std::uint8_t>(value), {}, 0});
        }
        for (Mode const mode : ByteShiftModes)
            Improve(at, at[mode].cost + WidthOf(mode) + ShortLength + LongLength,
                    {mode, BytesOf(mode), Step::Latch, 0, {}, 0});
    }

    void Take(std::size_t at, Mode mode, Mode in, Character character) {
        if (character.value == None) return;
        auto const kind = mode == in ? Step::Plain : Step::Shifted;
        unsigned const width = mode == in ? WidthOf(in) : WidthOf(mode) + WidthOf(in);
        Improve(table_[at + character.length], table_[at][mode].cost + width,
                {mode, mode, kind, static_cast<std::uint8_t>(character.value), in, character.length});
    }

    void TakeCharacters(std::size_t at) {
        std::string_view const rest = text_.substr(at);
        auto const pair = PairAt(rest);
        for (Mode const mode : CharacterModes) {
            Take(at, mode, mode, SingleIn(mode, rest));
            Take(at, mode, Punctuation, pair);
            if (mode != Punctuation) Take(at, mode, Punctuation, SingleIn(Punctuation, rest));
            if (mode == Lower || mode == Digit) Take(at, mode, Upper, SingleIn(Upper, rest));
        }
    }

    void TakeBytes(std::size_t at) {
        constexpr unsigned Bits = 8;
        std::size_t const longest = std::min(ShortRun, text_.size() - at);
        for (Mode const mode : ByteShiftModes) {
            std::uint32_t const cost = table_[at][mode].cost + WidthOf(mode) + ShortLength;
            for (std::size_t n = 1; n <= longest; ++n)
                Improve(table_[at + n], cost + Bits * static_cast<std::uint32_t>(n),
                        {mode, mode, Step::ShortBytes, 0, {}, static_cast<std::uint16_t>(n)});
            auto const& here = table_[at][BytesOf(mode)];
            if (here.run < LongRun)
                Improve(table_[at + 1], here.cost + Bits, {BytesOf(mode), BytesOf(mode), Step::LongByte, 0, {}, 1},
                        here.run + 1);
        }
    }

    std::string_view text_;
    std::vector<Arrivals> table_;
};

// --- Bits -------------------------------------------------------------------------------------------------------

class Writer {
public:
    void Append(unsigned value, unsigned width) {
        for (unsigned i = width; i-- > 0;) bits_.push_back((value >> i & 1) != 0);
    }

    /// From Upper to Mixed and back, as no text begins.
    void MarkAppended() {
        constexpr unsigned Latch = 29;
        Append(Latch, WidthOf(Upper));
        Append(Latch, WidthOf(Mixed));
    }

    void SwitchChannel(unsigned channel) {
        std::string const digits = std::to_string(channel);
        if (mode_ != Punctuation) Append(PunctuationShift, WidthOf(mode_));
        Append(Flag, WidthOf(Punctuation));
        constexpr unsigned CountBits = 3;
        Append(static_cast<unsigned>(digits.size()), CountBits);
        for (char const digit : digits)
            Append(static_cast<unsigned>(Values[Digit][static_cast<unsigned char>(digit)]), WidthOf(Digit));
    }

    void AppendText(std::string_view text) {
        auto const way = Search(text, mode_).Way();
        for (auto step = way.begin(); step != way.end(); ++step) {
            if (step->kind == Step::Latch && IsBytes(step->to)) {
                auto const end =
                    std::find_if(step, way.end(), [](Step const& s) { return IsBytes(s.from) && !IsBytes(s.to); });
                AppendBytes(text.substr(0, static_cast<std::size_t>(end - step) - 1));
                text.remove_prefix(static_cast<std::size_t>(end - step) - 1);
                step = end;
                continue;
            }
            AppendStep(*step, text);
            text.remove_prefix(step->length);
        }
    }

    AztecBits Take() { return {std::move(bits_), mode_ <= Mixed}; }

private:
    void AppendStep(Step const& step, std::string_view text) {
        switch (step.kind) {
            case Step::Shifted:
                Append(step.shift == Punctuation ? PunctuationShift : UpperShiftOf(step.from), WidthOf(step.from));
                Append(step.value, WidthOf(step.shift));
                break;
            case Step::ShortBytes: AppendBytes(text.substr(0, step.length)); break;
            default: Append(step.value, WidthOf(step.from));
        }
        mode_ = step.to;
    }

    void AppendBytes(std::string_view bytes) {
        auto const length = static_cast<unsigned>(bytes.size());
        Append(ByteShift, WidthOf(Upper));
        Append(length <= ShortRun ? length : 0, ShortLength);
        if (length > ShortRun) Append(length - ShortRun, LongLength);
        for (char const c : bytes) Append(static_cast<unsigned char>(c), 8);
    }

    std::vector<bool> bits_;
    Mode mode_ = Upper;
};

}  // namespace

AztecBits EncodeAztecText(std::vector<AztecSegment> const& segments, bool isAppended) {
    Writer writer;
    if (isAppended) writer.MarkAppended();
    unsigned channel = 0;
    for (auto const& segment : segments) {
        if (segment.channel != channel) writer.SwitchChannel(segment.channel);
        channel = segment.channel;
        writer.AppendText(segment.text);
    }
    return writer.Take();
}

}  // namespace Barcode::Encoder
