#include "fields/placement/FieldTransform.h"

#include "fields/placement/RenderPoints.h"
#include "frontend/context/ZplContextKeys.h"

namespace ZplCore {

FieldPlacement FieldPlacement::From(ContextProcessor const& processor) {
    return {{static_cast<int>(processor.at(ZplContextKeys::FieldOriginX)),
             static_cast<int>(processor.at(ZplContextKeys::FieldOriginY))},
            processor.at(ZplContextKeys::FieldOrientation),
            processor.at(ZplContextKeys::FieldBaseline),
            processor.at(ZplContextKeys::FieldJustification)};
}

LinearTransform GetFieldLocalToGlobalTransform(ZplPoint origin, ZplPoint size, ZplOrientation orientation) {
    // The turned box starts at the origin; a turn puts the field's first dot on the last one of a side, n - 1 of n.
    switch (orientation) {
        case ZplOrientation::Rotated: return {0, -1, 0, 1, origin + ZplPoint(WrapSubtract(size.y, 1), 0)};
        case ZplOrientation::Inverted: return {-1, 0, -1, 0, origin + size - ZplPoint(1, 1)};
        case ZplOrientation::BottomUp: return {0, 1, 0, -1, origin + ZplPoint(0, WrapSubtract(size.x, 1))};
        case ZplOrientation::Normal: break;
    }
    return LinearTransform(origin);
}

namespace {

/// What the bottom baseline adds in the field's own frame. At 90 degrees there is deliberately none.
ZplPoint BaselineShift(ZplPoint size, ZplOrientation orientation) {
    switch (orientation) {
        case ZplOrientation::Normal: return {0, WrapSubtract(1, size.y)};
        case ZplOrientation::Inverted: return {size.x, 0};
        case ZplOrientation::BottomUp: return {size.x, WrapSubtract(1, size.y)};
        case ZplOrientation::Rotated: break;
    }
    return {};
}

}  // namespace

LinearTransform GetFieldLocalToGlobalTransform(ZplPoint origin, ZplPoint size, ZplOrientation orientation,
                                               Baseline baseline, Justification justification,
                                               ShiftFunction const& shift) {
    LinearTransform const turn = GetFieldLocalToGlobalTransform(origin, size, orientation);
    LinearTransform const justify(
        Rendering::GenerateLocalJustificationFactor(orientation, baseline, justification, size.x, size.y));
    ZplPoint local = shift ? shift(orientation, baseline, justification) : ZplPoint();
    if (baseline == Baseline::Bottom) local = local + BaselineShift(size, orientation);
    // With the top baseline justification moves the field on the page, otherwise in its own turned frame.
    return baseline == Baseline::Top ? justify * turn * LinearTransform(local)
                                     : turn * LinearTransform(local) * justify;
}

LinearTransform GetFieldLocalToGlobalTransform(ContextProcessor const& processor, unsigned long width,
                                               unsigned long height) {
    auto const field = FieldPlacement::From(processor);
    return GetFieldLocalToGlobalTransform(field.origin, {static_cast<int>(width), static_cast<int>(height)},
                                          field.orientation);
}

LinearTransform GetFieldLocalToGlobalTransform(ContextProcessor const& processor, int width, int height,
                                               ShiftFunction const& shift) {
    auto const field = FieldPlacement::From(processor);
    return GetFieldLocalToGlobalTransform(field.origin, {width, height}, field.orientation, field.baseline,
                                          field.justification, shift);
}

ZplPoint GetGraphicContextOrigin(ZplPoint origin, ZplOrientation orientation, unsigned long width,
                                 unsigned long height) {
    // The turns from above undone: from where the field's first dot lies back to the corner of the turned box.
    int const lastColumn = WrapSubtract(static_cast<int>(width), 1);
    int const lastRow = WrapSubtract(static_cast<int>(height), 1);
    switch (orientation) {
        case ZplOrientation::Rotated: return origin - ZplPoint(lastRow, 0);
        case ZplOrientation::Inverted: return origin - ZplPoint(lastColumn, lastRow);
        case ZplOrientation::BottomUp: return origin - ZplPoint(0, lastColumn);
        case ZplOrientation::Normal: break;
    }
    return origin;
}

void StoreNextFieldOrigin(ContextProcessor& processor, ZplPoint next) {
    processor.set(ContextProcessor::FormatContext, ZplContextKeys::NextFieldOriginX, static_cast<unsigned>(next.x));
    processor.set(ContextProcessor::FormatContext, ZplContextKeys::NextFieldOriginY, static_cast<unsigned>(next.y));
}

}  // namespace ZplCore
