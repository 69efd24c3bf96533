#include "jobhost/model/Session.h"

#include "jobhost/model/ZPLProcessorInterface.h"

namespace Zpl::Host {

Session::Session(ZPLProcessorInterface& model, std::shared_ptr<Context> systemContext,
                 PrintEngine::Printing::TrueTypeCacheCreator& fontCache,
                 std::shared_ptr<Scripting::PrinterContextInterface> printerContext,
                 CommandHandlerPool const& handlerPool, MachineSettings const& machine)
    : processor_(handlerPool, machine.formatsFolder) {
    Scripting::ScriptGraphicContext::InitializeFontManager(fontCache, machine.fontsFolder);
    graphicContext_ = std::make_shared<Scripting::ScriptGraphicContext>(fontCache, printerContext);
    graphicContext_->SetJobsFolder(machine.jobsFolder);
    graphicContext_->StartNewJob();

    auto& parts = model.PartManager();
    parts.LoadPartFromPrinter();
    parts.MergeAllColumns();
    part_ = model.GetLabelPart();
    graphicContext_->LoadPart(part_);
    graphicContext_->SetupForPrintJob();

    processor_.SetMissingZplCommands(model.GetMissingZplCommandsProperty());
    processor_.SetLifetimeZPLScriptCount(model.GetLifetimeZplScriptsCountProperty());
    processor_.SetSystemContext(std::move(systemContext));
    processor_.ForgetByteOrderMark();
    processor_.SetGraphicContext(graphicContext_);
    processor_.SetPrinterContext(std::move(printerContext));
    processor_.SetZPLFormatCharacter(model.GetZPLFormatProperty());
    processor_.SetZPLControlCharacter(model.GetZPLControlProperty());
    processor_.SetZPLDelimiterCharacter(model.GetZPLDelimiterProperty());
    processor_.SetLowMemoryError(model.GetLowMemoryErrorProperty());
    processor_.LoadTrueTypeFonts();
}

void Session::MapFields(ZplCore::FieldMap::Detail detail) {
    auto* const gauge = Scripting::InkGauge::Of(graphicContext_.get());
    if (!gauge) return;
    detail_ = detail;
    fieldMap_ = std::make_shared<ZplCore::FieldMap>(*gauge, detail);
    fieldMap_->SetReader(reader_);
    processor_.SetFieldMap(fieldMap_);
}

void Session::GoOnFrom(Session& before, ZplCommandProcessor::StreamRest rest) {
    graphicContext_ = before.graphicContext_;
    processor_.SetGraphicContext(graphicContext_);
    if (fieldMap_) {
        MapFields(detail_);
        if (before.fieldMap_) fieldMap_->Sources() = before.fieldMap_->Sources();
    }
    processor_.GoOnWith(std::move(rest));
}

}  // namespace Zpl::Host
