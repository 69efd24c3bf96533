#include "desktop/Desk.h"

#include <cerrno>
#include <cstdlib>
#include <system_error>

#include "PrintEngine/Printing/PrintProcessHandler.h"
#include "fields/text/Fonts.h"
#include "foundation/AppSettings.h"
#include "foundation/Features.h"
#include "foundation/Log.h"
#include "frontend/context/ZplContextKeys.h"
#include "frontend/processor/CreateHandlers.h"
#include "propertybus/PublishingPropertyManager.h"

TemporaryFolder::TemporaryFolder(std::filesystem::path const& parent, std::string_view prefix) {
    std::string name = (parent / (std::string(prefix) + "XXXXXX")).string();
    if (!::mkdtemp(name.data())) throw std::system_error(errno, std::generic_category(), parent.string());
    path_ = name;
}

TemporaryFolder::~TemporaryFolder() {
    std::error_code error;
    std::filesystem::remove_all(path_, error);
}

namespace {

std::shared_ptr<Clock const> MakeClock(RenderOptions const& options) {
    if (options.time) return std::make_shared<FixedClock>(*options.time);
    return std::make_shared<LocalClock>();
}

}  // namespace

Desk::Desk(RenderOptions const& options)
    : storage_(std::filesystem::temp_directory_path(), "zpl-"),
      model_(ZPLProcessorInterface::Create(std::make_shared<PublishingPropertyManager>(), nullptr)),
      handlers_(CreateHandlers(options.tag || Features::Exists(FeatureNames::rfidEncoderSupport),
                               Features::Exists(FeatureNames::disablePausing))),
      clock_(MakeClock(options)),
      printerDpi_(options.printerDpi),
      designDpi_(options.designDpi) {
    AppSettings::GetInstance().SetStorageDir(storage_.Path());
    model_->PartManager().SetInstalledPart({options.widthInches, options.heightInches});
    auto* const process = PrintEngine::Printing::PrintProcessHandler::GetInstance();
    process->InitializeOffscreenDrawing();
    ZplCore::UseFontFilesOfSettings();
    for (auto const& [font, file] : options.fonts) process->SetFontFile(font, file);
    process->SetWarningReceiver([](std::string_view line) { Log::Report(LogTopic::Font, std::string(line)); });
    StartStream();
}

void Desk::StartStream() {
    systemContext_ = std::make_shared<Context>(ContextProcessor::SystemContext);
    systemContext_->Set(ZplContextKeys::CodePageConverter, ZplCodePageConverter(0));
    model_->ResetStreamCharacters();
    PrinterContext::Requests requests;
    requests.sendToHost = hostReceiver_;
    printerContext_ = std::make_shared<PrinterContext>(*model_, printerDpi_, designDpi_, clock_, std::move(requests));
}

void Desk::SetHostReceiver(std::function<void(std::string_view)> receiver) {
    hostReceiver_ = std::move(receiver);
    StartStream();
}

std::unique_ptr<Zpl::Host::Session> Desk::MakeSession() {
    return std::make_unique<Zpl::Host::Session>(*model_, systemContext_, fonts_, printerContext_, handlers_);
}
