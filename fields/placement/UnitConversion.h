#pragma once

#include <cstddef>
#include <string_view>

#include "frontend/context/ContextProcessor.h"
#include "frontend/stream/ZplParse.h"

namespace ZplCore {

/// Conversions of the numbers of a stream into dots of the design resolution, by the unit of measure and the scale in
/// force. A callable reads unit and scale when it is applied; `processor` has to outlive it.

/// Dots in one unit: 1 for dots, the dpi for inches, a 25th of it (whole dots) for millimetres.
unsigned GetUnitConversionFactor(ContextProcessor const& processor);

/// The magnitude in dots: a sign is lost, and with a unit other than dots the scale is divided out.
unsigned InDots(double value, ContextProcessor const& processor);
inline auto ToDots(ContextProcessor const& processor) {
    return [&processor](double value) { return InDots(value, processor); };
}
/// With the unit dots the scale is multiplied in. A negative value wraps.
unsigned InDotsScaled(double value, ContextProcessor const& processor);
inline auto ToDotsScaled(ContextProcessor const& processor) {
    return [&processor](double value) { return InDotsScaled(value, processor); };
}
/// The rule of ToDotsScaled for values that may be negative; there is only the form for int.
template <typename T>
T ToDotsScaled(double value, ContextProcessor const& processor);
template <>
int ToDotsScaled<int>(double value, ContextProcessor const& processor);
/// A length parameter in the unit in force, as dots; one beyond every page reads as one that is too large. No value for
/// text that is none.
ZplParseResult<unsigned> ParseLength(ZplCommand const& command, std::size_t index, ContextProcessor const& processor);
/// What stands behind a number of dots where the stream's own numbers are of another unit: " dots", or else nothing.
std::string_view DotsAsUnit(ContextProcessor const& processor);
/// Multiplies the scale in if the unit is dots, and leaves other units unconverted.
unsigned InDotsScaleOnly(unsigned value, ContextProcessor const& processor);
inline auto ToDotsScaleOnly(ContextProcessor const& processor) {
    return [&processor](unsigned value) { return InDotsScaleOnly(value, processor); };
}
/// Multiplies the scale in, whatever the unit.
unsigned ByDpiScale(unsigned value, ContextProcessor const& processor);
inline auto ApplyDpiScale(ContextProcessor const& processor) {
    return [&processor](unsigned value) { return ByDpiScale(value, processor); };
}

/// The resolution that labels are designed for; 203 while no printer is attached.
unsigned DesignDpi(ContextProcessor const& processor);

}  // namespace ZplCore
