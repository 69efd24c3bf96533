#include "desktop/LabelDrawer.h"

#include <utility>

#include "desktop/Commands.h"
#include "fields/map/FieldMap.h"
#include "foundation/Log.h"

namespace {

/// Makes the page of a copy that has been drawn elsewhere.
DrawnCopy FinishDrawn(QueuedLabel& label, Scripting::GraphicContext& target,
                      std::shared_ptr<ZplCore::SymbolReader const> const& reader) {
    auto& task = label.task;
    Scripting::PageKeeper::Of(&target)->TakeOver(*label.drawn.page);
    target.RenderPage({}, task.firstPage, task.firstPage >= task.lastPage);
    DrawnCopy copy{0, std::move(*task.operations), {}};
    if (!label.drawn.fields) return copy;
    ZplCore::FieldMap map(*Scripting::InkGauge::Of(&target), ZplCore::FieldMap::Detail::Everything);
    map.SetReader(reader);
    map.TakeOver(*std::exchange(label.drawn.fields, {}));
    ZplCore::SymbolBoxes boxes;
    if (label.drawn.unjudged) ZplCore::JudgeBarcodes(map, *label.drawn.unjudged, boxes);
    if (task.fieldsJson) copy.fields = task.fieldsJson->Of(map);
    return copy;
}

}  // namespace

bool DrawQueued(QueuedLabel& label, Scripting::GraphicContext& target, std::filesystem::path const& folder,
                std::optional<VirtualTag> const& tag, std::shared_ptr<ZplCore::SymbolReader const> const& reader,
                std::function<void(Telling)> const& tell, std::function<bool(DrawnCopy)> const& take) {
    if (label.isUsedUp) return take(FinishDrawn(label, target, reader));
    if (label.drawn.page) label.task.label.TakeOver(label.drawn);
    return DrawCopies(label.task, folder, tag, tell, take);
}

LabelDrawer::LabelDrawer(Desk& desk, ZplCore::FieldMap::Detail detail)
    : printer_(std::make_shared<PrinterOfThread>(desk.Printer().PrinterDpi(), desk.Printer().DesignDpi(),
                                                 desk.ClockOfPrinter())),
      reader_(desk.Reader()),
      report_([&desk](LogTopic topic, std::string_view text, std::string_view subject, Findings::Format format) {
          return desk.Report(topic, text, subject, format);
      }) {
    using Target = Scripting::ScriptGraphicContext;
    desk.SetUpFonts(fonts_);
    fonts_.SetWarningReceiver([this](std::string_view line, std::string_view subject) {
        tellings_.push_back(report_(LogTopic::Font, line, subject, format_));
    });
    target_ = std::make_shared<Target>(fonts_, printer_);
    target_->LoadPart(desk.Model().GetLabelPart());
    target_->SetupForPrintJob();
    if (auto* const keeper = Scripting::PageKeeper::Of(target_.get())) keeper->KeepPages();
    if (auto* const gauge = Scripting::InkGauge::Of(target_.get()))
        map_ = std::make_shared<ZplCore::FieldMap>(*gauge, detail);
    if (map_) map_->SetReader(desk.Reader());
}

bool LabelDrawer::Draw(QueuedLabel& label, std::optional<VirtualTag> const& tag, StagePage const& stage,
                       std::function<bool(DrawnPage)> const& put) {
    auto& task = label.task;
    format_ = task.format;
    Log::ScopedSink const sink(
        [this](LogTopic topic, std::string_view text) { tellings_.push_back(report_(topic, text, {}, format_)); });
    printer_->SetCharacters(task.characters);
    if (!label.isUsedUp) task.label.MoveTo(target_, printer_, map_);
    auto& page = *Scripting::PageKeeper::Of(target_.get());
    DrawnPage last;
    bool goesOn = false;
    try {
        goesOn =
            InterruptedBy() == 0 &&
            DrawQueued(
                label, *target_, {}, tag, reader_, [this](Telling telling) { tellings_.push_back(std::move(telling)); },
                [&](DrawnCopy copy) {
                    auto staged = stage(page, label, copy);
                    bool const isSilent = !staged && tellings_.empty();
                    return (isSilent || put({std::exchange(tellings_, {}), std::move(staged), std::move(copy), {}})) &&
                           InterruptedBy() == 0;
                });
    } catch (...) {
        last.failure = std::current_exception();
    }
    last.tellings = std::exchange(tellings_, {});
    if (last.failure || !last.tellings.empty()) put(std::move(last));
    return goesOn;
}
