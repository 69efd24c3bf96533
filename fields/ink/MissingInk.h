#pragma once

#include <string>

#include "fields/map/FieldMap.h"

namespace ZplCore {

/// Reports each field of a finished label of which its page shows nothing, or not all: what a sender would call cut
/// off. Boxes and lines often run past the page on purpose, and so do the white edges of pictures; of those only what
/// is clearly lost is told. Where the map has symbols, who looks at these tells what is lost of them. True if the page
/// shows nothing of the label, which is told in one sentence.
bool ReportMissingInk(FieldMap const& map);

/// What a page lacks of a barcode's symbol, as it goes behind a name: "is cut: 45 of its 300 dots are missing at the
/// right edge of the page"; empty if nothing is.
std::string LossOfSymbol(MappedField const& field, Scripting::InkGauge const& gauge);

}  // namespace ZplCore
