#pragma once

#include <vector>

#include "Barcode/Model/BarcodeModels.h"
#include "printengine/src/barcode/AztecText.h"

namespace Barcode::Encoder {

/// A size of Aztec Code (ISO/IEC 24778): the layers of data around its core.
struct AztecLayers {
    unsigned count;  ///< 1 to 4 in compact symbols, 1 to 32 in full ones
    bool isCompact;

    /// Bits of all codewords.
    unsigned Bits() const { return ((isCompact ? 88 : 112) + 16 * count) * count; }
    /// Bits of a codeword.
    unsigned WordSize() const { return count <= 2 ? 6 : count <= 8 ? 8 : count <= 22 ? 10 : 12; }
    unsigned Words() const { return Bits() / WordSize(); }
    /// The most codewords of data that the core can tell of.
    unsigned MaxDataWords() const { return isCompact ? 64 : 2048; }
    /// Whether the length leaves room for the mark of a symbol that sets readers up.
    bool CanSetUpReaders() const { return count <= (isCompact ? 1U : 22U); }
};

/// The codewords of a text, which are never all zeros or all ones; the last is filled up with ones.
std::vector<unsigned> AztecDataWords(AztecBits const& text, unsigned wordSize);

/// The symbol of data words; all others are error correction.
Model::MatrixBarcodeModel DrawAztec(std::vector<unsigned> words, AztecLayers layers, bool readerSetUp);

/// The core alone, which carries a number of one byte.
Model::MatrixBarcodeModel DrawAztecRune(unsigned value);

}  // namespace Barcode::Encoder
