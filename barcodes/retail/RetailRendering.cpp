#include "barcodes/retail/RetailRendering.h"

#include <cmath>
#include <span>

#include "barcodes/frame/LinearFrame.h"
#include "barcodes/frame/SymbolFrame.h"
#include "fields/placement/RenderPoints.h"
#include "fields/text/TextDrawing.h"
#include "frontend/context/ZplContextKeys.h"

namespace ZplCore {

namespace {

constexpr unsigned NotchDepth = 13;  // dots
FontName const DigitFont = "A";

/// Modules from the left edge of the symbol.
struct ModuleRange {
    unsigned begin;
    unsigned end;
};
// Notches, between which the guards reach down; at UPC-A the outer digits do too. The module that a range leaves at the
// side of its digits is light.
constexpr ModuleRange Ean13Indices[] = {{4, 45}, {50, 91}};
constexpr ModuleRange EanIndices[] = {{4, 31}, {36, 63}};
constexpr ModuleRange UPCAIndices[] = {{10, 45}, {50, 84}};
constexpr ModuleRange UpcEIndices[] = {{4, 45}};

/// A group of digits and where it starts, in dots right of the symbol's left edge.
struct DigitGroup {
    std::string text;
    std::int64_t x;
};

/// The symbol on the page.
struct Notched {
    ContextProcessor& processor;
    Scripting::GraphicContext& target;
    FieldPlacement field;
    LinearTransform transform;
    ZplPoint factor;
    ZplPoint image;
    std::int64_t module;
    std::int64_t height;  ///< of the bars above the notches

    bool TurnsBack() const {
        return field.orientation == ZplOrientation::Inverted || field.orientation == ZplOrientation::BottomUp;
    }
    ZplPoint OnPage(ZplPoint local) const {
        return Rendering::PreOrPostRotationShift(transform, local, factor, field.baseline);
    }
    std::int64_t TextWidth(std::string const& text) const {
        return target.MeasureText(DigitFont, text, 1, 0, true) * module;
    }
};

void CutNotches(Scripting::SketchedBitmap& symbol, std::span<ModuleRange const> notches, unsigned module,
                unsigned height, SketchResolution const& resolution) {
    double const scale = static_cast<double>(resolution.printer.Value()) / static_cast<double>(resolution.design);
    auto const pixels = static_cast<unsigned long>(std::lround(module * scale));
    auto const top = static_cast<unsigned long>(std::lround(height * scale));
    for (auto const& [begin, end] : notches) {
        Scripting::Detail::ClearRectangleInBitmap(*symbol.rows, begin * pixels, top, (end - begin) * pixels,
                                                  symbol.bitmapHeight, (symbol.bitmapWidth + 7) / 8);
    }
}

Notched DrawSymbol(Barcode::Model::LinearBarcodeModel const& model, ContextProcessor& processor,
                   std::span<ModuleRange const> notches) {
    auto& target = *processor.GetGraphicContext();
    unsigned const module = processor.at(ZplContextKeys::BarcodeModuleWidth);
    unsigned const height = processor.at(ZplContextKeys::BarcodeHeight);
    auto const resolution = SketchResolution::Of(processor);
    auto symbol = Scripting::GraphicHelper::SketchLinearBarcode(model, module, 2 * module, height + NotchDepth,
                                                                resolution.printer, resolution.design);
    CutNotches(symbol, notches, module, height, resolution);

    auto const field = FieldPlacement::From(processor);
    int const w = static_cast<int>(symbol.logicalWidth);
    int const h = static_cast<int>(symbol.logicalHeight);
    auto const [image, next] =
        EANUPC::GenerateEANRenderPoints(field.orientation, field.baseline, field.justification, w, h);
    Notched const drawn{
        processor,
        target,
        field,
        GetFieldLocalToGlobalTransform(processor, symbol.logicalWidth, symbol.logicalHeight),
        Rendering::GenerateLocalJustificationFactor(field.orientation, field.baseline, field.justification, w, h),
        image,
        module,
        height};
    StoreNextFieldOrigin(processor, drawn.OnPage(next));
    DrawImage(target,
              {*symbol.rows, static_cast<unsigned>(symbol.bitmapWidth), static_cast<unsigned>(symbol.bitmapHeight)},
              drawn.OnPage(image), field.orientation, static_cast<unsigned>(symbol.logicalWidth),
              static_cast<unsigned>(symbol.logicalHeight), false);
    return drawn;
}

void DrawGroups(Notched const& symbol, bool lineAbove, std::span<DigitGroup const> groups) {
    constexpr std::int64_t GapBelow = 4;  // dots
    constexpr std::int64_t GapAbove = 9;  // dots
    std::int64_t const m = symbol.module;
    std::int64_t const back = symbol.TurnsBack() ? 1 : 0;
    std::int64_t const fontHeight = symbol.target.GetFontHeight(DigitFont);
    std::int64_t const y = lineAbove ? (m + 1) / 2 - GapAbove - m * fontHeight : symbol.height + GapBelow;
    std::int64_t const shift = lineAbove ? -(m / 2) - 2 + (1 - back) : -back;
    for (auto const& [text, x] : groups) {
        if (text.empty()) continue;
        ZplPoint const local = symbol.image + ZplPoint(static_cast<int>(x + shift), static_cast<int>(y));
        DrawUTF8Text(symbol.processor, text, 0, symbol.OnPage(local), DigitFont, static_cast<unsigned>(m),
                     static_cast<unsigned>(m));
    }
}

/// Where a text starts that stands in the middle of the modules from `begin` to `end`.
std::int64_t Centred(Notched const& symbol, std::string const& text, std::int64_t begin, std::int64_t end) {
    return begin * symbol.module + ((end - begin) * symbol.module - symbol.TextWidth(text)) / 2;
}

/// Digits outside the guard bars stand as far from them as the symbology's quiet zone asks.
constexpr std::int64_t LeftOfSymbol = -9;  // modules
constexpr std::int64_t RightGap = 3;       // modules

}  // namespace

std::pair<ZplPoint, ZplPoint> EANUPC::GenerateEANRenderPoints(ZplOrientation orientation, Baseline baseline,
                                                              Justification justification, int width, int height) {
    auto points = Rendering::GenerateRenderPoints(orientation, baseline, justification, width, height);
    bool const isUpward = orientation == ZplOrientation::Normal || orientation == ZplOrientation::BottomUp;
    if (baseline == Baseline::Bottom && isUpward) points.first = ZplPoint(points.first.x, -height);
    return points;
}

void RenderEAN13(bool printLine, bool lineAbove, Barcode::Model::LinearBarcodeModel const& model,
                 ContextProcessor& processor, TextGroups const& groups) {
    Notched const symbol = DrawSymbol(model, processor, Ean13Indices);
    if (!printLine) return;
    std::int64_t const m = symbol.module;
    std::int64_t const left = 10 * m - (m + 1) / 2;
    DigitGroup const texts[] = {
        {groups[0], LeftOfSymbol * m}, {groups[1], left}, {groups[2], left + symbol.TextWidth(groups[1]) + 5 * m}};
    DrawGroups(symbol, lineAbove, texts);
}

void RenderEAN8(bool printLine, bool lineAbove, Barcode::Model::LinearBarcodeModel const& model,
                ContextProcessor& processor, TextGroups const& groups) {
    Notched const symbol = DrawSymbol(model, processor, EanIndices);
    if (!printLine) return;
    DigitGroup const texts[] = {{groups[0], Centred(symbol, groups[0], 3, 31)},
                                {groups[1], Centred(symbol, groups[1], 36, 64)}};
    DrawGroups(symbol, lineAbove, texts);
}

void RenderUPCA(bool printLine, bool lineAbove, bool checkDigit, Barcode::Model::LinearBarcodeModel const& model,
                ContextProcessor& processor, TextGroups const& groups) {
    Notched const symbol = DrawSymbol(model, processor, UPCAIndices);
    if (!printLine) return;
    DigitGroup const texts[] = {{groups[0], LeftOfSymbol * symbol.module},
                                {groups[1], Centred(symbol, groups[1], 10, 46)},
                                {groups[2], Centred(symbol, groups[2], 49, 85)},
                                {checkDigit ? groups[3] : "", (95 + RightGap) * symbol.module}};
    DrawGroups(symbol, lineAbove, texts);
}

void RenderUPCE(bool printLine, bool lineAbove, bool checkDigit, Barcode::Model::LinearBarcodeModel const& model,
                ContextProcessor& processor, TextGroups const& groups) {
    Notched const symbol = DrawSymbol(model, processor, UpcEIndices);
    if (!printLine) return;
    DigitGroup const texts[] = {{groups[0], LeftOfSymbol * symbol.module},
                                {groups[1], Centred(symbol, groups[1], 3, 46)},
                                {checkDigit ? groups[2] : "", (51 + RightGap) * symbol.module}};
    DrawGroups(symbol, lineAbove, texts);
}

void RenderExt(bool printLine, bool lineAbove, Barcode::Model::LinearBarcodeModel const& model,
               ContextProcessor& processor, TextGroups const& groups) {
    DrawLinearBarcode(processor, model, LinearBarcodeStyle::Fixed(processor, printLine, lineAbove), groups[0]);
}

}  // namespace ZplCore
