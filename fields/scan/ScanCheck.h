#pragma once

#include <vector>

#include "fields/map/FieldMap.h"

namespace ZplCore {

/// The label whose barcodes are looked at.
struct ScannedLabel {
    unsigned pageDpi;  ///< pixels of the finished page per inch
    bool isFirstCopy;
    bool isToldBlank;  ///< it has been told that its page shows nothing
};

/// Where the barcodes of a copy stand, in the order in which they are drawn.
using SymbolBoxes = std::vector<Scripting::PixelBox>;

/// Looks at each barcode of a finished label as a scanner would, and tells the map of those that it may not read: cut
/// by the page, overprinted, white on black, too fine, without their quiet zone, too low. Each is reported in one
/// sentence, the worst first; of further copies of a label only what stands elsewhere than in the copy before, whose
/// boxes are given and become those of this one. The map must have been asked for symbols.
void JudgeBarcodes(FieldMap& map, ScannedLabel const& label, SymbolBoxes& boxes);

}  // namespace ZplCore
