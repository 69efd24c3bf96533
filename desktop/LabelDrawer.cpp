#include "desktop/LabelDrawer.h"

#include <utility>

#include "desktop/Commands.h"
#include "fields/map/FieldMap.h"
#include "foundation/Log.h"

LabelDrawer::LabelDrawer(Desk& desk, ZplCore::FieldMap::Detail detail)
    : printer_(std::make_shared<PrinterOfThread>(desk.Printer().PrinterDpi(), desk.Printer().DesignDpi(),
                                                 desk.ClockOfPrinter())),
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

bool LabelDrawer::Draw(LabelTask task, std::optional<VirtualTag> const& tag,
                       std::function<StagedPage(Scripting::FinishedPage&)> const& stage,
                       std::function<bool(DrawnPage)> const& put) {
    format_ = task.format;
    Log::ScopedSink const sink(
        [this](LogTopic topic, std::string_view text) { tellings_.push_back(report_(topic, text, {}, format_)); });
    printer_->SetCharacters(task.characters);
    task.label.MoveTo(target_, printer_, map_);
    auto& page = *Scripting::PageKeeper::Of(target_.get());
    DrawnPage last;
    bool goesOn = false;
    try {
        goesOn = InterruptedBy() == 0 &&
                 DrawCopies(
                     task, {}, tag, [this](Telling telling) { tellings_.push_back(std::move(telling)); },
                     [&](DrawnCopy copy) {
                         return put({std::exchange(tellings_, {}), stage(page), std::move(copy), {}}) &&
                                InterruptedBy() == 0;
                     });
    } catch (...) {
        last.failure = std::current_exception();
    }
    last.tellings = std::exchange(tellings_, {});
    put(std::move(last));
    return goesOn;
}
