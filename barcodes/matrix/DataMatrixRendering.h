#pragma once

#include <optional>

#include "frontend/context/ContextProcessor.h"

namespace ZplCore {

/// What a Data Matrix command asks for.
struct DataMatrixOptions {
    unsigned moduleSize = 0;  ///< dots; 0 makes the symbol as tall as the barcode height in force
    unsigned quality = 0;     ///< ECC level: 0, 50, 80, 100, 140 or 200
    unsigned columns = 0;     ///< modules; 0 leaves the size to the encoder
    unsigned rows = 0;
    unsigned format = 6;  ///< the alphabet of the levels below 200
    char escape = '~';    ///< of level 200
    unsigned aspect = 1;  ///< of level 200
};

/// The quality level that a value is; nothing for a value that is none.
std::optional<unsigned> ZplDataMatrixQualityParser(unsigned value);
/// Refused data are drawn as an error whether validation is on or off.
void RenderDataMatrix(ContextProcessor& processor, DataMatrixOptions const& options);

}  // namespace ZplCore
