#pragma once

#include <string>
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

/// Where the barcodes of the label stand on its finished page that it may not read, in pixels: "fault 10 20 300 80;"
/// for each, left, top, width and height, or "doubt" in place of the first word. Empty without one.
std::string MarksOfBarcodes(FieldMap const& map);

}  // namespace ZplCore
