#include "printengine/src/barcode/AztecSymbol.h"

#include <algorithm>
#include <cstdlib>

namespace Barcode::Encoder {

namespace {

// --- Error correction -------------------------------------------------------------------------------------------

/// The Galois field of a codeword's size.
class Field {
public:
    explicit Field(unsigned wordSize) : order_((1U << wordSize) - 1), power_(2 * order_), logarithm_(order_ + 1) {
        unsigned const polynomial = PolynomialOf(wordSize);
        for (unsigned i = 0, value = 1; i < order_; ++i) {
            power_[i] = power_[i + order_] = value;
            logarithm_[value] = i;
            value <<= 1;
            if (value > order_) value ^= polynomial;
        }
    }

    unsigned Power(unsigned exponent) const { return power_[exponent % order_]; }
    unsigned Multiply(unsigned a, unsigned b) const {
        return a == 0 || b == 0 ? 0 : power_[logarithm_[a] + logarithm_[b]];
    }

private:
    /// ISO/IEC 24778, 7.2.3: the primitive polynomials.
    static unsigned PolynomialOf(unsigned wordSize) {
        switch (wordSize) {
            case 4: return 0x13;
            case 6: return 0x43;
            case 8: return 0x12D;
            case 10: return 0x409;
            default: return 0x1069;
        }
    }

    unsigned order_;
    std::vector<unsigned> power_;  ///< twice around, for sums of two logarithms
    std::vector<unsigned> logarithm_;
};

/// Appends `count` words, by the polynomial with the roots 2^1 to 2^count.
void AppendChecks(std::vector<unsigned>& words, unsigned count, unsigned wordSize) {
    Field const field(wordSize);
    std::vector<unsigned> generator{1};  // highest power first
    for (unsigned root = 1; root <= count; ++root) {
        generator.push_back(0);
        for (std::size_t i = generator.size() - 1; i > 0; --i)
            generator[i] ^= field.Multiply(generator[i - 1], field.Power(root));
    }
    // Long division by the generator: the register holds the remainder so far, its highest word first.
    std::vector<unsigned> rest(count);
    for (unsigned const word : words) {
        unsigned const factor = word ^ rest[0];
        std::copy(rest.begin() + 1, rest.end(), rest.begin());
        rest.back() = 0;
        if (factor == 0) continue;
        for (unsigned i = 0; i < count; ++i) rest[i] ^= field.Multiply(factor, generator[i + 1]);
    }
    words.insert(words.end(), rest.begin(), rest.end());
}

std::vector<bool> BitsOf(std::vector<unsigned> const& words, unsigned wordSize) {
    std::vector<bool> bits;
    bits.reserve(words.size() * wordSize);
    for (unsigned const word : words) {
        for (unsigned i = wordSize; i-- > 0;) bits.push_back((word >> i & 1) != 0);
    }
    return bits;
}

// --- Drawing ----------------------------------------------------------------------------------------------------

constexpr unsigned ModeWord = 4;  // bits

/// A symbol by distances from its centre.
class Canvas {
public:
    explicit Canvas(unsigned side) : model_(side, side), centre_(static_cast<int>(side / 2)) {}

    void Set(int x, int y, bool dark) {
        model_.GetCells()[static_cast<std::size_t>(centre_ + y)][static_cast<std::size_t>(centre_ + x)] = dark;
    }
    Model::MatrixBarcodeModel Take() { return std::move(model_); }

private:
    Model::MatrixBarcodeModel model_;
    int centre_;
};

/// The rings, and the marks at the corners that tell how the symbol is turned. `radius` is that of the ring of marks.
void DrawFinder(Canvas& canvas, int radius) {
    for (int y = -radius + 1; y < radius; ++y) {
        for (int x = -radius + 1; x < radius; ++x) canvas.Set(x, y, std::max(std::abs(x), std::abs(y)) % 2 == 0);
    }
    struct {
        int x, y;
    } const marks[] = {{-radius, -radius}, {-radius + 1, -radius}, {-radius, -radius + 1},
                       {radius, -radius},  {radius, -radius + 1},  {radius, radius - 1}};
    for (auto const& [x, y] : marks) canvas.Set(x, y, true);
}

/// The mode message runs around the finder, a quarter on each side, clockwise from the upper left.
void DrawModeMessage(Canvas& canvas, std::vector<bool> const& message, bool isCompact) {
    int const radius = isCompact ? 5 : 7;
    auto const quarter = static_cast<int>(message.size() / 4);
    auto bit = message.begin();
    for (int side = 0; side < 4; ++side) {
        for (int i = 0; i < quarter; ++i, ++bit) {
            // The grid's line in the middle of full symbols carries no bit.
            int const along = isCompact ? i - 3 : i - 5 + i / 5;
            int const x[] = {along, radius, -along, -radius};
            int const y[] = {-radius, along, radius, -along};
            canvas.Set(x[side], y[side], *bit);
        }
    }
}

/// Every other cell of every 16th line from the centre.
void DrawGrid(Canvas& canvas, int half) {
    constexpr int Pitch = 16;
    for (int line = 0; line <= half; line += Pitch) {
        for (int at = -half; at <= half; ++at) {
            bool const dark = (at + line) % 2 == 0;
            for (int const side : {-line, line}) {
                canvas.Set(side, at, dark);
                canvas.Set(at, side, dark);
            }
        }
    }
}

/// The layers from the outside inward, each two cells deep, its four sides one after the other counterclockwise.
class Layers {
public:
    Layers(Canvas& canvas, AztecLayers layers)
        : canvas_(canvas), isCompact_(layers.isCompact), side_((isCompact_ ? 11 : 14) + 4 * layers.count) {}

    /// Half of the symbol's side, without the centre.
    int Half() const { return Place(side_ - 1); }

    void Draw(std::vector<bool> const& bits, unsigned count) {
        auto bit = bits.begin();
        for (unsigned layer = 0; layer < count; ++layer) {
            unsigned const length = (count - layer) * 4 + (isCompact_ ? 9 : 12);
            for (int side = 0; side < 4; ++side) {
                for (unsigned along = 0; along < length; ++along) {
                    for (unsigned deep = 0; deep < 2; ++deep) SetIn(layer, side, along, deep, *bit++);
                }
            }
        }
    }

private:
    /// The distance from the centre of a row or column of the data, between which the grid's lines are left out.
    int Place(unsigned index) const {
        int const fromMiddle = static_cast<int>(index) - static_cast<int>(side_ / 2);
        if (isCompact_) return fromMiddle;
        constexpr int Between = 15;
        return fromMiddle >= 0 ? fromMiddle + fromMiddle / Between + 1 : fromMiddle - (-fromMiddle - 1) / Between;
    }

    void SetIn(unsigned layer, int side, unsigned along, unsigned deep, bool dark) {
        int const near = Place(2 * layer + deep), far = Place(side_ - 1 - 2 * layer - deep);
        int const forth = Place(2 * layer + along), back = Place(side_ - 1 - 2 * layer - along);
        int const x[] = {near, forth, far, back};
        int const y[] = {forth, far, back, near};
        canvas_.Set(x[side], y[side], dark);
    }

    Canvas& canvas_;
    bool isCompact_;
    unsigned side_;
};

}  // namespace

std::vector<unsigned> AztecDataWords(AztecBits const& text, unsigned wordSize) {
    constexpr std::size_t ByteShift = 10, Latch = 5;  // bits
    auto const& bits = text.bits;
    std::vector<unsigned> words;
    unsigned const ones = (1U << wordSize) - 2;  // in all bits but the last
    for (std::size_t at = 0; at < bits.size();) {
        unsigned word = 0;
        for (unsigned i = 0; i < wordSize; ++i) word = word << 1 | (at + i >= bits.size() || bits[at + i] ? 1U : 0U);
        // As a latch to a mode without bytes the first of many ones end in a zero.
        std::size_t const pads = std::max(at + wordSize, bits.size()) - bits.size();
        if (text.onesShiftToBytes && pads >= ByteShift) word &= ~(1U << (pads - Latch));
        // A bit is stuffed in where the others are alike.
        bool const isStuffed = (word & ones) == 0 || (word & ones) == ones;
        words.push_back(!isStuffed ? word : (word & ones) == 0 ? 1 : ones);
        at += isStuffed ? wordSize - 1 : wordSize;
    }
    return words;
}

Model::MatrixBarcodeModel DrawAztec(std::vector<unsigned> words, AztecLayers layers, bool readerSetUp) {
    unsigned const sizeBits = layers.isCompact ? 2 : 5, lengthBits = layers.isCompact ? 6 : 11;
    unsigned const length = static_cast<unsigned>(words.size() - 1) | (readerSetUp ? 1U << (lengthBits - 1) : 0);
    unsigned const message = (layers.count - 1) << lengthBits | length;
    std::vector<unsigned> mode;
    for (unsigned shift = sizeBits + lengthBits; shift > 0; shift -= ModeWord)
        mode.push_back(message >> (shift - ModeWord) & 0xF);
    AppendChecks(mode, layers.isCompact ? 5 : 6, ModeWord);

    unsigned const wordSize = layers.WordSize();
    // All that the data leave is error correction. Bits that make no whole word stand unused in front.
    AppendChecks(words, layers.Words() - static_cast<unsigned>(words.size()), wordSize);
    std::vector<bool> bits(layers.Bits() % wordSize);
    auto const wordBits = BitsOf(words, wordSize);
    bits.insert(bits.end(), wordBits.begin(), wordBits.end());

    Canvas probe(1);
    int const half = Layers(probe, layers).Half();
    Canvas canvas(static_cast<unsigned>(2 * half + 1));
    if (!layers.isCompact) DrawGrid(canvas, half);
    Layers(canvas, layers).Draw(bits, layers.count);
    DrawFinder(canvas, layers.isCompact ? 5 : 7);
    DrawModeMessage(canvas, BitsOf(mode, ModeWord), layers.isCompact);
    return canvas.Take();
}

Model::MatrixBarcodeModel DrawAztecRune(unsigned value) {
    constexpr int Radius = 5;
    std::vector<unsigned> mode{value >> ModeWord, value & 0xF};
    AppendChecks(mode, 5, ModeWord);
    // Every other bit is turned, so that no core of a symbol is taken for a rune.
    for (unsigned& word : mode) word ^= 0b1010;
    Canvas canvas(2 * Radius + 1);
    DrawFinder(canvas, Radius);
    DrawModeMessage(canvas, BitsOf(mode, ModeWord), true);
    return canvas.Take();
}

}  // namespace Barcode::Encoder
