#pragma once

#include <utility>

#include "fields/placement/Geometry.h"
#include "frontend/stream/ZplTypes.h"

/// The placement of text. All values are dots, all points local to the field before its transform.
namespace ZplCore::Rendering {

/// `tail` is a sixth or a third of the average character width, `spacing` what is added between characters.
ZplPoint GenerateLocalTextJustificationFactor(ZplOrientation orientation, Baseline baseline,
                                              Justification justification, Direction direction, int height, int width,
                                              int averageWidth, int tail, int spacing);

/// The point to draw at, and the point at which the next field starts. `extra` is a correction for some fields that
/// stand right of their origin, otherwise 0.
std::pair<ZplPoint, ZplPoint> GenerateTextRenderPoints(ZplOrientation orientation, Baseline baseline,
                                                       Justification justification, Direction direction, int ascent,
                                                       int descent, int width, int height, int tail, int extra,
                                                       int averageWidth, int spacing);

}  // namespace ZplCore::Rendering
