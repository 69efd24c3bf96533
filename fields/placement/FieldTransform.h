#pragma once

#include <functional>

#include "fields/placement/Geometry.h"
#include "frontend/context/ContextProcessor.h"
#include "frontend/stream/ZplTypes.h"

namespace ZplCore {

/// A shift that a symbology adds to its placement, in its own unturned coordinates. Empty stands for (0, 0).
using ShiftFunction = std::function<ZplPoint(ZplOrientation, Baseline, Justification)>;

/// Where and how a field stands, as the contexts say.
struct FieldPlacement {
    ZplPoint origin;  ///< dots, as the field origin commands stored it; the label home is not part of it
    ZplOrientation orientation = ZplOrientation::Normal;
    Baseline baseline = Baseline::Top;
    Justification justification = Justification::Left;

    static FieldPlacement From(ContextProcessor const& processor);
};

/// Turns a box of `size` about `origin`, so that it fills the box that starts there.
LinearTransform GetFieldLocalToGlobalTransform(ZplPoint origin, ZplPoint size, ZplOrientation orientation);
/// The complete transform of barcodes and graphics: turn, baseline, justification and the symbology's shift.
LinearTransform GetFieldLocalToGlobalTransform(ZplPoint origin, ZplPoint size, ZplOrientation orientation,
                                               Baseline baseline, Justification justification,
                                               ShiftFunction const& shift);
/// The two above with all values of the field in force.
LinearTransform GetFieldLocalToGlobalTransform(ContextProcessor const& processor, unsigned long width,
                                               unsigned long height);
LinearTransform GetFieldLocalToGlobalTransform(ContextProcessor const& processor, int width, int height,
                                               ShiftFunction const& shift);

/// The point for a target that turns a box by itself and wants the upper left corner of the turned box, if the local
/// corner (0, 0) of the unturned `width` x `height` box lands on `origin`.
ZplPoint GetGraphicContextOrigin(ZplPoint origin, ZplOrientation orientation, unsigned long width,
                                 unsigned long height);

/// Tells the next field where this one ended: read by typeset fields without coordinates.
void StoreNextFieldOrigin(ContextProcessor& processor, ZplPoint next);

}  // namespace ZplCore
