#include "fields/ink/FieldMap.h"

#include "fields/text/FieldText.h"
#include "foundation/Log.h"

namespace ZplCore {

namespace {

FieldKind KindOf(Scripting::FieldInk const& ink, bool isBarcode) {
    if (!ink.image.IsEmpty()) return isBarcode ? FieldKind::Barcode : FieldKind::Picture;
    return ink.shape.IsEmpty() ? FieldKind::Text : FieldKind::Shape;
}

}  // namespace

void FieldMap::StartField() {
    isBarcode_ = false;
    gauge_.StartField();
}

void FieldMap::EndField(ContextProcessor const& processor, bool isReversed) {
    auto const ink = gauge_.EndField();
    if (ink.All().IsEmpty() || fields_.size() == MostFields) return;
    fields_.push_back({KindOf(ink, isBarcode_), Log::Place(), BeginningOfData(processor), ink, isReversed});
}

}  // namespace ZplCore
