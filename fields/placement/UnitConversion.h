#pragma once

#include <functional>
#include <string_view>

#include "frontend/context/ContextProcessor.h"
#include "frontend/stream/ZplParse.h"

namespace ZplCore {

/// Conversions of the numbers of a stream into dots of the design resolution, by the unit of measure and the scale in
/// force. Each gives a callable that reads unit and scale when it is applied; `processor` has to outlive it.

/// Dots in one unit: 1 for dots, the dpi for inches, a 25th of it (whole dots) for millimetres.
unsigned GetUnitConversionFactor(ContextProcessor const& processor);

/// The magnitude in dots: a sign is lost, and with a unit other than dots the scale is divided out.
std::function<unsigned(double)> ToDots(ContextProcessor const& processor);
/// With the unit dots the scale is multiplied in. A negative value wraps.
std::function<unsigned(double)> ToDotsScaled(ContextProcessor const& processor);
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
std::function<unsigned(unsigned)> ToDotsScaleOnly(ContextProcessor const& processor);
/// Multiplies the scale in, whatever the unit.
std::function<unsigned(unsigned)> ApplyDpiScale(ContextProcessor const& processor);

/// The resolution that labels are designed for; 203 while no printer is attached.
unsigned DesignDpi(ContextProcessor const& processor);

}  // namespace ZplCore
