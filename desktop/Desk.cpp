#include "desktop/Desk.h"

#include <cerrno>
#include <cstdlib>
#include <random>
#include <system_error>

#include "PrintEngine/Printing/PrintProcessHandler.h"
#include "desktop/LabelDrawer.h"
#include "fields/text/Fonts.h"
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

TemporaryFolderName::TemporaryFolderName(std::filesystem::path const& parent) : path_(parent / "zpl-") {
    constexpr char const* Digits = "0123456789abcdef";
    std::random_device random;
    for (int i = 0; i < 32; ++i) path_ += Digits[random() % 16];
}

TemporaryFolderName::~TemporaryFolderName() {
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
    : machine_(options.machine),
      model_(ZPLProcessorInterface::Create(std::make_shared<PublishingPropertyManager>(), nullptr)),
      handlers_(CreateHandlers(options.tag || machine_.features.Has(FeatureNames::rfidEncoderSupport),
                               machine_.features.Has(FeatureNames::disablePausing))),
      fontFiles_(options.fonts),
      clock_(MakeClock(options)),
      printerDpi_(options.printerDpi),
      designDpi_(options.designDpi) {
    if (machine_.formatsFolder.empty())
        machine_.formatsFolder = storage_.emplace(std::filesystem::temp_directory_path()).Path();
    if (options.keepJob) machine_.jobsFolder = options.outputFolder;
    model_->PartManager().SetInstalledPart({options.widthInches, options.heightInches});
    PrintEngine::Printing::PrintProcessHandler::GetInstance()->InitializeOffscreenDrawing();
    SetUpFonts(fonts_);
    SetFontReceiver({});
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
    return std::make_unique<Zpl::Host::Session>(*model_, systemContext_, fonts_, printerContext_, handlers_, machine_);
}

void Desk::SetUpFonts(PrintEngine::Printing::TrueTypeCacheCreator& fonts) const {
    ZplCore::UseFontFiles(machine_.fontFiles, fonts);
    for (auto const& [font, file] : fontFiles_) fonts.SetFontFile(font, file);
}

void Desk::SetFontReceiver(PrintEngine::Printing::TrueTypeCacheCreator::WarningReceiver receiver) {
    auto const report = [](std::string_view line, std::string_view) { Log::Report(LogTopic::Font, std::string(line)); };
    fonts_.SetWarningReceiver(receiver ? std::move(receiver) : report);
}

Telling Desk::Report(LogTopic topic, std::string_view text, std::string_view subject, Findings::Format format) {
    return [this, topic, text = std::string(text), subject = std::string(subject), format,
            place = Log::Place()](Findings& findings) {
        if (subject.empty() || toldSubjects_.insert(subject).second) findings.AddReport(topic, text, format, place);
    };
}

std::unique_ptr<LabelDrawer> Desk::MakeDrawer(ZplCore::FieldMap::Detail detail) {
    auto drawer =
        std::make_unique<LabelDrawer>(machine_.fontsFolder, model_->GetLabelPart(), detail,
                                      std::make_shared<PrinterOfThread>(printerDpi_, designDpi_, clock_),
                                      [this](LogTopic topic, std::string_view text, std::string_view subject,
                                             Findings::Format format) { return Report(topic, text, subject, format); });
    SetUpFonts(drawer->Fonts());
    return drawer;
}
