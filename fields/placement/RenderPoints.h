#pragma once

#include <utility>

#include "fields/placement/FieldTransform.h"

/// Where a field of a measured size is drawn, and where the next one starts: the placement of barcodes and graphics.
/// All points are in dots, local to the field before its transform.
namespace ZplCore::Rendering {

ZplPoint GenerateLocalJustificationFactor(ZplOrientation orientation, Baseline baseline, Justification justification,
                                          int width, int height);

/// The point to draw at, and the point at which the next field starts.
std::pair<ZplPoint, ZplPoint> GenerateRenderPoints(ZplOrientation orientation, Baseline baseline,
                                                   Justification justification, int width, int height);

/// `point` on the page, moved by `shift` on the page with the top baseline, in the field's frame otherwise.
ZplPoint PreOrPostRotationShift(LinearTransform const& transform, ZplPoint point, ZplPoint shift, Baseline baseline);

/// The local next point of a barcode of `width` x `height` dots.
ZplPoint CreateLocalNextPoint(ContextProcessor const& processor, int width, int height, ShiftFunction const& shift);

}  // namespace ZplCore::Rendering
