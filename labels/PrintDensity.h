#pragma once

#include <optional>

class ContextProcessor;

namespace ZplCore {

/// The print darkness that a label asks for, relative to the printer's setting; nothing if it asks for none.
std::optional<int> GetPrintDensityOverride(ContextProcessor const& processor);

}  // namespace ZplCore
