#pragma once

#include <cstddef>
#include <cstdint>
#include <string_view>
#include <vector>

namespace Barcode::Encoder {

/// The modes of ISO/IEC 18004 that text is packed in.
enum class QRMode : std::uint8_t { Numeric, Alphanumeric, Byte, Kanji };

/// The sizes of symbols among which the counts of characters are equally long: versions 1 to 9, 10 to 26, 27 to 40.
enum class QRSizes : std::uint8_t { Small, Medium, Large };

/// A byte, or a character of two bytes of Shift JIS that mode Kanji holds, the first byte in the upper half.
using QRCharacter = std::uint16_t;

/// The characters of a text, those of two bytes where they are `kanji`.
std::vector<QRCharacter> QRCharacters(std::string_view text, bool kanji);

/// A run of characters in one mode.
struct QRRun {
    QRMode mode;
    std::size_t begin;
    std::size_t end;
};

/// Parts a text into runs that take few bits.
std::vector<QRRun> QRRuns(std::vector<QRCharacter> const& characters, QRSizes sizes);

/// Bits, most significant first, in whole codewords.
class QRBits {
public:
    void Add(unsigned value, unsigned bits);
    /// A run with its mode and count.
    void Add(std::vector<QRCharacter> const& characters, QRRun const& run, QRSizes sizes);
    std::size_t Size() const { return codewords_.size() * 8 + waiting_; }
    /// Ends the bits, fills them up to `capacity` codewords, which they fit in, and hands them out.
    std::vector<std::uint8_t> Fill(std::size_t capacity);

private:
    std::vector<std::uint8_t> codewords_;
    unsigned rest_ = 0;     ///< bits that do not fill a codeword yet
    unsigned waiting_ = 0;  ///< how many they are
};

}  // namespace Barcode::Encoder
