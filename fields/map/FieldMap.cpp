#include "fields/map/FieldMap.h"

#include <utility>

#include "foundation/Log.h"

namespace ZplCore {

std::string Describe(FieldDetails const& details) {
    if (!details.font) return Describe(details.notes);
    auto const& font = *details.font;
    FieldNotes told;
    told.kind = details.notes.kind;
    told.Add("font", font.name).Add("font height", font.height, "dots").Add("font width", font.width, "dots");
    if (font.magnificationX != 0)
        told.Add("magnified across", font.magnificationX).Add("magnified down", font.magnificationY);
    told.settings.insert(told.settings.end(), details.notes.settings.begin(), details.notes.settings.end());
    return Describe(told);
}

void FieldMap::StartLabel() {
    fields_.clear();
    templates_.clear();
    ForgetField();
    places_.Reset();
}

void FieldMap::EndLabel(Scripting::LabelSettings const& settings) {
    page_ = settings;
    for (auto& [sequence, waiting] : templates_) {
        if (waiting.isFilled || fields_.size() == MostFields) continue;
        fields_.emplace_back().details = std::move(waiting.details);
    }
    templates_.clear();
}

void FieldMap::StartField() {
    symbology_ = {};
    encoded_.clear();
    gauge_.StartField();
}

void FieldMap::NoteBarcode(std::string_view symbology) {
    symbology_ = symbology;
    if (WantsSymbols()) gauge_.KeepPictures();
}

MappedField* FieldMap::EndField(bool isReversed) {
    auto const ink = gauge_.EndField();
    // White ink may hide a symbol.
    bool const isOfUse = !ink.All().IsEmpty() || WantsDetails() || (WantsSymbols() && !ink.white.IsEmpty());
    if (!isOfUse || fields_.size() == MostFields) return nullptr;
    return &fields_.emplace_back(MappedField{!symbology_.empty(), Log::Place(), {}, ink, isReversed});
}

void FieldMap::KeepSymbol(MappedField& field, ZplOrientation orientation) {
    auto symbol = std::make_unique<MappedSymbol>();
    *symbol = {symbology_, orientation, std::move(encoded_), gauge_.TakePictures()};
    encoded_.clear();
    if (!symbol->pictures.empty()) field.symbol = std::move(symbol);
}

void FieldMap::NoteNumber(unsigned number, std::string prompt) {
    number_ = number;
    prompt_ = std::move(prompt);
}

void FieldMap::TellField(FieldDetails& details) const {
    details.place = places_.Field();
    details.number = number_;
    details.prompt = prompt_;
}

void FieldMap::ForgetField() {
    places_.EndField();
    number_.reset();
    prompt_.clear();
}

void FieldMap::KeepTemplate(unsigned sequence, std::unique_ptr<FieldDetails> details) {
    if (templates_.size() < MostFields) templates_.insert_or_assign(sequence, Template{std::move(details), false});
}

void FieldMap::FillTemplate(unsigned sequence, FieldDetails& details) {
    auto const found = templates_.find(sequence);
    if (found == templates_.end()) return;
    found->second.isFilled = true;
    details.definition = found->second.details->place;
    if (details.prompt.empty()) details.prompt = found->second.details->prompt;
}

}  // namespace ZplCore
