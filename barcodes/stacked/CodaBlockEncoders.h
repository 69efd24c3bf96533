#pragma once

#include <string>

#include "barcodes/frame/BarcodeFunctions.h"

namespace ZplCore {

/// How the data of a CODABLOCK symbol are broken. 0 leaves a number to the encoder; with neither the symbol is a plain
/// linear one.
struct CodaBlockLayout {
    unsigned columns = 0;  ///< data characters in a row
    unsigned rows = 0;
};

/// CODABLOCK A: rows of Code 39, each of start, row indicator, data and stop. The indicator of the first row tells how
/// many rows there are, those of the others their place. The last row is filled up with blanks.
struct CodaBlockAEncoder {
    static BarcodeStatus Validate(std::string const& text, CodaBlockLayout layout);
    /// No rows if the data do not fit. `withCheck` ends the data of several rows with their modulo 43 check character.
    static Barcode::Model::StackedBarcodeModel Encode(std::string const& text, CodaBlockLayout layout, bool withCheck);
};

/// CODABLOCK F (EN 12323), rows of Code 128, and CODABLOCK E, which is F with a leading FNC1. The bytes 0x80 to 0x83
/// are FNC1 to FNC4 and 0x84 is NUL; higher ones are sent behind FNC4.
struct CodaBlockFEncoder {
    static BarcodeStatus Validate(std::string const& text, CodaBlockLayout layout);
    /// A narrow block for each module. No rows if the data do not fit.
    static Barcode::Model::StackedBarcodeModel Encode(std::string const& text, CodaBlockLayout layout,
                                                      bool leadsWithFnc1);
};

}  // namespace ZplCore
