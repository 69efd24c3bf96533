#pragma once

#include "Scripting/InkGauge.h"
#include "printengine/src/raster/Raster.h"

namespace PrintEngine::Drawing {

/// The smallest box that holds all set bits of a picture.
Scripting::PixelBox InkOf(BitRows const& picture);

/// Where a box of a picture of `width` x `height` pixels lies when the picture is turned clockwise by 0, 90, 180 or 270
/// degrees.
Scripting::PixelBox Turned(Scripting::PixelBox const& box, int width, int height, int degrees);

}  // namespace PrintEngine::Drawing
