#include "barcodes/matrix/DataMatrix0to140Encoder.h"

#include <algorithm>
#include <bit>
#include <iterator>
#include <span>

#include "barcodes/matrix/DataMatrix0to140Tables.h"

namespace Barcode::Encoder {

namespace {

constexpr std::size_t HeaderBits = 30;
/// The length field has nine bits.
constexpr std::size_t MaxLength = 511;

unsigned ValueOfLetter(char c) { return c >= 'A' && c <= 'Z' ? static_cast<unsigned>(c - 'A') + 1 : 0; }
unsigned ValueOf11(char c) { return c >= '0' && c <= '9' ? static_cast<unsigned>(c - '0') + 1 : 0; }
unsigned ValueOf37(char c) { return c >= '0' && c <= '9' ? static_cast<unsigned>(c - '0') + 27 : ValueOfLetter(c); }
unsigned ValueOf41(char c) {
    constexpr std::string_view Marks = ".,-/";
    auto const mark = Marks.find(c);
    return mark != std::string_view::npos ? static_cast<unsigned>(mark) + 37 : ValueOf37(c);
}

/// Bits of 1, 2, ... characters; the last is a full group.
constexpr unsigned Base11BitsPerChar[] = {4, 7, 11, 14, 18, 21};
constexpr unsigned Base27BitsPerChar[] = {5, 10, 15, 20, 24};
constexpr unsigned Base41BitsPerChar[] = {6, 11, 17, 22};
constexpr unsigned Base37BitsPerChar[] = {6, 11, 16, 21};
constexpr unsigned SevenBits[] = {7};
constexpr unsigned EightBits[] = {8};
constexpr unsigned PowersOf11[] = {1, 11, 121, 1331, 14641, 161051};
constexpr unsigned PowersOf27[] = {1, 27, 729, 19683, 531441};
constexpr unsigned PowersOf41[] = {1, 41, 1681, 68921};
constexpr unsigned PowersOf37[] = {1, 37, 1369, 50653};

struct Format {
    std::string_view alphabet;  ///< empty if every byte up to `highest` counts
    unsigned highest;
    std::span<unsigned const> bitsPerChar;
    std::span<unsigned const> powers;
    unsigned (*valueOf)(char);
};

/// The formats 1 to 6.
constexpr Format Formats[] = {
    {"0123456789 ", 0, Base11BitsPerChar, PowersOf11, ValueOf11},
    {"ABCDEFGHIJKLMNOPQRSTUVWXYZ ", 0, Base27BitsPerChar, PowersOf27, ValueOfLetter},
    {"ABCDEFGHIJKLMNOPQRSTUVWXYZ0123456789 ,-./", 0, Base41BitsPerChar, PowersOf41, ValueOf41},
    {"ABCDEFGHIJKLMNOPQRSTUVWXYZ0123456789 ", 0, Base37BitsPerChar, PowersOf37, ValueOf37},
    {{}, 127, SevenBits, {}, nullptr},
    {{}, 255, EightBits, {}, nullptr},
};

bool IsInFormat(std::string const& data, Format const& format) {
    return std::all_of(data.begin(), data.end(), [&](char c) {
        return format.alphabet.empty() ? static_cast<unsigned char>(c) <= format.highest
                                       : format.alphabet.find(c) != std::string_view::npos;
    });
}

std::size_t PackedBits(std::size_t characters, Format const& format) {
    std::size_t const group = format.bitsPerChar.size();
    std::size_t const tail = characters % group;
    return characters / group * format.bitsPerChar.back() + (tail == 0 ? 0 : format.bitsPerChar[tail - 1]);
}

/// The modules that a stream of `b` bits needs at a level, 0 for a level that there is not.
std::size_t RequiredModules(unsigned ecc, std::size_t b) {
    switch (ecc) {
        case 0: return b + 7;
        case 50: return (b + 12) / 3 * 4 + 19;
        case 80: return (b + 23) / 2 * 3 + 19;
        case 100: return 2 * b + 49;
        case 140: return 4 * b + 71;
        default: return 0;
    }
}

void AppendLeastFirst(DataMatrixBits& bits, unsigned value, unsigned count) {
    for (unsigned i = 0; i < count; ++i) bits.push_back((value >> i & 1) != 0);
}

void AppendMostFirst(DataMatrixBits& bits, unsigned value, unsigned count) {
    for (unsigned i = count; i-- > 0;) bits.push_back((value >> i & 1) != 0);
}

void BaseXEncode(DataMatrixBits& bits, std::string const& data, unsigned (*valueOf)(char),
                 std::span<unsigned const> bitsPerChar, std::span<unsigned const> powers) {
    for (std::size_t at = 0; at < data.size(); at += powers.size()) {
        std::size_t const count = std::min(powers.size(), data.size() - at);
        unsigned value = 0;
        for (std::size_t i = 0; i < count; ++i) value += valueOf(data[at + i]) * powers[i];
        AppendLeastFirst(bits, value, bitsPerChar[count - 1]);
    }
}

void EncodeInFormat(DataMatrixBits& bits, std::string const& data, unsigned format) {
    Format const& row = Formats[format - 1];
    if (row.valueOf != nullptr) return BaseXEncode(bits, data, row.valueOf, row.bitsPerChar, row.powers);
    for (char const c : data) AppendLeastFirst(bits, static_cast<unsigned char>(c), row.bitsPerChar[0]);
}

/// CCITT, over the format's number, a zero byte and the data, each byte from its least significant bit on.
unsigned Crc(std::string const& data, unsigned format) {
    constexpr unsigned Polynomial = 0x1021;
    unsigned crc = 0;
    auto const feed = [&](unsigned byte) {
        for (unsigned i = 0; i < 8; ++i) {
            bool const isOut = ((crc >> 15 & 1) ^ (byte >> i & 1)) != 0;
            crc = (crc << 1 & 0xFFFFU) ^ (isOut ? Polynomial : 0);
        }
    };
    feed(format);
    feed(0);
    for (char const c : data) feed(static_cast<unsigned char>(c));
    return crc;
}

/// Format, check, length and data. The standard writes format and check from their most significant bits; readers take
/// no symbol that has them otherwise.
DataMatrixBits UnprotectedStream(std::string const& data, unsigned format) {
    DataMatrixBits bits;
    AppendMostFirst(bits, format - 1, 5);
    AppendMostFirst(bits, Crc(data, format), 16);
    AppendLeastFirst(bits, static_cast<unsigned>(data.size()), 9);
    EncodeInFormat(bits, data, format);
    return bits;
}

/// Runs the bits, `inputs` at a time, through shift registers; each output is the parity of their taps.
DataMatrixBits Convolve(DataMatrixBits const& input, ConvolutionalCoder const& coder) {
    DataMatrixBits output;
    std::uint32_t registers[3] = {};
    // The tail of zeros may leave a part of a group, which holds no data and is dropped.
    for (std::size_t at = 0; at + coder.inputs <= input.size(); at += coder.inputs) {
        for (unsigned line = 0; line < coder.inputs; ++line)
            registers[line] = registers[line] << 1 | (input[at + line] ? 1U : 0U);
        for (unsigned out = 0; out < coder.outputs; ++out) {
            std::uint32_t taps = 0;
            for (unsigned line = 0; line < coder.inputs; ++line) taps ^= registers[line] & coder.masks[out][line];
            output.push_back(std::popcount(taps) % 2 != 0);
        }
    }
    return output;
}

DataMatrixBits ProtectedStream(DataMatrixBits bits, Level const& level) {
    if (level.coder.inputs != 0) {
        bits.resize(bits.size() + level.tailBits);
        bits = Convolve(bits, level.coder);
    }
    DataMatrixBits stream;
    for (char const c : level.prefix) stream.push_back(c == '1');
    stream.insert(stream.end(), bits.begin(), bits.end());
    return stream;
}

Model::MatrixBarcodeModel Place(DataMatrixBits const& bits, unsigned size) {
    unsigned const w = size - 2;
    auto const& grid = MPGTables()[SizeIndex(size)];
    Model::MatrixBarcodeModel model(size, size);
    auto& cells = model.GetCells();
    for (unsigned i = 0; i < size; ++i) {
        cells[i][0] = cells[size - 1][i] = true;
        cells[0][i] = cells[0][i] || i % 2 == 0;
        cells[i][size - 1] = cells[i][size - 1] || i % 2 == 0;
    }
    for (unsigned r = 0; r < w; ++r) {
        for (unsigned c = 0; c < w; ++c) cells[r + 1][c + 1] = bits[grid[r * w + c]];
    }
    return model;
}

}  // namespace

void Base11Encode(DataMatrixBits& bits, std::string const& data) { EncodeInFormat(bits, data, 1); }
void Base27Encode(DataMatrixBits& bits, std::string const& data) { EncodeInFormat(bits, data, 2); }
void Base41Encode(DataMatrixBits& bits, std::string const& data) { EncodeInFormat(bits, data, 3); }
void Base37Encode(DataMatrixBits& bits, std::string const& data) { EncodeInFormat(bits, data, 4); }

ValidationStatus DataMatrix0to140Encoder::Validate(std::string const& data, unsigned ecc, unsigned size,
                                                   unsigned format) {
    bool const isSize = size == 0 || (size % 2 != 0 && size >= SmallestDataMatrix && size <= LargestDataMatrix);
    if (RequiredModules(ecc, 0) == 0 || !isSize || format == 0 || format > std::size(Formats))
        return ValidationStatus::InvalidParameter;
    Format const& row = Formats[format - 1];
    if (!IsInFormat(data, row)) return ValidationStatus::InvalidCharacter;
    std::size_t const b = HeaderBits + PackedBits(data.size(), row);
    bool const fits = RequiredModules(ecc, b) <= MaxBitsPerSize[SizeIndex(size == 0 ? LargestDataMatrix : size)];
    return fits && data.size() <= MaxLength ? ValidationStatus::Valid : ValidationStatus::TooLong;
}

Model::MatrixBarcodeModel DataMatrix0to140Encoder::Encode(std::string const& data, int ecc, int size, int format) {
    auto const unprotected = UnprotectedStream(data, static_cast<unsigned>(format));
    std::size_t const required = RequiredModules(static_cast<unsigned>(ecc), unprotected.size());
    auto bits = ProtectedStream(unprotected, LevelOf(static_cast<unsigned>(ecc)));
    auto side = static_cast<unsigned>(size);
    if (side == 0) {
        side = SmallestDataMatrix;
        while (side < LargestDataMatrix && MaxBitsPerSize[SizeIndex(side)] < required) side += 2;
    }
    bits.resize(MaxBitsPerSize[SizeIndex(side)]);
    for (std::size_t i = 0; i < bits.size(); ++i)
        bits[i] = bits[i] != ((MasterRandomStream[i / 8] >> (7 - i % 8) & 1) != 0);
    return Place(bits, side);
}

}  // namespace Barcode::Encoder
