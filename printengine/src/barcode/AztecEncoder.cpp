#include "Barcode/Encoder/AztecEncoder.h"

#include <algorithm>
#include <charconv>
#include <optional>
#include <string_view>

#include "printengine/src/barcode/PublishedSymbol.h"

namespace Barcode::Encoder {

namespace {

constexpr unsigned Rune = 300;
constexpr unsigned MaxSymbols = 26;
constexpr std::size_t MaxName = 24;
/// The largest symbol holds no more digits than this.
constexpr std::size_t MaxLength = 3832;

/// The library's levels of error correction, in per cent.
constexpr unsigned Levels[] = {10, 23, 36, 50};

struct Layers {
    unsigned count;
    bool isCompact;

    /// Bits of all codewords.
    unsigned Bits() const { return ((isCompact ? 88 : 112) + 16 * count) * count; }
    /// The library's number of the size.
    int Number() const { return static_cast<int>(isCompact ? count : count + 4); }
    unsigned Side() const {
        if (isCompact) return 11 + 4 * count;
        // Full symbols have a line of reference grid every 16 modules from the centre.
        return 15 + 4 * count + 2 * ((2 * count + 6) / 15);
    }
};

std::optional<Layers> LayersOf(unsigned size) {
    if (size >= 101 && size <= 104) return Layers{size - 100, true};
    if (size >= 201 && size <= 232) return Layers{size - 200, false};
    return std::nullopt;
}

std::optional<unsigned> RuneValue(std::string const& text) {
    unsigned value = 0;
    auto const [end, error] = std::from_chars(text.data(), text.data() + text.size(), value);
    if (error != std::errc() || end != text.data() + text.size() || value > 255) return std::nullopt;
    return value;
}

// --- Extended channels ----------------------------------------------------------------------------------------------

using Segments = std::vector<PublishedSymbol::Segment>;

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

/// Encodes with at least so many per cent, for which the library has a level only up to a half.
void EncodeWithPercentage(PublishedSymbol& symbol, Segments const& text, unsigned percent) {
    auto const* level = std::find_if(std::begin(Levels), std::end(Levels), [&](unsigned p) { return p >= percent; });
    if (level != std::end(Levels)) {
        symbol->option_1 = static_cast<int>(level - std::begin(Levels)) + 1;
        symbol.Encode(text);
        return;
    }
    // The data take at most half of the symbol of the highest level; a symbol large enough for these has enough left.
    symbol->option_1 = static_cast<int>(std::size(Levels));
    if (symbol.Encode(text) != ValidationStatus::Valid) return;
    auto const side = static_cast<unsigned>(symbol.Columns());
    unsigned dataBits = 0;
    for (unsigned count = 1; count <= 32; ++count) {
        for (bool const isCompact : {true, false}) {
            Layers const layers{count, isCompact};
            bool const exists = !isCompact || count <= 4;
            if (exists && layers.Side() == side) dataBits = std::max(dataBits, layers.Bits() / 2);
        }
    }
    symbol->option_1 = 0;
    for (unsigned count = 1; count <= 32; ++count) {
        Layers const layers{count, false};
        if (layers.Bits() * (100 - percent) / 100 < dataBits) continue;
        symbol->option_2 = layers.Number();
        symbol.Encode(text);
        return;
    }
    symbol->rows = symbol->width = 0;
}

/// One symbol of `options.symbols`, counted from 0.
Model::MatrixBarcodeModel EncodeSymbol(Segments const& text, AztecOptions const& options, unsigned index) {
    PublishedSymbol symbol(options.size == Rune ? BARCODE_AZRUNE : BARCODE_AZTEC);
    if (options.readerSetUp) symbol->output_options |= READER_INIT;
    if (options.symbols >= 2) {
        symbol->structapp.index = static_cast<int>(index + 1);
        symbol->structapp.count = static_cast<int>(options.symbols);
        // The standard has no blanks in the name.
        std::string name = options.name.substr(0, MaxName);
        std::erase(name, ' ');
        name.copy(symbol->structapp.id, sizeof symbol->structapp.id - 1);
    }
    if (options.size >= 1 && options.size <= 99) {
        EncodeWithPercentage(symbol, text, options.size);
    } else {
        if (auto const layers = LayersOf(options.size)) symbol->option_2 = layers->Number();
        symbol.Encode(text);
    }
    return symbol.ToMatrix();
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
