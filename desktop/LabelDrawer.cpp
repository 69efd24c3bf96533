#include "desktop/LabelDrawer.h"

#include <utility>

#include "desktop/Commands.h"
#include "fields/map/FieldMap.h"
#include "foundation/Log.h"
#include "jobhost/model/PrintStream.h"

bool DrawCopies(LabelTask& task, std::filesystem::path const& folder, std::optional<VirtualTag> const& tag,
                std::function<void(Telling)> const& tell, std::function<bool(DrawnCopy)> const& take) {
    auto& label = task.label;
    auto const fields = [&] {
        auto const& map = label.Fields();
        return task.fieldsJson && map ? std::optional(task.fieldsJson->Of(*map)) : std::nullopt;
    };
    auto const operations = [&] { return task.operations ? *task.operations : label.GetRfidOperations(); };
    for (unsigned copy = 0; copy < task.copies; ++copy) {
        if (InterruptedBy() != 0) return false;
        unsigned const page = task.firstPage + copy;
        try {
            if (tag && label.IsWaitingOnRfidReadResponse(copy))
                label.SetRfidReadResponse(copy, VirtualTag(*tag).Perform(operations()));
            label.RenderLabel(folder, copy, page, page >= task.lastPage);
        } catch (std::exception const& error) {
            tell([text = Zpl::Host::Explain(error) + "; its pages from here on are dropped",
                  format = task.format](Findings& findings) { findings.AddNotice(text, format); });
            return true;
        }
        if (!take({copy, operations(), fields()})) return false;
    }
    return true;
}

LabelDrawer::LabelDrawer(std::filesystem::path const& fontsFolder, PrintEngine::PartManagement::LabelPart const& part,
                         ZplCore::FieldMap::Detail detail, std::shared_ptr<PrinterOfThread> printer, Report report)
    : printer_(std::move(printer)), report_(std::move(report)) {
    using Target = Scripting::ScriptGraphicContext;
    Target::InitializeFontManager(fonts_, fontsFolder);
    fonts_.SetWarningReceiver([this](std::string_view line, std::string_view subject) {
        tellings_.push_back(report_(LogTopic::Font, line, subject, format_));
    });
    target_ = std::make_shared<Target>(fonts_, printer_);
    target_->LoadPart(part);
    target_->SetupForPrintJob();
    if (auto* const keeper = Scripting::PageKeeper::Of(target_.get())) keeper->KeepPages();
    if (auto* const gauge = Scripting::InkGauge::Of(target_.get()))
        map_ = std::make_shared<ZplCore::FieldMap>(*gauge, detail);
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
        goesOn = DrawCopies(
            task, {}, tag, [this](Telling telling) { tellings_.push_back(std::move(telling)); },
            [&](DrawnCopy copy) {
                return put({std::exchange(tellings_, {}), stage(page), std::move(copy), {}});
            });
    } catch (...) {
        last.failure = std::current_exception();
    }
    last.tellings = std::exchange(tellings_, {});
    put(std::move(last));
    return goesOn;
}
