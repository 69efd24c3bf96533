#pragma once

#include <memory>
#include <string>

#include "PrintEngine/Printing/TrueTypeCacheCreator.h"

/// The fonts of desks that are closed, with what they have opened and drawn, for the next desk of the same font
/// settings: to open fonts and to draw their letters takes ten times as long as a label. A desk has them alone. Some
/// are kept for the process. Any thread.
namespace WarmFonts {

using Fonts = PrintEngine::Printing::TrueTypeCacheCreator;

/// Those that were kept under the settings; null if there are none.
std::unique_ptr<Fonts> Take(std::string const& settings);
/// Not such as have told of what they lack: they would not tell it again.
void Keep(std::string settings, std::unique_ptr<Fonts> fonts) noexcept;

}  // namespace WarmFonts
