#include "labels/Label.h"

#include <algorithm>
#include <utility>

#include "Scripting/GraphicContext.h"
#include "Scripting/PageNotes.h"
#include "Scripting/PrinterContextInterface.h"
#include "fields/data/FieldElement.h"
#include "fields/graphics/StoredGraphics.h"
#include "fields/ink/MissingInk.h"
#include "fields/map/FieldMap.h"
#include "fields/scan/ScanCheck.h"
#include "foundation/Log.h"
#include "frontend/context/ObjectName.h"
#include "frontend/context/ZplContextKeys.h"
#include "frontend/handlers/CommandHandlerPool.h"
#include "labels/PrintDensity.h"

namespace Zpl {

using namespace ZplContextKeys;

Label::Label(ContextProcessor processor, CommandHandlerPool const& handlerPool)
    : processor_(std::move(processor)), pristineProcessor_(processor_.DeepClone()), handlerPool_(&handlerPool) {}

void Label::MoveTo(std::shared_ptr<Scripting::GraphicContext> const& target,
                   std::shared_ptr<Scripting::PrinterContextInterface> const& printer,
                   std::shared_ptr<ZplCore::FieldMap> const& map) {
    replay_.reset();
    auto const move = [&](ContextProcessor& processor) {
        processor.SetGraphicContext(target);
        processor.SetPrinterContext(printer);
        processor.SetFieldMap(map);
    };
    move(processor_);
    move(pristineProcessor_);
    // Fields that the copy before has kept are drawn as they are.
    Context* const format = processor_.GetContext(ContextProcessor::FormatContext);
    if (!format) return;
    if (format->HasValue(SavedContexts))
        for (auto& [number, field] : (*format)[SavedContexts]) move(field);
    if (format->HasValue(FurtherTemplates))
        for (auto& [place, field] : (*format)[FurtherTemplates]) move(field);
}

bool Label::KeepsPicture() const { return !processor_.at(DoNotUseStoredImage); }

bool Label::ReadsStore() const {
    auto const& memory = processor_.at(SharedFormatMemory);
    return memory && memory->readsStore;
}

unsigned Label::Quantity() const { return processor_.at(PrintQuantity); }

bool Label::PauseAfterSet() const { return processor_.at(PauseAfterJob); }

unsigned Label::PauseGroupQuantity() const { return processor_.at(PauseOnCut) ? processor_.at(GroupCount) : 0; }

std::string Label::StartJob(std::string_view jobName, unsigned totalPages, std::vector<unsigned> const& pauseIndices,
                            bool flag, std::vector<PageRangeRfidOperations> const& tagOperations) {
    auto const density = ZplCore::GetPrintDensityOverride(processor_);
    return processor_.GetGraphicContext()->StartJob(jobName, totalPages, pauseIndices, flag, tagOperations, density,
                                                    processor_.at(PauseAfterJob));
}

void Label::EndJob(std::filesystem::path const& jobPath) const { processor_.GetGraphicContext()->EndJob(jobPath); }

void Label::RenderLabel(std::filesystem::path const& jobPath, unsigned copyIndex, unsigned pageNumber,
                        bool isLastPage) {
    bool const isDrawn = copyIndex == 0 && (std::exchange(isDrawn_, false) || GoOnFromReplay());
    if (!isDrawn) {
        if (copyIndex == 0) processor_ = pristineProcessor_.DeepClone();
        ProcessLabel(copyIndex, isLastPage);
    }
    JudgeLeft();
    NoteBarcodes();
    processor_.GetGraphicContext()->RenderPage(jobPath, pageNumber, isLastPage);
}

/// For who looks at pages. The map is still that of this copy.
void Label::NoteBarcodes() const {
    auto* const notes = Scripting::PageNotes::Of(processor_.GetGraphicContext().get());
    auto const& map = processor_.GetFieldMap();
    if (notes && notes->KeepsNotes() && map) notes->SetPageNote(ZplCore::MarksOfBarcodes(*map));
}

Label::Drawn Label::HandOut(std::unique_ptr<Scripting::HandedLabel> room) {
    auto const replay = replay_.lock();
    if (!GoOnFromReplay()) {
        replay_ = replay;
        JudgeLeft();
        return {};
    }
    auto page = Scripting::PageKeeper::Of(processor_.GetGraphicContext().get())->HandOut(std::move(room));
    if (!page) return {};
    auto const& map = processor_.GetFieldMap();
    bool const isAskedFor = map && (map->WantsDetails() || unjudged_);
    return {std::move(page), isAskedFor ? std::optional(map->HandOut()) : std::nullopt, std::exchange(unjudged_, {})};
}

void Label::TakeOver(Drawn& drawn) {
    Scripting::PageKeeper::Of(processor_.GetGraphicContext().get())->TakeOver(*drawn.page);
    auto const& map = processor_.GetFieldMap();
    if (drawn.fields) map->TakeOver(*std::exchange(drawn.fields, {}));
    if (drawn.unjudged) ZplCore::JudgeBarcodes(*map, *std::exchange(drawn.unjudged, {}), symbolBoxes_);
    isDrawn_ = true;
}

std::shared_ptr<Label::Replay> Label::TakeReplay() {
    auto const* const keeper = Scripting::PageKeeper::Of(processor_.GetGraphicContext().get());
    if (!keeper) return nullptr;
    auto const drawn = keeper->DrawnLabel();
    return std::make_shared<Replay>(Replay{std::move(processor_), drawn, std::move(symbolBoxes_), unjudged_});
}

void Label::JudgeLeft() {
    auto const replay = replay_.lock();
    auto const& map = (replay ? replay->processor : processor_).GetFieldMap();
    auto const unjudged = std::exchange(replay ? replay->unjudged : unjudged_, {});
    if (unjudged) ZplCore::JudgeBarcodes(*map, *unjudged, replay ? replay->symbolBoxes : symbolBoxes_);
}

/// Takes the state that the first replay left, if the page that it drew is the one that is wanted.
bool Label::GoOnFromReplay() {
    auto const replay = std::exchange(replay_, {}).lock();
    auto const& target = processor_.GetGraphicContext();
    if (!replay || replay->processor.GetGraphicContext() != target) return false;
    // What a tag answered and what the clock says by now are drawn anew.
    bool const isAsDrawn = Scripting::PageKeeper::Of(target.get())->DrawnLabel() == replay->drawn &&
                           !rfidReadResponses_.contains(0) && !replay->processor.at(TimeMode).everyCopy;
    if (!isAsDrawn) return false;
    // The stream may have gone on since; what that replay brought into the session is in the frozen state.
    auto system = std::make_shared<Context>(*processor_.GetSystemContext());
    processor_ = std::move(replay->processor);
    symbolBoxes_ = std::move(replay->symbolBoxes);
    unjudged_ = replay->unjudged;
    processor_.SetSystemContext(std::move(system));
    return true;
}

void Label::LogTagOperations() const {
    if (auto const& operations = processor_.at(ZplContextKeys::RfidOperations); !operations.empty())
        processor_.GetPrinterContext()->AddToTagLog(operations, processor_.at(ZplContextKeys::RfidReadResponses));
}

void Label::RenderBlank(std::filesystem::path const& jobPath, unsigned pageNumber, bool isLastPage) const {
    auto const target = processor_.GetGraphicContext();
    target->StartLabel();
    target->RenderPage(jobPath, pageNumber, isLastPage);
}

std::optional<std::string> Label::ProcessLabel(unsigned copyIndex, bool forcePageEnd) {
    processor_.SetCurrentLabelNumber(copyIndex);
    StartLabel();
    if (auto const found = rfidReadResponses_.find(copyIndex); found != rfidReadResponses_.end()) {
        processor_.set(ContextProcessor::LabelContext, RfidReadResponses, found->second);
        rfidReadResponses_.erase(found);
    }
    ReplayCommands();
    // Draws what the last field left, when the format ended without closing it.
    ZplCore::ProcessElementCommands(processor_.GetCurrentContext(), processor_);
    Log::SetPlace(std::nullopt);
    RequestCuts(copyIndex, forcePageEnd);

    auto& target = *processor_.GetGraphicContext();
    target.SetSuppressBackfeed(processor_.at(SuppressBackfeed));
    EndLabel();
    if (!target.HasContent()) return std::nullopt;
    return target.GetLabelText();
}

void Label::StartLabel() {
    processor_.ClearContext(ContextProcessor::ElementContext);
    processor_.ClearContext(ContextProcessor::LabelContext);
    // Anew for every copy: the copy before may have set its clock.
    auto const& mode = processor_.at(ZplContextKeys::TimeMode);
    auto time = pristineProcessor_.at(TimeAtRender);
    if (mode.everyCopy) {
        auto const now = processor_.GetPrinterContext()->Now() + processor_.at(ClockAdjustment);
        if (now - time > std::chrono::seconds(mode.tolerance)) time = now;
    }
    processor_.set(ContextProcessor::LabelContext, TimeAtRender, time);
    auto& target = *processor_.GetGraphicContext();
    target.SetStoredImageGeneration(processor_.at(PowerOnCount));
    target.StartLabel();
    target.SetLabelOriginX(processor_.at(LabelOriginX));
    target.SetLabelOriginY(processor_.at(LabelOriginY));
    if (auto const& map = processor_.GetFieldMap()) map->StartLabel();
}

void Label::ReplayCommands() {
    // A handler may change the recorded list; the replay is of the list as it stands now.
    FormatCommands const commands = processor_.GetFormatCommands();
    auto const& map = processor_.GetFieldMap();
    auto* const places = map && map->WantsDetails() ? &map->Places() : nullptr;
    std::optional<std::uint64_t> place;
    for (auto const& command : commands) {
        // What a field's end reports is about the field, whose data stand before it.
        if (command.command != "FS") place = command.offset;
        Log::SetPlace(place);
        if (Context* label = processor_.GetContext(ContextProcessor::LabelContext)) ++(*label)[HandlerSequenceNumber];
        // A stored format may hold a command whose feature has been switched off since.
        CommandHandler* const handler = handlerPool_->GetCommandHandler(command.command);
        // Immediate commands of a recalled format have run when the format ended.
        bool const hasRun =
            handler && handler->GetProcessingType() == ProcessingType::Immediate && !handler->IsAdditonalSaveType();
        if (!handler || hasRun) continue;
        if (places) places->StartCommand(command, processor_);
        RunCommand(*handler, command, processor_);
        if (places) places->EndCommand(command, processor_);
    }
}

void Label::RequestCuts(unsigned copyIndex, bool forcePageEnd) {
    auto& target = *processor_.GetGraphicContext();
    unsigned const group = processor_.at(GroupCount);
    if (group != 0 && (copyIndex + 1) % group == 0) target.RequestCut(1);
    // A group end and a last copy may both ask for a cut behind the same page.
    if (forcePageEnd) {
        target.RequestCut(1);
    } else if (copyIndex == Quantity() - 1) {
        auto const& printer = *processor_.GetPrinterContext();
        bool const cuts = printer.CutsAfterLabel();
        auto const interval = printer.CutInterval();
        if (cuts && interval.value_or(1) != 0) target.RequestCut(1);
    }
}

void Label::EndLabel() {
    auto& target = *processor_.GetGraphicContext();
    target.SetLabelOriginX(processor_.at(LabelOriginX));
    target.SetLabelOriginY(processor_.at(LabelOriginY));

    Scripting::LabelSettings settings;
    settings.labelLength = processor_.at(LabelLength);
    settings.printMode = static_cast<unsigned>(processor_.at(PrintMode));
    settings.upright = processor_.at(PrintOrientation) != ZplPrintOrientation::Inverted;
    settings.mirror = processor_.at(MirrorLabel);
    settings.labelWidth = processor_.at(LabelWidth);
    settings.useStoredImage = !processor_.at(DoNotUseStoredImage);
    settings.formatScale = processor_.at(FormatScale);
    settings.adjustY = processor_.at(LabelAdjustY);
    target.SetLabelLength(settings.labelLength);
    target.EndLabel(settings);
    auto const& map = processor_.GetFieldMap();
    if (!map) return;
    map->EndLabel(settings);
    // Copies differ in a number at most, and one sentence is enough.
    bool const isFirst = processor_.CurrentLabelNumber() == 0;
    bool const isBlank = isFirst && ZplCore::ReportMissingInk(*map);
    if (!map->WantsSymbols()) return;
    unjudged_ = {processor_.GetPrinterContext()->PrinterDpi().Value(), isFirst, isBlank};
    if (!map->LeavesJudging()) JudgeLeft();
}

bool Label::ShouldPrint() const {
    ISMetaData const& save = processor_.at(ImageSave);
    return save.path.empty() || save.print;
}

bool Label::HasImageSavePath() const { return !processor_.at(ImageSave).path.empty(); }

void Label::RenderLabelToFile() const {
    auto const name = ObjectName::Parse(processor_.at(ImageSave).path, 'R', "UNKNOWN", "GRF");
    if (!name) return;
    unsigned width = 0;
    unsigned height = 0;
    ZplCore::Picture picture;
    picture.rows = processor_.GetGraphicContext()->GetPageBitmap(width, height);
    picture.bytesPerRow = (width + 7) / 8;
    picture.rowCount = height;
    ZplCore::StoreGraphic(processor_.FormatsFolder(), *name, picture);
}

std::vector<RfidOperation> Label::GetRfidOperations() const {
    auto const& recorded = processor_.at(RfidOperations);
    return recorded.empty() ? rfidOperations_ : recorded;
}

bool Label::HasRfidReadOperations() const {
    return std::any_of(rfidOperations_.begin(), rfidOperations_.end(),
                       [](RfidOperation const& operation) { return operation.type == RfidOperation::Read; });
}

bool Label::IsWaitingOnRfidReadResponse(unsigned copyIndex) const {
    return HasRfidReadOperations() && !rfidReadResponses_.contains(copyIndex);
}

void Label::SetRfidReadResponse(unsigned copyIndex, std::vector<RfidReadResponse> const& responses) {
    rfidReadResponses_[copyIndex] = responses;
}

namespace {

void Send(ContextProcessor const& processor, ResponseCallback const& callback) {
    if (!callback) return;
    if (auto const answer = callback(processor)) processor.GetPrinterContext()->SendToHost(*answer);
}

}  // namespace

void Label::SendEndOfPageNetworkResponses() const {
    for (auto const& callback : processor_.at(HostVerificationLabelCallbacks)) Send(processor_, callback);
    Send(processor_, processor_.at(ReportRfidEncodingCallback));
}

void Label::SendEndOfFormatNetworkResponses() const {
    for (auto const& callback : processor_.at(HostVerificationFormatCallbacks)) Send(processor_, callback);
    Send(processor_, processor_.at(ReturnRfidLogCallback));
}

}  // namespace Zpl
