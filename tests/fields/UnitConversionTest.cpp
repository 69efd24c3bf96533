#include "fields/placement/UnitConversion.h"

#include <gtest/gtest.h>

#include "../support/FieldBench.h"

using namespace ZplCore;

namespace {

struct UnitRow {
    ZplUnitOfMeasure unit;
    unsigned scale;
    unsigned dpi;
    double value;
    unsigned toDots;
    unsigned toDotsScaled;
};

constexpr auto Dots = ZplUnitOfMeasure::Dots;
constexpr auto Inches = ZplUnitOfMeasure::Inches;
constexpr auto Millimeters = ZplUnitOfMeasure::Millimeters;

// ToDots divides by the scale in inches and millimetres, ToDotsScaled multiplies by it in dots: both on purpose.
constexpr UnitRow Rows[] = {
    {Dots, 1, 300, 10, 10, 10},
    {Dots, 2, 300, 10, 10, 20},
    {Dots, 1, 300, -10.4, 10, 4294967286U},
    {Dots, 1, 300, 2.5, 3, 3},
    {Inches, 1, 203, 1.5, 305, 305},
    {Inches, 2, 300, 1, 150, 300},
    {Millimeters, 1, 300, 25, 300, 300},
    {Millimeters, 1, 600, 25, 600, 600},
    {Millimeters, 1, 203, 25, 200, 200},
    {Inches, 1, 300, -1, 300, 4294966996U},
};

TEST(UnitConversion, ByUnitScaleAndResolution) {
    for (auto const& row : Rows) {
        FieldBench bench(row.dpi);
        bench.processor.set(ContextProcessor::SystemContext, ZplContextKeys::UnitOfMeasure, row.unit);
        bench.processor.set(ContextProcessor::SystemContext, ZplContextKeys::DpiScaleFactor, row.scale);
        EXPECT_EQ(ToDots(bench.processor)(row.value), row.toDots) << row.value;
        EXPECT_EQ(ToDotsScaled(bench.processor)(row.value), row.toDotsScaled) << row.value;
        EXPECT_EQ(ToDotsScaled<int>(row.value, bench.processor), static_cast<int>(row.toDotsScaled)) << row.value;
    }
}

TEST(UnitConversion, ReadsTheUnitWhenItIsApplied) {
    FieldBench bench(300);
    auto const toDots = ToDots(bench.processor);
    auto const scaleOnly = ToDotsScaleOnly(bench.processor);
    auto const scaled = ApplyDpiScale(bench.processor);
    bench.processor.set(ContextProcessor::SystemContext, ZplContextKeys::UnitOfMeasure, Inches);
    bench.processor.set(ContextProcessor::SystemContext, ZplContextKeys::DpiScaleFactor, 2U);
    EXPECT_EQ(toDots(2), 300U);
    EXPECT_EQ(scaleOnly(7), 7U);
    EXPECT_EQ(scaled(7), 14U);
}

}  // namespace
