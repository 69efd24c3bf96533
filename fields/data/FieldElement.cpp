#include "fields/data/FieldElement.h"

#include <algorithm>

#include "Scripting/GraphicContext.h"
#include "fields/data/FieldDataHelper.h"
#include "fields/data/FieldDescription.h"
#include "fields/map/FieldMap.h"
#include "fields/text/FieldText.h"
#include "foundation/Log.h"
#include "foundation/Quoted.h"
#include "frontend/context/ZplContextKeys.h"

namespace ZplCore {

namespace {

/// Takes a value out of a context for its own lifetime.
template <typename T>
class SetAside {
public:
    SetAside(Context* context, ContextKey<T> const& key)
        : place_(context && context->HasValue(key) ? &(*context)[key] : nullptr) {
        if (place_) std::swap(value_, *place_);
    }
    SetAside(SetAside const&) = delete;
    SetAside& operator=(SetAside const&) = delete;
    ~SetAside() {
        if (place_) std::swap(value_, *place_);
    }

private:
    T* place_;
    T value_;
};

/// Lends what the label has collected (values of field numbers, tag operations, questions of the host) for its own
/// lifetime. A template is the state of a field without it, and draws with that of the label it is filled for.
class LabelLent {
public:
    LabelLent(ContextProcessor& from, Context* to) : from_(from.GetContext(ContextProcessor::LabelContext)), to_(to) {
        if (from_ && to_) std::swap(*from_, *to_);
    }
    LabelLent(LabelLent const&) = delete;
    LabelLent& operator=(LabelLent const&) = delete;
    ~LabelLent() {
        if (from_ && to_) std::swap(*from_, *to_);
    }

private:
    Context* from_;
    Context* to_;
};

/// A copy of the state of a field. Templates are not part of it: copies that hold copies would double with each field.
ContextProcessor MakeTemplate(ContextProcessor& processor) {
    processor.set(ContextProcessor::ElementContext, ZplContextKeys::TemplateSequence,
                  processor.at(ZplContextKeys::HandlerSequenceNumber));
    Context* const format = processor.GetContext(ContextProcessor::FormatContext);
    SetAside const saved(format, ZplContextKeys::SavedContexts);
    SetAside const further(format, ZplContextKeys::FurtherTemplates);
    Context nothing(ContextProcessor::LabelContext);
    LabelLent const label(processor, &nothing);
    return processor.DeepClone();
}

/// The map of who asks for details of fields, else null.
FieldMap* DetailedMap(ContextProcessor const& processor) {
    FieldMap* const map = processor.GetFieldMap().get();
    return map && map->WantsDetails() ? map : nullptr;
}

void MapTemplate(ContextProcessor const& processor) {
    if (FieldMap* const map = DetailedMap(processor))
        map->KeepTemplate(processor.at(ZplContextKeys::HandlerSequenceNumber), DescribeField(*map, processor));
}

/// Keeps the field under way as a template under a key; what was kept under it before goes.
template <typename Key>
void SaveTemplate(ContextProcessor& processor, ContextKey<std::map<Key, ContextProcessor>> const& templates, Key key,
                  unsigned number) {
    Context* const format = processor.GetContext(ContextProcessor::FormatContext);
    if (!format) return;
    std::size_t const count =
        processor.at(ZplContextKeys::SavedContexts).size() + processor.at(ZplContextKeys::FurtherTemplates).size();
    if (count >= MaximumSavedFields && !processor.at(templates).contains(key)) {
        Log::Report(LogTopic::Limit, "field number " + std::to_string(number) + " is not kept: the format has " +
                                         std::to_string(MaximumSavedFields) + " already");
        return;
    }
    ContextProcessor copy = MakeTemplate(processor);
    (*format)[templates].insert_or_assign(key, std::move(copy));
    MapTemplate(processor);
}

/// Notes the field that has just drawn; `isTemplate` if its data were filled in from elsewhere.
void MapField(FieldMap& map, ContextProcessor const& processor, bool isReversed, bool isTemplate) {
    // What only hands its data on to templates is no field itself.
    if (map.WantsDetails() && !isTemplate && processor.at(ZplContextKeys::FillsTemplates)) return map.DropField();
    MappedField* const field = map.EndField(isReversed);
    if (!field) return;
    if (!field->IsEmpty()) field->data = BeginningOfData(processor);
    if (map.WantsSymbols()) {
        field->origin = OriginOf(processor);
        if (field->isBarcode) map.KeepSymbol(*field, processor.at(ZplContextKeys::FieldOrientation));
    }
    if (!map.WantsDetails()) return;
    auto details = DescribeField(map, processor);
    if (isTemplate) map.FillTemplate(processor.at(ZplContextKeys::TemplateSequence), *details);
    field->details = std::move(details);
}

/// Gives the drawing target the label home and the reverse mode of a field, and lets the field draw.
void RenderField(ContextProcessor& processor, bool reverse, bool isTemplate) {
    // A copy: drawing may end the element that holds the function.
    auto const render = processor.at(ZplContextKeys::FieldRenderFunction);
    if (!render) return;
    if (auto const& target = processor.GetGraphicContext()) {
        target->SetLabelOriginX(processor.at(ZplContextKeys::LabelOriginX));
        target->SetLabelOriginY(processor.at(ZplContextKeys::LabelOriginY));
        target->SetReverse(reverse);
    }
    FieldMap* const map = processor.GetFieldMap().get();
    if (map) map->StartField();
    render(processor);
    if (map) MapField(*map, processor, reverse, isTemplate);
}

void SerializeField(Context const& element, ContextProcessor& processor) {
    auto const* serialize = element.Find(ZplContextKeys::SerializeFunction);
    if (!serialize || !*serialize) return;
    auto const function = *serialize;
    function(processor, GetSerializationIndex(processor.CurrentLabelNumber(),
                                              processor.at(ZplContextKeys::SerialNumberReplications)));
}

/// Copies what the filling field decides into a template: its data, their character set, its clock, and its font if it
/// names one.
void FillTemplate(ContextProcessor& field, ContextProcessor const& filling, std::string_view data) {
    auto const set = [&field](auto const& key, auto value) {
        field.set(ContextProcessor::ElementContext, key, std::move(value));
    };
    set(ZplContextKeys::TimeAtRender, filling.at(ZplContextKeys::TimeAtRender));
    set(ZplContextKeys::CodePageConverter, filling.at(ZplContextKeys::CodePageConverter));
    if (Context const* element = filling.GetContext(ContextProcessor::ElementContext)) {
        // The template's own indicators count as they would for data sent in its field, unless the data have been
        // through the filling field's.
        if (element->HasValue(ZplContextKeys::FieldHexIndicator)) set(ZplContextKeys::FieldHexIndicator, '\0');
        if (element->HasValue(ZplContextKeys::ClockIndicator1)) {
            for (auto const* key :
                 {&ZplContextKeys::ClockIndicator1, &ZplContextKeys::ClockIndicator2, &ZplContextKeys::ClockIndicator3})
                set(*key, '\0');
        }
        if (auto const* font = element->Find(ZplContextKeys::FontIdentifier))
            set(ZplContextKeys::FontIdentifier, *font);
        if (element->HasValue(ZplContextKeys::FieldVariable)) set(ZplContextKeys::FieldVariable, true);
    }
    set(ZplContextKeys::FieldData, FieldDataHelper::ProcessHexAndClockData(std::string(data), field));
}

/// Carries the running position over from one format to the other.
void CarryNextFieldOrigin(ContextProcessor const& from, ContextProcessor& to) {
    for (auto const* key : {&ZplContextKeys::NextFieldOriginX, &ZplContextKeys::NextFieldOriginY})
        to.set(ContextProcessor::FormatContext, *key, from.at(*key));
}

void DrawTemplate(ContextProcessor& processor, ContextProcessor field, std::string_view data) {
    FillTemplate(field, processor, data);
    bool const reverse = processor.at(ZplContextKeys::LabelReversePrint) || field.at(ZplContextKeys::LabelReversePrint);
    // A field that draws nothing leaves the position as it was.
    CarryNextFieldOrigin(processor, field);
    {
        LabelLent const label(processor, field.GetContext(ContextProcessor::LabelContext));
        field.SetCurrentLabelNumber(processor.CurrentLabelNumber());
        if (Context const* element = field.GetContext(ContextProcessor::ElementContext))
            SerializeField(*element, field);
        RenderField(field, reverse, true);
    }
    CarryNextFieldOrigin(field, processor);
}

/// Counts what one more template of a number is filled with. False, told once a copy of the label, if that is too much:
/// one text may fill thousands, each of which counts as some bytes at least.
bool MayFillFurther(ContextProcessor& processor, unsigned number, std::size_t bytes) {
    constexpr std::uint64_t BytesOfTemplate = 256;
    static ContextKey<std::uint64_t> const Filled;
    Context* const label = processor.GetContext(ContextProcessor::LabelContext);
    if (!label) return false;
    auto& filled = (*label)[Filled];
    bool const hadRoom = filled < MostFilledBytes;
    filled += BytesOfTemplate + bytes;
    if (hadRoom && filled >= MostFilledBytes) {
        Log::Report(LogTopic::Limit, "field number " + std::to_string(number) +
                                         " is not drawn everywhere: the label fills templates with more than " +
                                         std::to_string(MostFilledBytes) + " bytes");
    }
    return filled < MostFilledBytes;
}

/// Hosts ask for the data of a number, whether they came with its field or fill a template.
void NoteFieldNumber(ContextProcessor& processor, unsigned number, std::string_view data) {
    if (Context* const label = processor.GetContext(ContextProcessor::LabelContext))
        (*label)[ZplContextKeys::FieldNumberValues].insert_or_assign(number, std::string(data));
}

/// Data for a number without a template are a field of their own, which nobody has given a place. What draws it by a
/// function of its own may need none, but for a barcode whose template is sought in a recalled format.
void ReportMissingTemplate(Context const& element, ContextProcessor const& processor, unsigned number,
                           std::string_view data) {
    if (element.HasValue(ZplContextKeys::FieldOriginX)) return;
    std::string format = processor.at(ZplContextKeys::RecallFormatPath);
    bool const isBarcode = element.HasValue(ZplContextKeys::IsBarcode) && !format.empty();
    if (element.HasValue(ZplContextKeys::FieldRenderFunction) && !isBarcode) return;
    std::replace(format.begin(), format.end(), '/', ':');
    Log::Report(LogTopic::Data, (format.empty() ? "this format" : "the format " + format) + " has no field " +
                                    std::to_string(number) + ": its data " + Quoted(data) +
                                    " are drawn in the upper left corner");
}

}  // namespace

unsigned GetSerializationIndex(unsigned copyIndex, unsigned replications) {
    return copyIndex / std::max(1U, replications);
}

bool ProcessElementCommands(Context& current, ContextProcessor& processor) {
    if (current.GetContextName() != ContextProcessor::ElementContext || current.IsEmpty()) return false;
    SerializeField(current, processor);
    auto const* numberToSave = current.Find(ZplContextKeys::FieldNumberToSave);
    if (numberToSave && processor.at(ZplContextKeys::FieldRenderFunction) &&
        !current.HasValue(ZplContextKeys::FieldData)) {
        SaveTemplate(processor, ZplContextKeys::SavedContexts, *numberToSave, *numberToSave);
    } else {
        auto const* data = current.Find(ZplContextKeys::FieldData);
        if (numberToSave && data) {
            NoteFieldNumber(processor, *numberToSave, *data);
            ReportMissingTemplate(current, processor, *numberToSave, *data);
        }
        RenderField(processor, processor.at(ZplContextKeys::LabelReversePrint), false);
    }
    processor.ClearContext(ContextProcessor::ElementContext);
    if (FieldMap* const map = DetailedMap(processor)) map->ForgetField();
    return true;
}

void EndWholeField(Context& current, ContextProcessor& processor) {
    auto const* isWhole = current.Find(ZplContextKeys::EndsAtNextOrigin);
    if (isWhole && *isWhole) ProcessElementCommands(current, processor);
}

bool HasSavedField(ContextProcessor const& processor, unsigned fieldNumber) {
    return processor.at(ZplContextKeys::SavedContexts).contains(fieldNumber);
}

void SaveFurtherTemplate(ContextProcessor& processor, unsigned fieldNumber,
                         ZplContextKeys::RenderFunction const& render) {
    auto const& saved = processor.at(ZplContextKeys::SavedContexts);
    auto const first = saved.find(fieldNumber);
    unsigned const sequence = processor.at(ZplContextKeys::HandlerSequenceNumber);
    Context* const element = processor.GetContext(ContextProcessor::ElementContext);
    // On a further copy of the label this is the first template again.
    if (first == saved.end() || !element) return;
    if (first->second.at(ZplContextKeys::TemplateSequence) == sequence) return MapTemplate(processor);
    if (!render && !element->HasValue(ZplContextKeys::FieldOriginX)) return;
    if (render) {
        (*element)[ZplContextKeys::FieldRenderFunction] = render;
    } else {
        element->Erase(ZplContextKeys::FieldRenderFunction.id);
    }
    SaveTemplate(processor, ZplContextKeys::FurtherTemplates, {fieldNumber, sequence}, fieldNumber);
}

void InvokeSavedFieldRenderFunction(ContextProcessor& processor, unsigned fieldNumber, std::string_view data) {
    NoteFieldNumber(processor, fieldNumber, data);
    auto const& saved = processor.at(ZplContextKeys::SavedContexts);
    auto const first = saved.find(fieldNumber);
    if (first == saved.end()) return;
    // Copies, since a template may be filled again.
    DrawTemplate(processor, first->second, data);
    auto const& further = processor.at(ZplContextKeys::FurtherTemplates);
    for (auto next = further.lower_bound({fieldNumber, 0}); next != further.end() && next->first.first == fieldNumber;
         ++next) {
        if (!MayFillFurther(processor, fieldNumber, data.size())) return;
        DrawTemplate(processor, next->second, data);
    }
}

}  // namespace ZplCore
