#include "fields/graphics/GraphicHandlers.h"

#include <algorithm>

#include "Scripting/GraphicContext.h"
#include "fields/graphics/GraphicPlacement.h"
#include "fields/graphics/MarkSketch.h"
#include "fields/map/FieldFunction.h"
#include "fields/placement/UnitConversion.h"
#include "fields/text/Fonts.h"
#include "frontend/context/ZplContextKeys.h"
#include "frontend/handlers/CommandHandlerPool.h"
#include "frontend/stream/Ascii.h"
#include "frontend/stream/ParameterRange.h"
#include "frontend/stream/ZplParse.h"

namespace {

constexpr unsigned LargestBoxSide = 32000;   // dots
constexpr unsigned LargestRoundSide = 4095;  // dots
constexpr unsigned SmallestRoundSide = 3;    // dots
constexpr unsigned SmallestThickness = 1;    // dots

enum Color : unsigned { Black = 0, White = 1 };

/// A size in dots, brought into its limits; `fallback` if there is none.
unsigned ParseSize(ZplCommand const& command, std::size_t index, ContextProcessor const& processor, unsigned smallest,
                   unsigned largest, unsigned fallback) {
    auto const size = ZplCore::ParseLength(command, index, processor);
    // Sides of nothing are a custom: they make lines.
    if (!size) return fallback;
    return Bounded(command, index, std::max(*size, smallest), {smallest, largest, ZplCore::DotsAsUnit(processor)});
}

Color ParseColor(ZplCommand const& command, std::size_t index) {
    char const letter = ZplParse<char>(command, index).ValueOr('B');
    return ToAsciiUpper(letter) == 'W' ? White : Black;
}

/// Sizes in dots.
struct Shape {
    ZplCore::FieldKind kind;
    unsigned width;
    unsigned height;
    unsigned thickness;
    Color color;
};

void DescribeShape(Shape const& shape, ZplCore::FieldNotes& notes) {
    notes.kind = shape.kind;
    notes.Add("width", shape.width, "dots")
        .Add("height", shape.height, "dots")
        .Add("thickness", shape.thickness, "dots")
        .Add("color", shape.color == White ? "white" : "black");
}

/// `draw` takes the target and the place of the upper left corner of the shape; `describe` adds to what is told of it.
template <typename Draw, typename Describe>
void StoreShape(Context& current, ContextProcessor& processor, Shape const& shape, Draw draw, Describe describe) {
    auto const render = [=](ContextProcessor& atRender) {
        auto const& target = atRender.GetGraphicContext();
        if (!target) return;
        target->SetFieldVariable(atRender.at(ZplContextKeys::FieldVariable));
        ZplCore::ZplPoint const point = ZplCore::PlaceGraphic(atRender, shape.width, shape.height);
        target->SetRotation(0);
        target->SetColor(shape.color);
        draw(*target, point);
        target->SetColor(Black);
    };
    ZplCore::StoreFieldFunction(current, processor, render, [=](ContextProcessor const&, ZplCore::FieldNotes& notes) {
        DescribeShape(shape, notes);
        describe(notes);
    });
}

void StoreEllipse(Context& current, ContextProcessor& processor, Shape const& shape) {
    StoreShape(
        current, processor, shape,
        [=](Scripting::GraphicContext& target, ZplCore::ZplPoint p) {
            target.DrawEllipse(p.x, p.y, shape.width, shape.height, shape.thickness);
        },
        [](ZplCore::FieldNotes&) {});
}

void DrawMarks(ContextProcessor& processor) {
    constexpr unsigned DefaultSide = 24;  // dots; in the cell of the smallest font a mark would be a blot
    unsigned height = processor.at(ZplContextKeys::FontHeight);
    unsigned width = processor.at(ZplContextKeys::FontWidth);
    if (height == 0) height = width != 0 ? width : DefaultSide;
    if (width == 0) width = height;
    auto const marks = ZplCore::SketchMarks(processor.at(ZplContextKeys::FieldData), width, height);
    if (!marks) return;
    ZplCore::DrawBitmap(processor, {marks->rows, marks->width, marks->height}, marks->height,
                        processor.at(ZplContextKeys::FieldOrientation));
}

void DescribeMarks(ContextProcessor const& at, ZplCore::FieldNotes& notes) {
    notes.kind = ZplCore::FieldKind::GraphicSymbol;
    notes.Add("height", at.at(ZplContextKeys::FontHeight), "dots")
        .Add("width", at.at(ZplContextKeys::FontWidth), "dots");
}

/// A box that its border fills and that is long is a line to people.
ZplCore::FieldKind KindOfBox(unsigned width, unsigned height, unsigned thickness) {
    constexpr unsigned LeastLength = 10;  // times its thickness
    auto const [shorter, longer] = std::minmax(width, height);
    bool const isLine = shorter <= thickness && longer / LeastLength >= shorter;
    return isLine ? ZplCore::FieldKind::Line : ZplCore::FieldKind::Box;
}

/// `^GB`: a box whose border grows inwards, or a line.
class GraphicBoxHandler : public HandlerFor<CommandId("GB")> {
public:
    bool HandleCommand(Context& current, ZplCommand const& command, ContextProcessor& processor) override {
        constexpr unsigned MostRounded = 8;  // eighths of half the shorter side
        unsigned const thickness =
            ParseSize(command, 2, processor, SmallestThickness, LargestBoxSide, SmallestThickness);
        // A side below the thickness is raised to it: a height of 0 makes a line.
        unsigned const width = ParseSize(command, 0, processor, thickness, LargestBoxSide, thickness);
        unsigned const height = ParseSize(command, 1, processor, thickness, LargestBoxSide, thickness);
        unsigned const rounding = Bounded(command, 4, ZplParse<unsigned>(command, 4).ValueOr(0), {0, MostRounded});
        unsigned const radius = rounding * std::min(width, height) / (2 * MostRounded);
        StoreShape(
            current, processor, {KindOfBox(width, height, thickness), width, height, thickness, ParseColor(command, 3)},
            [=](Scripting::GraphicContext& target, ZplCore::ZplPoint p) {
                target.DrawBox(p.x, p.y, width, height, thickness, radius);
            },
            [=](ZplCore::FieldNotes& notes) { notes.Add("rounding", rounding); });
        return true;
    }
};

/// `^GC`: a circle.
class GraphicCircleHandler : public HandlerFor<CommandId("GC")> {
public:
    bool HandleCommand(Context& current, ZplCommand const& command, ContextProcessor& processor) override {
        unsigned const diameter =
            ParseSize(command, 0, processor, SmallestRoundSide, LargestRoundSide, SmallestRoundSide);
        unsigned const thickness =
            ParseSize(command, 1, processor, SmallestThickness, LargestRoundSide, SmallestThickness);
        StoreEllipse(current, processor,
                     {ZplCore::FieldKind::Circle, diameter, diameter, thickness, ParseColor(command, 2)});
        return true;
    }
};

/// `^GD`: a line between two corners of a box.
class GraphicDiagonalLineHandler : public HandlerFor<CommandId("GD")> {
public:
    bool HandleCommand(Context& current, ZplCommand const& command, ContextProcessor& processor) override {
        constexpr unsigned SmallestSide = 3;  // dots
        unsigned const thickness =
            ParseSize(command, 2, processor, SmallestThickness, LargestBoxSide, SmallestThickness);
        unsigned const absent = std::max(thickness, SmallestSide);
        unsigned const width = ParseSize(command, 0, processor, SmallestSide, LargestBoxSide, absent);
        unsigned const height = ParseSize(command, 1, processor, SmallestSide, LargestBoxSide, absent);
        char const lean = ZplParse<char>(command, 4).ValueOr('R');
        bool const leansRight = lean != 'L' && lean != 'l' && lean != '\\';
        StoreShape(
            current, processor, {ZplCore::FieldKind::Diagonal, width, height, thickness, ParseColor(command, 3)},
            [=](Scripting::GraphicContext& target, ZplCore::ZplPoint p) {
                target.DrawDiagonal(p.x, p.y, width, height, thickness, leansRight);
            },
            [=](ZplCore::FieldNotes& notes) { notes.Add("leans", leansRight ? "right" : "left"); });
        return true;
    }
};

/// `^GE`: an ellipse.
class GraphicEllipseHandler : public HandlerFor<CommandId("GE")> {
public:
    bool HandleCommand(Context& current, ZplCommand const& command, ContextProcessor& processor) override {
        unsigned const thickness =
            ParseSize(command, 2, processor, SmallestThickness, LargestRoundSide, SmallestThickness);
        unsigned const absent = std::max(thickness, SmallestRoundSide);
        unsigned const width = ParseSize(command, 0, processor, SmallestRoundSide, LargestRoundSide, absent);
        unsigned const height = ParseSize(command, 1, processor, SmallestRoundSide, LargestRoundSide, absent);
        StoreEllipse(current, processor,
                     {ZplCore::FieldKind::Ellipse, width, height, thickness, ParseColor(command, 3)});
        return true;
    }
};

/// `^GS`: registered, copyright, trade and approval marks, one for each letter of the data.
class GraphicSymbolHandler : public HandlerFor<CommandId("GS")> {
public:
    bool HandleCommand(Context& current, ZplCommand const& command, ContextProcessor& processor) override {
        if (auto const orientation = ZplParse<ZplOrientation>(command, 0))
            processor.set(current, ZplContextKeys::FieldOrientation, *orientation);
        // What is left out is the size of the default font.
        auto const [defaultHeight, defaultWidth] = ZplCore::GetFontBoundary(processor, {}, {});
        processor.set(current, ZplContextKeys::FontHeight,
                      ParseSize(command, 1, processor, 0, LargestBoxSide, defaultHeight));
        processor.set(current, ZplContextKeys::FontWidth,
                      ParseSize(command, 2, processor, 0, LargestBoxSide, defaultWidth));
        ZplCore::StoreFieldFunction(current, processor, DrawMarks, DescribeMarks);
        return true;
    }
};

}  // namespace

void AddGraphicHandlers(CommandHandlerPool& pool) {
    pool.AddToCache<GraphicBoxHandler>();
    pool.AddToCache<GraphicCircleHandler>();
    pool.AddToCache<GraphicDiagonalLineHandler>();
    pool.AddToCache<GraphicEllipseHandler>();
    pool.AddToCache<GraphicSymbolHandler>();
}
