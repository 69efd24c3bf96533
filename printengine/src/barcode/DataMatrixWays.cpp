#include "printengine/src/barcode/DataMatrixWays.h"

#include <algorithm>

namespace Barcode::Encoder {

using enum DataMatrixMode;

namespace {

/// Where fewer codewords than these are left of a symbol, the mode ends by itself and ASCII goes on.
constexpr std::size_t PackedGroup = 2, EdifactGroup = 3;
constexpr std::uint16_t LongestShortRun = 249;

unsigned AsciiCost(DataMatrixToken const& token) {
    if (!token.codewords.empty()) return static_cast<unsigned>(token.codewords.size());
    return token.IsByte() && token.value > 127 ? 2U : 1U;
}

}  // namespace

DataMatrixWays::DataMatrixWays(std::vector<DataMatrixToken> const& tokens)
    : tokens_(tokens), table_(tokens.size() + 1) {
    MeasureTail();
    At(0, Ascii).cost = 0;
    for (std::size_t at = 0; at < tokens_.size(); ++at) {
        LeaveModes(at);
        EnterModes(at);
        TakeAsAscii(at);
        TakeAsBytes(at);
        TakeAsValues(at);
    }
    LeaveModes(tokens_.size());
}

/// Only tails shorter than a group matter: four digits at the most.
void DataMatrixWays::MeasureTail() {
    tail_.push_back(0);
    for (std::size_t at = tokens_.size(); at-- > 0 && tail_.back() < EdifactGroup;) {
        std::size_t cost = AsciiCost(tokens_[at]) + tail_.back();
        bool const isPair = tokens_[at].IsDigit() && at + 1 < tokens_.size() && tokens_[at + 1].IsDigit();
        if (isPair) cost = std::min(cost, 1 + tail_[tail_.size() - 2]);
        tail_.push_back(cost);
    }
}

std::size_t DataMatrixWays::TailFrom(std::size_t at) const {
    std::size_t const length = tokens_.size() - at;
    return length < tail_.size() ? tail_[length] : EdifactGroup;
}

namespace {

/// The later way of two that are equally long has more bytes left in its run.
template <typename Arrival>
void Improve(Arrival& arrival, Arrival const& other) {
    if (other.cost < arrival.cost || (other.cost == arrival.cost && other.run < arrival.run)) arrival = other;
}

}  // namespace

void DataMatrixWays::LeaveModes(std::size_t at) {
    auto const leave = [&](DataMatrixMode from, std::size_t cost) {
        Improve(At(at, Ascii), {CostAt(at, from) + static_cast<unsigned>(cost), from, 0});
    };
    for (auto const mode : {C40, Text, X12}) leave(mode, 1);
    for (auto const mode : {Bytes, LongBytes}) leave(mode, 0);
    // An unlatch of EDIFACT fills up its codeword. A group that begins where too little is left would not be read as
    // one.
    std::size_t const tail = TailFrom(at);
    leave(Edifact, std::max<std::size_t>(1, EdifactGroup - std::min(tail, EdifactGroup)));
    leave(EdifactOne, tail == 0 ? EdifactGroup : 2);
    leave(EdifactTwo, EdifactGroup);
    leave(EdifactThree, EdifactGroup);
}

void DataMatrixWays::EnterModes(std::size_t at) {
    unsigned const cost = CostAt(at, Ascii);
    for (auto const mode : {C40, Text, X12, Edifact}) Improve(At(at, mode), {cost + 1, Ascii, 0});
    Improve(At(at, Bytes), {cost + 2, Ascii, 0});
    Improve(At(at, LongBytes), {cost + 3, Ascii, 0});
    Improve(At(at, LastBytes), {cost + 2, Ascii, 0});
}

void DataMatrixWays::TakeAsAscii(std::size_t at) {
    unsigned const cost = CostAt(at, Ascii);
    Improve(At(at + 1, Ascii), {cost + AsciiCost(tokens_[at]), Ascii, 1});
    if (at + 1 < tokens_.size() && tokens_[at].IsDigit() && tokens_[at + 1].IsDigit())
        Improve(At(at + 2, Ascii), {cost + 1, Ascii, 2});
}

void DataMatrixWays::TakeAsBytes(std::size_t at) {
    if (!tokens_[at].IsByte()) return;
    for (auto const mode : {Bytes, LongBytes, LastBytes}) {
        auto const& here = At(at, mode);
        auto const run = static_cast<std::uint16_t>(here.run + 1);
        // A run past its length loses nothing: the way with a long length is then as good as any other.
        if (mode != Bytes || run <= LongestShortRun) Improve(At(at + 1, mode), {here.cost + 1, mode, 1, run});
    }
}

void DataMatrixWays::TakeAsValues(std::size_t at) {
    DataMatrixToken const& token = tokens_[at];
    // At the start an FNC1 tells what kind of data follow, and only a codeword of its own does so.
    constexpr std::size_t Start = 3;
    bool const isMark = token.value == DataMatrixToken::Fnc1 && at < Start;
    if (!token.codewords.empty() || isMark) return;
    Arrivals const& here = table_[at];
    Arrivals& next = table_[at + 1];
    for (auto const mode : {C40, Text, X12, Edifact}) {
        std::size_t const group = mode == Edifact ? 4 : 3;
        std::size_t const count = DataMatrixValueCount(token.value, mode);
        if (count == 0) continue;
        for (std::size_t waiting = 0; waiting < group; ++waiting) {
            auto const from = Filled(mode, waiting);
            unsigned cost = here[Index(from)].cost;
            if (cost >= Unreached) continue;
            std::size_t values = waiting + count;
            for (; values >= group; values -= group) cost += static_cast<unsigned>(group - 1);
            Improve(next[Index(Filled(mode, values))], {cost, from, 1});
        }
    }
}

/// ISO/IEC 16022, 5.2.5 to 5.2.9: what may end a symbol without an unlatch.
std::optional<DataMatrixWays::End> DataMatrixWays::EndFor(std::size_t capacity) const {
    std::size_t const end = tokens_.size();
    DataMatrixMode best = Ascii;
    for (auto const mode : {C40, Text, X12}) {
        if (CostAt(end, mode) < CostAt(end, best)) best = mode;
    }
    if (CostAt(end, best) <= capacity) return End{end, best};
    if (CostAt(end, LastBytes) == capacity) return End{end, LastBytes};
    // The third value of the last group may be lacking.
    for (auto const mode : {C40Two, TextTwo}) {
        if (CostAt(end, mode) + PackedGroup == capacity) return End{end, mode};
    }
    for (std::size_t length = 0; length < std::min(tail_.size(), end + 1); ++length) {
        std::size_t const at = end - length;
        for (auto const mode : {C40, Text, X12, Edifact}) {
            std::size_t const group = mode == Edifact ? EdifactGroup : PackedGroup;
            std::size_t const cost = CostAt(at, mode);
            if (cost + tail_[length] <= capacity && capacity < cost + group) return End{at, mode};
        }
    }
    return std::nullopt;
}

std::optional<std::vector<DataMatrixWays::Step>> DataMatrixWays::Into(std::size_t capacity) const {
    auto const end = EndFor(capacity);
    if (!end) return std::nullopt;
    std::vector<Step> way;
    DataMatrixMode mode = end->mode;
    for (std::size_t at = end->at;;) {
        Arrival const& arrival = table_[at][Index(mode)];
        if (arrival.tokens != 0) way.push_back({arrival.from, arrival.tokens});
        if (at == 0 && mode == Ascii) break;
        at -= arrival.tokens;
        mode = arrival.from;
    }
    std::reverse(way.begin(), way.end());
    for (std::size_t at = end->at; at < tokens_.size();) {
        bool const isPair = at + 1 < tokens_.size() && tokens_[at].IsDigit() && tokens_[at + 1].IsDigit();
        way.push_back({Tail, static_cast<std::uint8_t>(isPair ? 2 : 1)});
        at += way.back().tokens;
    }
    return way;
}

}  // namespace Barcode::Encoder
