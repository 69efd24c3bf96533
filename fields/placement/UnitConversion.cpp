#include "fields/placement/UnitConversion.h"

#include <cmath>

#include "Scripting/PrinterContextInterface.h"
#include "frontend/context/ZplContextKeys.h"

namespace ZplCore {

namespace {

bool UnitIsDots(ContextProcessor const& processor) {
    return processor.at(ZplContextKeys::UnitOfMeasure) == ZplUnitOfMeasure::Dots;
}

unsigned Scale(ContextProcessor const& processor) { return processor.at(ZplContextKeys::DpiScaleFactor); }

long RoundScaled(double value, ContextProcessor const& processor) {
    return std::lround(value * (UnitIsDots(processor) ? Scale(processor) : GetUnitConversionFactor(processor)));
}

}  // namespace

unsigned DesignDpi(ContextProcessor const& processor) {
    constexpr unsigned WithoutPrinter = 203;
    auto const& printer = processor.GetPrinterContext();
    return printer ? printer->DesignDpi().Value() : WithoutPrinter;
}

unsigned GetUnitConversionFactor(ContextProcessor const& processor) {
    constexpr unsigned WholeMillimetersPerInch = 25;
    switch (processor.at(ZplContextKeys::UnitOfMeasure)) {
        case ZplUnitOfMeasure::Inches: return DesignDpi(processor);
        case ZplUnitOfMeasure::Millimeters: return DesignDpi(processor) / WholeMillimetersPerInch;
        case ZplUnitOfMeasure::Dots: break;
    }
    return 1;
}

unsigned InDots(double value, ContextProcessor const& processor) {
    double const dots = UnitIsDots(processor) ? value : value * GetUnitConversionFactor(processor) / Scale(processor);
    auto const rounded = static_cast<unsigned long>(std::lround(dots));
    return static_cast<unsigned>(static_cast<long>(rounded) < 0 ? 0UL - rounded : rounded);
}

unsigned InDotsScaled(double value, ContextProcessor const& processor) {
    return static_cast<unsigned>(RoundScaled(value, processor));
}

template <>
int ToDotsScaled<int>(double value, ContextProcessor const& processor) {
    return static_cast<int>(RoundScaled(value, processor));
}

ZplParseResult<unsigned> ParseLength(ZplCommand const& command, std::size_t index, ContextProcessor const& processor) {
    constexpr double Beyond = 1e6;
    return ZplParse<double>(command, index).Map([&](double value) {
        return static_cast<unsigned>(RoundScaled(std::min(value, Beyond), processor));
    });
}

std::string_view DotsAsUnit(ContextProcessor const& processor) { return UnitIsDots(processor) ? "" : " dots"; }

unsigned InDotsScaleOnly(unsigned value, ContextProcessor const& processor) {
    return UnitIsDots(processor) ? value * Scale(processor) : value;
}

unsigned ByDpiScale(unsigned value, ContextProcessor const& processor) { return value * Scale(processor); }

}  // namespace ZplCore
