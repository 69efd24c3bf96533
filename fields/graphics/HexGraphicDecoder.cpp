#include "fields/graphics/HexGraphicDecoder.h"

#include <algorithm>
#include <array>
#include <cstring>

#include "frontend/stream/Ascii.h"

namespace ZplCore {

namespace {

constexpr std::uint8_t NoDigit = 0xFF;

constexpr std::array<std::uint8_t, 256> Digits = [] {
    std::array<std::uint8_t, 256> digits{};
    // No digit, -1, becomes NoDigit.
    for (unsigned i = 0; i < digits.size(); ++i) digits[i] = static_cast<std::uint8_t>(HexDigit(static_cast<char>(i)));
    return digits;
}();

/// What a repeat code counts, 0 for any other character.
constexpr unsigned RepeatCount(char c) {
    if (c >= 'G' && c <= 'Y') return static_cast<unsigned>(c - 'G' + 1);
    if (c >= 'g' && c <= 'z') return static_cast<unsigned>(c - 'g' + 1) * 20;
    return 0;
}

/// Writes digits one after the other over the rows of a picture. Rows are made when a black dot needs them, so that
/// white ones cost nothing.
class DigitWriter {
public:
    explicit DigitWriter(Picture& picture)
        : picture_(picture), rowDigits_(std::size_t{picture.bytesPerRow} * 2), total_(rowDigits_ * picture.rowCount) {}

    bool IsFull() const { return position_ >= total_; }
    /// Rows that have begun.
    std::size_t Rows() const { return (position_ + rowDigits_ - 1) / rowDigits_; }

    /// Copies pairs of plain digits as long as they last; gives the number of characters used.
    std::size_t PutPairs(std::string_view text) {
        if (position_ % 2 != 0 || text.size() < 2) return 0;
        std::size_t const room = std::min(text.size() / 2, (total_ - position_) / 2);
        std::size_t used = 0;
        std::size_t const start = position_ / 2;
        for (; used < room; ++used) {
            std::uint8_t const high = Digits[static_cast<std::uint8_t>(text[used * 2])];
            std::uint8_t const low = Digits[static_cast<std::uint8_t>(text[used * 2 + 1])];
            // Both are digits if neither has a bit above the fourth.
            if ((high | low) > 0x0F) break;
            if (start + used >= picture_.rows.size()) Grow((start + used + 1) * 2);
            picture_.rows[start + used] = static_cast<std::uint8_t>(high << 4 | low);
        }
        position_ += used * 2;
        return used * 2;
    }

    void Put(std::uint8_t digit, std::size_t count) {
        count = std::min(count, total_ - position_);
        if (digit == 0) {
            position_ += count;
            return;
        }
        Grow(position_ + count);
        if (count > 0 && position_ % 2 != 0) {
            picture_.rows[position_ / 2] |= digit;
            ++position_;
            --count;
        }
        std::memset(picture_.rows.data() + position_ / 2, digit << 4 | digit, count / 2);
        position_ += count / 2 * 2;
        if (count % 2 != 0) picture_.rows[position_++ / 2] = static_cast<std::uint8_t>(digit << 4);
    }

    /// Fills the row that has begun, or a whole one.
    void FillRow(std::uint8_t digit) { Put(digit, rowDigits_ - position_ % rowDigits_); }

    void RepeatRow() {
        if (position_ % rowDigits_ != 0) FillRow(0);
        if (IsFull()) return;
        std::size_t const at = position_ / 2;
        position_ += rowDigits_;
        if (at == 0 || at > picture_.rows.size()) return;  // nothing above, or a white row
        Grow(position_);
        std::memcpy(picture_.rows.data() + at, picture_.rows.data() + at - picture_.bytesPerRow, picture_.bytesPerRow);
    }

private:
    /// Makes all rows that the digits before `end` lie in.
    void Grow(std::size_t end) {
        std::size_t const rows = (end + rowDigits_ - 1) / rowDigits_;
        if (rows * picture_.bytesPerRow > picture_.rows.size()) picture_.rows.resize(rows * picture_.bytesPerRow);
    }

    Picture& picture_;
    std::size_t const rowDigits_;
    std::size_t const total_;
    std::size_t position_ = 0;  // digits from the first row's start
};

}  // namespace

void DecodeHexData(std::string_view text, Picture& picture) {
    DigitWriter writer(picture);
    std::size_t repeat = 0;
    for (std::size_t i = 0; i < text.size() && !writer.IsFull();) {
        if (repeat == 0) {
            i += writer.PutPairs(text.substr(i));
            if (i >= text.size() || writer.IsFull()) break;
        }
        char const c = text[i++];
        if (std::uint8_t const digit = Digits[static_cast<std::uint8_t>(c)]; digit != NoDigit) {
            writer.Put(digit, std::max<std::size_t>(repeat, 1));
            repeat = 0;
        } else if (unsigned const count = RepeatCount(c)) {
            // More than the largest picture has digits counts no further.
            repeat = std::min(repeat + count, 2 * Picture::MaximumBytes);
        } else if (c == ',' || c == '!') {
            writer.FillRow(c == '!' ? 0x0F : 0);
            repeat = 0;
        } else if (c == ':') {
            writer.RepeatRow();
            repeat = 0;
        }
    }
    if (writer.Rows() < picture.rowCount) ReportMissingRows(writer.Rows(), picture);
}

}  // namespace ZplCore
