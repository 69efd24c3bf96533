#pragma once

#include "frontend/context/ContextProcessor.h"
#include "frontend/context/ZplContextKeys.h"
#include "frontend/stream/ZplCommand.h"

/// What the handlers of barcode commands read and store alike. A parameter that is left out or cannot be used leaves
/// the setting of the enclosing contexts in force.
namespace ZplCore {

/// Parameter 0: the orientation of the field.
void StoreBarcodeOrientation(Context& current, ZplCommand const& command, ContextProcessor& processor);
/// The height of the bars in dots, at least 1.
void StoreBarcodeHeight(Context& current, ZplCommand const& command, std::size_t index, ContextProcessor& processor);
/// A yes or no; `fallback` also for what is neither.
bool ParseFlag(ZplCommand const& command, std::size_t index, bool fallback);
/// The first character in upper case.
char ParseLetter(ZplCommand const& command, std::size_t index, char fallback);

/// Stores what draws the field. A symbol too large to be drawn is refused like other parameters that make it
/// impossible, and the label goes on. Always true: the command is handled.
bool StoreBarcodeRender(Context& current, ContextProcessor& processor, ZplContextKeys::RenderFunction render);

}  // namespace ZplCore
