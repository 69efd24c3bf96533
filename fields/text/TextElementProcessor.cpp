#include "fields/text/TextElementProcessor.h"

#include <cmath>

#include "Scripting/GraphicContext.h"
#include "fields/placement/RenderPoints.h"
#include "fields/placement/TextRenderPoints.h"
#include "fields/placement/UnitConversion.h"
#include "fields/text/FieldText.h"
#include "fields/text/Fonts.h"
#include "fields/text/TextFont.h"
#include "fields/text/TextPlacementCorrection.h"
#include "frontend/context/Utf8Text.h"
#include "frontend/context/ZplContextKeys.h"

namespace ZplCore::Sketching {

namespace {

/// A text field on its way to the page.
struct TextField {
    FieldPlacement placement;
    TextRun run;
    TextFont font;
    TextMeasures measures;
};

int ToInt(std::int64_t dots) { return static_cast<int>(dots); }

struct DevicePoints {
    ZplPoint render;
    ZplPoint next;
};

/// Render and next point, local to the field.
DevicePoints LocalPoints(TextField const& field, int extra, ContextProcessor const& processor) {
    auto const& [placement, run, font, m] = field;
    auto [render, next] = Rendering::GenerateTextRenderPoints(
        placement.orientation, placement.baseline, placement.justification, run.direction, ToInt(m.ascent),
        ToInt(m.descent), ToInt(m.width), ToInt(m.height), ToInt(m.tail), extra, ToInt(m.averageWidth), run.spacing);
    render =
        render + ZplPoint(0, TextProcessing::Get600DpiVerticalOffset(font.zplName, Scripting::Dpi(DesignDpi(processor)),
                                                                     placement.orientation, font.magnificationY));
    bool const isTop = placement.baseline == Baseline::Top;
    ZplPoint const leading(0, ToInt(m.leading));
    if (isTop && (placement.orientation == ZplOrientation::Normal || placement.orientation == ZplOrientation::BottomUp))
        next = next - leading;
    if (!isTop && placement.orientation == ZplOrientation::Inverted && run.direction == Direction::Vertical)
        next = next + leading;
    return {render, next};
}

/// Text that runs downwards from its base ends beside its last character by a tail.
ZplPoint VerticalNextCorrection(TextField const& field) {
    if (field.run.direction != Direction::Vertical || field.placement.baseline != Baseline::Bottom) return {};
    int const tail = ToInt(field.measures.tail);
    switch (field.placement.orientation) {
        case ZplOrientation::Rotated: return {0, tail};
        case ZplOrientation::Inverted: return {-tail, 0};
        case ZplOrientation::BottomUp: return {0, -tail};
        case ZplOrientation::Normal: break;
    }
    return {};
}

/// The one case that stands by its label home: large reverse text of font B, upside down from the top left.
bool StandsByLabelHome(TextField const& field) {
    return field.font.magnificationX > 2 && field.font.zplName == "B" &&
           field.placement.orientation == ZplOrientation::Inverted && field.placement.baseline == Baseline::Top &&
           field.placement.justification == Justification::Left && field.run.direction == Direction::Reverse;
}

DevicePoints PlaceText(TextField const& field, ContextProcessor const& processor, bool needsGlyphAdjustment) {
    auto const& [placement, run, font, m] = field;
    auto const transform =
        GetFieldLocalToGlobalTransform(placement.origin, {ToInt(m.width), ToInt(m.height)}, placement.orientation);
    ZplPoint const factor = Rendering::GenerateLocalTextJustificationFactor(
        placement.orientation, placement.baseline, placement.justification, run.direction, ToInt(m.height),
        ToInt(m.width), ToInt(m.averageWidth), ToInt(m.tail), run.spacing);
    auto const corrected = CorrectTextPlacement(placement, run, m, font.magnificationX, needsGlyphAdjustment, factor);
    auto const local = LocalPoints(field, corrected.extra, processor);
    DevicePoints device;
    device.render =
        Rendering::PreOrPostRotationShift(transform, local.render, corrected.justification, placement.baseline);
    device.next =
        Rendering::PreOrPostRotationShift(transform, local.next, corrected.justification, placement.baseline) +
        VerticalNextCorrection(field);
    if (StandsByLabelHome(field)) {
        ZplPoint const home(static_cast<int>(processor.at(ZplContextKeys::LabelOriginX)),
                            static_cast<int>(processor.at(ZplContextKeys::LabelOriginY)));
        int const average = ToInt(m.averageWidth);
        device.render = home + placement.origin - ZplPoint(average, 0) + ZplPoint(average - 1, ToInt(m.height) - 1);
    }
    return device;
}

}  // namespace

bool TextElementProcessor::ProcessText(std::string text, ContextProcessor& processor) {
    auto const target = processor.GetGraphicContext();
    if (text.empty() || !target) return false;
    target->SetFieldVariable(processor.at(ZplContextKeys::FieldVariable));

    TextField field{FieldPlacement::From(processor),
                    {processor.at(ZplContextKeys::TextDirection), processor.at(ZplContextKeys::TextSpacing)},
                    TextFont::Of(processor, *target),
                    {}};
    if (field.font.isBitmap) target->PrepareText(field.font.drawName, text);
    if (text.empty()) return false;
    field.measures = MeasureTextField(*target, field.font, text, field.run);
    auto const device = PlaceText(field, processor, target->NeedsGlyphAdjustment(field.font.drawName));
    StoreNextFieldOrigin(processor, device.next);
    DrawPlacedText(*target, processor, field.font, {text, device.render, field.measures, field.run});
    return true;
}

bool TextElementProcessor::ProcessElementContext(Context&, ContextProcessor& processor) {
    std::string const& data = processor.at(ZplContextKeys::FieldData);
    ReportMisread(data, processor);
    return ProcessText(FieldText(data, processor), processor);
}

void RenderTextElement(ContextProcessor& processor) {
    if (Context* element = processor.GetContext(ContextProcessor::ElementContext))
        TextElementProcessor::ProcessElementContext(*element, processor);
}

}  // namespace ZplCore::Sketching

// Its default draws, so it cannot be defined with the other keys, which stand below everything that draws.
ContextKey<ZplContextKeys::RenderFunction> const ZplContextKeys::FieldRenderFunction(
    ZplCore::Sketching::RenderTextElement);
