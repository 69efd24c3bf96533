#pragma once

#include "fields/map/FieldMap.h"

namespace ZplCore {

/// Reports each field of a finished label of which its page shows nothing, or not all: what a sender would call cut
/// off. Boxes and lines often run past the page on purpose, and so do the white edges of pictures; of those only what
/// is clearly lost is told.
void ReportMissingInk(FieldMap const& map);

}  // namespace ZplCore
