#include "Barcode/Encoder/AztecEncoder.h"

#include <algorithm>
#include <charconv>
#include <optional>

#include "printengine/src/barcode/PublishedSymbol.h"

namespace Barcode::Encoder {

namespace {

constexpr unsigned Rune = 300;
constexpr unsigned MaxSymbols = 26;
constexpr std::size_t MaxIdentifier = 24;
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

/// Encodes with at least so many per cent, for which the library has a level only up to a half.
void EncodeWithPercentage(PublishedSymbol& symbol, std::string const& text, unsigned percent) {
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

}  // namespace

ValidationStatus AztecEncoder::Validate(std::string const& text, unsigned size, unsigned symbols) {
    if ((size > 99 && size != Rune && !LayersOf(size)) || symbols == 0 || symbols > MaxSymbols)
        return ValidationStatus::InvalidParameter;
    if (text.empty()) return ValidationStatus::TooShort;
    if (size == Rune && !RuneValue(text)) return ValidationStatus::InvalidCharacter;
    return text.size() > MaxLength ? ValidationStatus::TooLong : ValidationStatus::Valid;
}

Model::MatrixBarcodeModel AztecEncoder::Encode(std::string const& text, unsigned size, bool readerSetUp,
                                               unsigned symbols, std::string const& id) {
    PublishedSymbol symbol(size == Rune ? BARCODE_AZRUNE : BARCODE_AZTEC);
    if (readerSetUp) symbol->output_options |= READER_INIT;
    if (symbols >= 2 && size != Rune) {
        symbol->structapp.index = 1;
        symbol->structapp.count = static_cast<int>(symbols);
        // The standard has no blanks in the name.
        std::string name = id.substr(0, MaxIdentifier);
        std::erase(name, ' ');
        name.copy(symbol->structapp.id, sizeof symbol->structapp.id - 1);
    }
    if (size >= 1 && size <= 99) {
        EncodeWithPercentage(symbol, text, size);
    } else {
        if (auto const layers = LayersOf(size)) symbol->option_2 = layers->Number();
        symbol.Encode(text);
    }
    return symbol.ToMatrix();
}

}  // namespace Barcode::Encoder
