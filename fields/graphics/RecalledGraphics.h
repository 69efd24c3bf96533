#pragma once

#include <memory>
#include <string>

#include "fields/graphics/GraphicData.h"
#include "frontend/context/ContextProcessor.h"

namespace ZplCore {

/// The stored picture that `text` names, as it was when the format in force ended, however often it has been stored
/// anew since: a stream may store one name for every label, and a page may be drawn long after. A name without a device
/// is looked for on all of them. Null if there was none, which is reported.
std::shared_ptr<Picture const> RecallGraphic(ContextProcessor const& processor, std::string const& text);

}  // namespace ZplCore
