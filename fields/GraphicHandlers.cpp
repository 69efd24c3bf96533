#include "fields/GraphicHandlers.h"

#include <algorithm>

#include "Scripting/GraphicContext.h"
#include "fields/Fonts.h"
#include "fields/GraphicFieldHandler.h"
#include "fields/GraphicPlacement.h"
#include "fields/TextElementProcessor.h"
#include "fields/UnitConversion.h"
#include "foundation/Log.h"
#include "frontend/context/Setting.h"
#include "frontend/context/ZplContextKeys.h"
#include "frontend/handlers/CommandHandlerPool.h"
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
    auto const size = ZplParse<double>(command, index).Map(ZplCore::ToDotsScaled(processor));
    return size ? std::clamp(*size, smallest, largest) : fallback;
}

Color ParseColor(ZplCommand const& command, std::size_t index) {
    char const letter = ZplParse<char>(command, index).ValueOr('B');
    return letter == 'W' || letter == 'w' ? White : Black;
}

/// A drawing of a size, in a colour; `draw` takes the target and the place of its upper left corner.
template <typename Draw>
void StoreShape(Context& current, ContextProcessor& processor, unsigned width, unsigned height, Color color,
                Draw draw) {
    ZplContextKeys::RenderFunction const render = [=](ContextProcessor& atRender) {
        auto const& target = atRender.GetGraphicContext();
        if (!target) return;
        target->SetFieldVariable(atRender.at(ZplContextKeys::FieldVariable));
        ZplCore::ZplPoint const point = ZplCore::PlaceGraphic(atRender, width, height);
        target->SetRotation(0);
        target->SetColor(color);
        draw(*target, point);
        target->SetColor(Black);
    };
    StoreSetting(current, processor, ZplContextKeys::FieldRenderFunction, render);
}

void StoreEllipse(Context& current, ContextProcessor& processor, unsigned width, unsigned height, unsigned thickness,
                  Color color) {
    StoreShape(current, processor, width, height, color, [=](Scripting::GraphicContext& target, ZplCore::ZplPoint p) {
        target.DrawEllipse(p.x, p.y, width, height, thickness);
    });
}

/// The marks by their letters, as characters of font 0.
struct Symbol {
    char letter;
    std::string_view text;
};
constexpr Symbol Symbols[] = {
    {'A', "\xC2\xAE"},      // registered
    {'B', "\xC2\xA9"},      // copyright
    {'C', "\xE2\x84\xA2"},  // trade mark
    {'D', "UL"},            // listed by an approval body
    {'E', "CSA"},           // certified by an approval body
};

void DrawSymbols(ContextProcessor& processor) {
    std::string text;
    for (char const letter : processor.at(ZplContextKeys::FieldData)) {
        for (auto const& symbol : Symbols) {
            if (symbol.letter == letter) text += symbol.text;
        }
    }
    ZplCore::Sketching::TextElementProcessor::ProcessText(std::move(text), processor);
}

}  // namespace

bool GraphicBoxHandler::HandleCommand(Context& current, ZplCommand const& command, ContextProcessor& processor) {
    constexpr unsigned MostRounded = 8;  // eighths of half the shorter side
    unsigned const thickness = ParseSize(command, 2, processor, SmallestThickness, LargestBoxSide, SmallestThickness);
    // A side below the thickness is raised to it: a height of 0 makes a line.
    unsigned const width = ParseSize(command, 0, processor, thickness, LargestBoxSide, thickness);
    unsigned const height = ParseSize(command, 1, processor, thickness, LargestBoxSide, thickness);
    unsigned const rounding = std::min(ZplParse<unsigned>(command, 4).ValueOr(0), MostRounded);
    unsigned const radius = rounding * std::min(width, height) / (2 * MostRounded);
    StoreShape(current, processor, width, height, ParseColor(command, 3),
               [=](Scripting::GraphicContext& target, ZplCore::ZplPoint p) {
                   target.DrawBox(p.x, p.y, width, height, thickness, radius);
               });
    return true;
}

bool GraphicCircleHandler::HandleCommand(Context& current, ZplCommand const& command, ContextProcessor& processor) {
    unsigned const diameter = ParseSize(command, 0, processor, SmallestRoundSide, LargestRoundSide, SmallestRoundSide);
    unsigned const thickness = ParseSize(command, 1, processor, SmallestThickness, LargestRoundSide, SmallestThickness);
    StoreEllipse(current, processor, diameter, diameter, thickness, ParseColor(command, 2));
    return true;
}

bool GraphicDiagonalLineHandler::HandleCommand(Context& current, ZplCommand const& command,
                                               ContextProcessor& processor) {
    constexpr unsigned SmallestSide = 3;  // dots
    unsigned const thickness = ParseSize(command, 2, processor, SmallestThickness, LargestBoxSide, SmallestThickness);
    unsigned const absent = std::max(thickness, SmallestSide);
    unsigned const width = ParseSize(command, 0, processor, SmallestSide, LargestBoxSide, absent);
    unsigned const height = ParseSize(command, 1, processor, SmallestSide, LargestBoxSide, absent);
    char const lean = ZplParse<char>(command, 4).ValueOr('R');
    bool const leansRight = lean != 'L' && lean != 'l' && lean != '\\';
    StoreShape(current, processor, width, height, ParseColor(command, 3),
               [=](Scripting::GraphicContext& target, ZplCore::ZplPoint p) {
                   target.DrawDiagonal(p.x, p.y, width, height, thickness, leansRight);
               });
    return true;
}

bool GraphicEllipseHandler::HandleCommand(Context& current, ZplCommand const& command, ContextProcessor& processor) {
    unsigned const thickness = ParseSize(command, 2, processor, SmallestThickness, LargestRoundSide, SmallestThickness);
    unsigned const absent = std::max(thickness, SmallestRoundSide);
    unsigned const width = ParseSize(command, 0, processor, SmallestRoundSide, LargestRoundSide, absent);
    unsigned const height = ParseSize(command, 1, processor, SmallestRoundSide, LargestRoundSide, absent);
    StoreEllipse(current, processor, width, height, thickness, ParseColor(command, 3));
    return true;
}

bool GraphicSymbolHandler::HandleCommand(Context& current, ZplCommand const& command, ContextProcessor& processor) {
    if (auto const orientation = ZplParse<ZplOrientation>(command, 0))
        StoreSetting(current, processor, ZplContextKeys::FieldOrientation, *orientation);
    auto const parse = [&](std::size_t index) {
        return ZplParse<double>(command, index).Map(ZplCore::ToDots(processor));
    };
    auto const [height, width] = ZplCore::GetFontBoundary(processor, parse(1), parse(2));
    StoreSetting(current, processor, ZplContextKeys::FontHeight, height);
    StoreSetting(current, processor, ZplContextKeys::FontWidth, width);
    std::variant<ZplCore::BuiltInFont, ZplCore::UserFont> const font = ZplCore::BuiltInFont{'0'};
    StoreSetting(current, processor, ZplContextKeys::FontIdentifier, font);
    StoreSetting(current, processor, ZplContextKeys::FieldRenderFunction, ZplContextKeys::RenderFunction(DrawSymbols));
    return true;
}

void AddGraphicHandlers(CommandHandlerPool& pool) {
    pool.AddToCache<GraphicBoxHandler>();
    pool.AddToCache<GraphicCircleHandler>();
    pool.AddToCache<GraphicDiagonalLineHandler>();
    pool.AddToCache<GraphicEllipseHandler>();
    pool.AddToCache<GraphicFieldHandler>();
    pool.AddToCache<GraphicSymbolHandler>();
}
