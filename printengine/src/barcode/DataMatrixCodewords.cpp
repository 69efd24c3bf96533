#include "printengine/src/barcode/DataMatrixCodewords.h"

namespace Barcode::Encoder {

using enum DataMatrixMode;

namespace {

constexpr std::uint8_t Fnc1Codeword = 232, UpperShift = 235, Unlatch = 254;
constexpr unsigned EdifactUnlatch = 31;
/// Fewer codewords than these hold no group of EDIFACT: the mode ends by itself.
constexpr std::size_t EdifactGroup = 3;

std::uint8_t Byte(std::size_t value) { return static_cast<std::uint8_t>(value); }

std::uint8_t LatchOf(DataMatrixMode mode) {
    switch (mode) {
        case C40: return 230;
        case Text: return 239;
        case X12: return 238;
        case Edifact: return 240;
        default: return 231;  // Base 256
    }
}

bool IsAscii(DataMatrixMode mode) { return mode == Ascii || mode == Tail; }

class Writer {
public:
    Writer(std::vector<DataMatrixToken> const& tokens, std::size_t capacity) : tokens_(tokens), capacity_(capacity) {}

    std::vector<std::uint8_t> Run(std::vector<DataMatrixWays::Step> const& way) {
        for (auto const& [mode, count] : way) {
            SwitchTo(Emptied(mode));
            if (IsAscii(mode_)) {
                WriteAscii(count);
            } else if (mode_ == Edifact) {
                AddToEdifact(tokens_[at_].value & 0x3FU);
            } else if (IsPacked(mode_)) {
                WritePacked();
            } else {
                bytes_.push_back(Byte(tokens_[at_].value));
            }
            at_ += count;
        }
        Finish();
        return std::move(out_);
    }

private:
    void SwitchTo(DataMatrixMode mode) {
        if (mode == mode_) return;
        if (mode != Tail) Leave();
        mode_ = mode;
        if (!IsAscii(mode)) out_.push_back(LatchOf(mode));
    }

    void Leave() {
        if (IsPacked(mode_)) out_.push_back(Unlatch);
        if (mode_ == Edifact) LeaveEdifact();
        WriteBytes();
    }

    /// What the end of the symbol does not end by itself returns to ASCII.
    void Finish() {
        if (IsPacked(mode_) && waiting_ != 0) AddToTriple(0);
        std::size_t const room = capacity_ - out_.size();
        bool const endsItself = IsPacked(mode_) ? room == 0 : mode_ == Edifact && waiting_ == 0 && room < EdifactGroup;
        if (!endsItself) Leave();
    }

    void WriteAscii(std::size_t count) {
        DataMatrixToken const& token = tokens_[at_];
        if (!token.codewords.empty()) {
            out_.insert(out_.end(), token.codewords.begin(), token.codewords.end());
        } else if (token.value == DataMatrixToken::Fnc1) {
            out_.push_back(Fnc1Codeword);
        } else if (count == 2) {
            // A pair of digits is 130 and its number; below, a character is its code and one.
            out_.push_back(Byte(130 + (token.value - '0') * 10 + (tokens_[at_ + 1].value - '0')));
        } else if (token.value > 127) {
            out_.insert(out_.end(), {UpperShift, Byte(token.value - 127)});
        } else {
            out_.push_back(Byte(token.value + 1));
        }
    }

    void WritePacked() {
        auto const values = DataMatrixValuesOf(tokens_[at_].value, mode_);
        for (std::size_t i = 0; i < values.count; ++i) AddToTriple(values.values[i]);
    }

    void AddToTriple(unsigned value) {
        group_ = group_ * 40 + value;
        if (++waiting_ < 3) return;
        out_.insert(out_.end(), {Byte((group_ + 1) / 256), Byte((group_ + 1) % 256)});
        group_ = waiting_ = 0;
    }

    void AddToEdifact(unsigned value) {
        group_ = group_ << 6 | value;
        if (++waiting_ < 4) return;
        out_.insert(out_.end(), {Byte(group_ >> 16), Byte(group_ >> 8), Byte(group_)});
        group_ = waiting_ = 0;
    }

    /// The codewords that hold a part of the unlatch are the last of their group.
    void LeaveEdifact() {
        std::size_t const length = out_.size() + (6 * (waiting_ + 1) + 7) / 8;
        AddToEdifact(EdifactUnlatch);
        while (waiting_ != 0) AddToEdifact(0);
        out_.resize(length);
    }

    /// The length field and the bytes, randomised by their places (ISO/IEC 16022, B.2).
    void WriteBytes() {
        if (bytes_.empty()) return;
        std::vector<std::uint8_t> field;
        bool const isLong = bytes_.size() > 249;
        if (isLong && mode_ == LastBytes) {
            field.push_back(0);
        } else {
            if (isLong) field.push_back(Byte(bytes_.size() / 250 + 249));
            field.push_back(Byte(isLong ? bytes_.size() % 250 : bytes_.size()));
        }
        field.insert(field.end(), bytes_.begin(), bytes_.end());
        for (std::uint8_t const byte : field) {
            std::size_t const random = 149 * (out_.size() + 1) % 255 + 1;
            out_.push_back(Byte(byte + random));
        }
        bytes_.clear();
    }

    std::vector<DataMatrixToken> const& tokens_;
    std::size_t capacity_;
    std::vector<std::uint8_t> out_;
    std::vector<std::uint8_t> bytes_;  ///< of a run that is not written yet
    std::size_t at_ = 0;
    DataMatrixMode mode_ = Ascii;
    unsigned group_ = 0;    ///< values that do not fill a group yet
    unsigned waiting_ = 0;  ///< how many they are
};

}  // namespace

std::vector<std::uint8_t> DataMatrixCodewords(std::vector<DataMatrixToken> const& tokens,
                                              std::vector<DataMatrixWays::Step> const& way, std::size_t capacity) {
    return Writer(tokens, capacity).Run(way);
}

}  // namespace Barcode::Encoder
