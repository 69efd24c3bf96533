#include "library/Desk.h"

#include "PrintEngine/Printing/PrintProcessHandler.h"
#include "Scripting/ScriptGraphicContext.h"
#include "fields/text/Fonts.h"
#include "foundation/Log.h"
#include "frontend/context/ZplContextKeys.h"
#include "frontend/processor/CreateHandlers.h"
#include "library/LoadedReader.h"
#include "library/WarmFonts.h"
#include "propertybus/PublishingPropertyManager.h"

namespace {

std::shared_ptr<Clock const> MakeClock(DeskSettings const& settings) {
    if (settings.time) return std::make_shared<FixedClock>(*settings.time);
    return std::make_shared<LocalClock>();
}

}  // namespace

Desk::Desk(DeskSettings const& settings)
    : machine_(settings.machine),
      model_(ZPLProcessorInterface::Create(std::make_shared<PublishingPropertyManager>(), nullptr)),
      handlers_(CreateHandlers(settings.tag || machine_.features.Has(FeatureNames::rfidEncoderSupport),
                               machine_.features.Has(FeatureNames::disablePausing))),
      fontFiles_(settings.fonts),
      clock_(MakeClock(settings)),
      printerDpi_(settings.printerDpi),
      designDpi_(settings.designDpi) {
    if (machine_.formatsFolder.empty())
        machine_.formatsFolder = storage_.emplace(std::filesystem::temp_directory_path(), "zpl-").Path();
    model_->PartManager().SetInstalledPart({settings.widthInches, settings.heightInches});
    PrintEngine::Printing::PrintProcessHandler::GetInstance()->InitializeOffscreenDrawing();
    fonts_ = WarmFonts::Take(FontSettings());
    if (!fonts_) SetUpFonts(*(fonts_ = std::make_unique<PrintEngine::Printing::TrueTypeCacheCreator>()));
    if (settings.readsSymbols) reader_ = LoadSymbolReader();
    SetFontReceiver({});
    StartStream();
}

Desk::~Desk() {
    fonts_->SetWarningReceiver({});
    if (!fontsLackSomething_) WarmFonts::Keep(FontSettings(), std::move(fonts_));
}

/// All that says which file draws which font.
std::string Desk::FontSettings() const {
    std::string text = machine_.fontsFolder.string() + '\0' + machine_.fontFiles;
    for (auto const& [font, file] : fontFiles_) text.append(1, '\0').append(font).append(1, '=').append(file);
    return text;
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
    auto session =
        std::make_unique<Zpl::Host::Session>(*model_, systemContext_, *fonts_, printerContext_, handlers_, machine_);
    session->SetSymbolReader(reader_);
    return session;
}

void Desk::SetUpFonts(PrintEngine::Printing::TrueTypeCacheCreator& fonts) const {
    Scripting::ScriptGraphicContext::InitializeFontManager(fonts, machine_.fontsFolder);
    ZplCore::UseFontFiles(machine_.fontFiles, fonts);
    for (auto const& [font, file] : fontFiles_) fonts.SetFontFile(font, file);
}

void Desk::SetFontReceiver(PrintEngine::Printing::TrueTypeCacheCreator::WarningReceiver receiver) {
    fonts_->SetWarningReceiver([this, receiver = std::move(receiver)](std::string_view line, std::string_view subject) {
        fontsLackSomething_ = fontsLackSomething_ || !subject.empty();
        if (receiver) return receiver(line, subject);
        Log::Report(LogTopic::Font, std::string(line));
    });
}

Telling Desk::Report(LogTopic topic, std::string_view text, std::string_view subject, Findings::Format format) {
    return [this, topic, text = std::string(text), subject = std::string(subject), format,
            place = Log::Place()](Findings& findings) {
        if (subject.empty() || toldSubjects_.insert(subject).second) findings.AddReport(topic, text, format, place);
    };
}
