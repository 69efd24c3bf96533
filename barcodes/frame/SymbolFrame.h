#pragma once

#include <cstdint>
#include <vector>

#include "Scripting/Dpi.h"
#include "frontend/context/ContextProcessor.h"

/// What symbols of every kind are drawn by.
namespace ZplCore {

/// Places and draws the bitmap of a symbol that has no line, and stores where the next field starts.
void RenderSimpleBarcode(ContextProcessor& processor, std::vector<std::uint8_t> const& bitmap,
                         unsigned long logicalWidth, unsigned long logicalHeight, unsigned long bitmapWidth);

/// The dpi of the target, and that of the design, for the sketching of a symbol.
struct SketchResolution {
    Scripting::Dpi printer;
    unsigned long design;

    static SketchResolution Of(ContextProcessor const& processor);
};

}  // namespace ZplCore
