#include "Barcode/Encoder/AztecEncoder.h"

#include <algorithm>
#include <charconv>
#include <optional>
#include <string_view>

#include "printengine/src/barcode/AztecSymbol.h"
#include "printengine/src/barcode/AztecText.h"

namespace Barcode::Encoder {

namespace {

constexpr unsigned Rune = 300;
constexpr unsigned MaxSymbols = 26;
constexpr std::size_t MaxName = 24;
/// The largest symbol holds no more digits than this.
constexpr std::size_t MaxLength = 3832;

std::optional<AztecLayers> LayersOf(unsigned size) {
    if (size >= 101 && size <= 104) return AztecLayers{size - 100, true};
    if (size >= 201 && size <= 232) return AztecLayers{size - 200, false};
    return std::nullopt;
}

std::optional<unsigned> RuneValue(std::string const& text) {
    unsigned value = 0;
    auto const [end, error] = std::from_chars(text.data(), text.data() + text.size(), value);
    if (error != std::errc() || end != text.data() + text.size() || value > 255) return std::nullopt;
    return value;
}

// --- Extended channels ----------------------------------------------------------------------------------------------

using Segments = std::vector<AztecSegment>;

/// The number of the channel that a text begins with, behind its backslash.
std::optional<unsigned> ChannelAt(std::string_view text) {
    constexpr std::size_t Digits = 6;
    std::string_view const digits = text.substr(0, Digits);
    if (digits.size() < Digits || digits.find_first_not_of("0123456789") != std::string_view::npos) return std::nullopt;
    unsigned channel = 0;
    std::from_chars(digits.data(), digits.data() + digits.size(), channel);
    return channel;
}

/// Breaks a text at its channels. A backslash before anything else is plain text.
Segments ReadChannels(std::string_view text) {
    constexpr std::size_t ChannelLength = 7;
    Segments segments{{}};
    while (!text.empty()) {
        auto const channel = text[0] == '\\' ? ChannelAt(text.substr(1)) : std::nullopt;
        if (channel) {
            segments.push_back({{}, *channel});
            text.remove_prefix(ChannelLength);
            continue;
        }
        segments.back().text += text[0];
        text.remove_prefix(text.substr(0, 2) == "\\\\" ? 2 : 1);
    }
    std::erase_if(segments, [](auto const& segment) { return segment.text.empty(); });
    return segments;
}

Segments SegmentsOf(std::string const& text, AztecOptions const& options) {
    return options.hasChannels ? ReadChannels(text) : Segments{{text, 0}};
}

std::size_t LengthOf(Segments const& segments) {
    std::size_t length = 0;
    for (auto const& segment : segments) length += segment.text.size();
    return length;
}

/// The bytes from `begin` up to `end`, in their channels.
Segments Slice(Segments const& segments, std::size_t begin, std::size_t end) {
    Segments slice;
    std::size_t start = 0;
    for (auto const& [text, channel] : segments) {
        std::size_t const from = std::clamp(begin, start, start + text.size());
        std::size_t const to = std::clamp(end, start, start + text.size());
        if (from < to) slice.push_back({text.substr(from - start, to - from), channel});
        start += text.size();
    }
    return slice;
}

// --- Sizes ----------------------------------------------------------------------------------------------------------

constexpr unsigned UsualPercentage = 23;
/// Codewords of error correction beside the percentage.
constexpr std::size_t LeastChecks = 3;

/// From the smallest on; a compact symbol holds more than a full one of the same side.
std::vector<AztecLayers> AllSizes() {
    std::vector<AztecLayers> sizes;
    for (unsigned count = 1; count <= 4; ++count) {
        sizes.push_back({count, true});
        if (count > 1) sizes.push_back({count - 1, false});
    }
    for (unsigned count = 4; count <= 32; ++count) sizes.push_back({count, false});
    return sizes;
}

bool Holds(AztecLayers layers, std::size_t dataWords, unsigned percent) {
    std::size_t const checks = std::size_t{layers.Words()} * percent / 100 + LeastChecks;
    return dataWords <= layers.MaxDataWords() && dataWords + checks <= layers.Words();
}

/// The smallest symbol of the sizes asked for.
Model::MatrixBarcodeModel DrawSmallest(AztecBits const& text, AztecOptions const& options) {
    auto const asked = LayersOf(options.size);
    unsigned const percent = asked ? 0 : options.size == 0 ? UsualPercentage : options.size;
    for (AztecLayers const layers : asked ? std::vector{*asked} : AllSizes()) {
        if (options.readerSetUp && !layers.CanSetUpReaders()) continue;
        // No word carries more than its bits.
        if (text.bits.size() > std::size_t{layers.Bits()}) continue;
        auto const words = AztecDataWords(text, layers.WordSize());
        if (Holds(layers, words.size(), percent)) return DrawAztec(words, layers, options.readerSetUp);
    }
    return {0, 0};
}

/// One symbol of `options.symbols`, counted from 0.
Model::MatrixBarcodeModel EncodeSymbol(Segments text, AztecOptions const& options, unsigned index) {
    bool const isAppended = options.symbols >= 2;
    if (isAppended) {
        // The standard has no blanks in the name.
        std::string header = options.name.substr(0, MaxName);
        std::erase(header, ' ');
        if (!header.empty()) header = ' ' + header + ' ';
        header += {static_cast<char>('A' + index), static_cast<char>('A' + options.symbols - 1)};
        text.insert(text.begin(), {header, 0});
    }
    return DrawSmallest(EncodeAztecText(text, isAppended), options);
}

/// Puts symbols side by side, with blank cells between them.
Model::MatrixBarcodeModel InRow(std::vector<Model::MatrixBarcodeModel> const& symbols) {
    constexpr std::size_t Gap = 4;
    std::size_t height = 0, width = 0;
    for (auto const& symbol : symbols) {
        height = std::max(height, symbol.GetCells().size());
        width += (width == 0 ? 0 : Gap) + symbol.GetCells().size();
    }
    Model::MatrixBarcodeModel row(height, width);
    std::size_t left = 0;
    for (auto const& symbol : symbols) {
        auto const& cells = symbol.GetCells();
        for (std::size_t r = 0; r < cells.size(); ++r) {
            std::copy(cells[r].begin(), cells[r].end(), row.GetCells()[r].begin() + static_cast<std::ptrdiff_t>(left));
        }
        left += cells.size() + Gap;
    }
    return row;
}

}  // namespace

ValidationStatus AztecEncoder::Validate(std::string const& text, AztecOptions const& options) {
    bool const isSize = options.size <= 99 || options.size == Rune || LayersOf(options.size);
    if (!isSize || options.symbols == 0 || options.symbols > MaxSymbols ||
        (options.size == Rune && options.symbols > 1))
        return ValidationStatus::InvalidParameter;
    std::size_t const length = LengthOf(SegmentsOf(text, options));
    if (length < options.symbols) return ValidationStatus::TooShort;
    if (options.size == Rune && !RuneValue(text)) return ValidationStatus::InvalidCharacter;
    return length > options.symbols * MaxLength ? ValidationStatus::TooLong : ValidationStatus::Valid;
}

Model::MatrixBarcodeModel AztecEncoder::Encode(std::string const& text, AztecOptions const& options) {
    if (options.size == Rune) return DrawAztecRune(RuneValue(text).value_or(0));
    Segments const segments = SegmentsOf(text, options);
    std::size_t const length = LengthOf(segments);
    std::vector<Model::MatrixBarcodeModel> symbols;
    for (unsigned i = 0; i < options.symbols; ++i) {
        auto const part = Slice(segments, i * length / options.symbols, (i + 1) * length / options.symbols);
        symbols.push_back(EncodeSymbol(part, options, i));
        if (symbols.back().GetCells().empty()) return {0, 0};
    }
    return symbols.size() == 1 ? std::move(symbols[0]) : InRow(symbols);
}

}  // namespace Barcode::Encoder
