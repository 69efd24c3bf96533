#pragma once

#include <string_view>
#include <vector>

namespace Barcode::Encoder {

/// How the codewords of a symbol begin to be read.
enum class PDF417Start {
    Text,     ///< PDF417: capitals of text compaction
    Latched,  ///< MicroPDF417: by the latch in front
};

/// The fewest codewords that text, byte and numeric compaction make of a text (ISO/IEC 15438, 5.4; the same in
/// ISO/IEC 24728).
std::vector<unsigned> CompactPDF417(std::string_view text, PDF417Start start);

/// The `count` codewords of error correction behind `data`: Reed-Solomon over the integers modulo 929, with the powers
/// of 3 from the first on as the roots of the generator.
std::vector<unsigned> PDF417Corrections(std::vector<unsigned> const& data, unsigned count);

}  // namespace Barcode::Encoder
