#pragma once

#include <optional>

class ContextProcessor;

namespace ZplCore {

/// Darkness goes from 0 to this.
inline constexpr int LargestDarkness = 30;
/// The darkness that a relative one counts from while the stream has named none: that of a printer as it is delivered.
inline constexpr int StandardDarkness = 15;

/// The print darkness in place of the printer's own setting; nothing if the stream asks for none.
std::optional<int> GetPrintDensityOverride(ContextProcessor const& processor);

}  // namespace ZplCore
