#include "fields/data/FieldDescription.h"

#include "fields/text/FieldText.h"
#include "fields/text/Fonts.h"
#include "foundation/Log.h"
#include "frontend/context/ZplContextKeys.h"

namespace ZplCore {

namespace {

FieldFont FontOf(ContextProcessor const& processor) {
    auto const name = GetZplFont(processor);
    auto const cell = GetFontCell(name, processor);
    return {name, cell.height, cell.width, cell.magnificationX, cell.magnificationY};
}

}  // namespace

std::optional<FieldOrigin> OriginOf(ContextProcessor const& processor) {
    Context const* const element = processor.GetContext(ContextProcessor::ElementContext);
    if (!element || !element->HasValue(ZplContextKeys::FieldOriginX)) return std::nullopt;
    return FieldOrigin{static_cast<int>(processor.at(ZplContextKeys::FieldOriginX)),
                       static_cast<int>(processor.at(ZplContextKeys::FieldOriginY)),
                       processor.at(ZplContextKeys::FieldBaseline)};
}

std::unique_ptr<FieldDetails> DescribeField(FieldMap const& map, ContextProcessor const& processor) {
    // Whatever is wrong with a field is told when it is drawn.
    Log::ScopedSink const quiet(Log::Sink{});
    auto details = std::make_unique<FieldDetails>();
    map.TellField(*details);
    if (auto const& describe = processor.at(ZplContextKeys::FieldDescription)) describe(processor, details->notes);
    details->origin = OriginOf(processor);
    details->orientation = processor.at(ZplContextKeys::FieldOrientation);
    details->text =
        details->notes.text ? *details->notes.text : FieldText(processor.at(ZplContextKeys::FieldData), processor);
    if (details->notes.kind == FieldKind::Text || details->notes.kind == FieldKind::TextBlock)
        details->font = FontOf(processor);
    return details;
}

}  // namespace ZplCore
