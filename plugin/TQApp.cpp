#include "plugin/TQApp.h"

#include <QtCore/QCoreApplication>

#include "foundation/AppSettings.h"

namespace {

constexpr unsigned ArchiveAttempts = 5;
constexpr unsigned ArchivePause = 5;  // seconds

std::filesystem::path ArchivePath() {
    auto const& settings = AppSettings::GetInstance();
    return settings.StorageDir() / (settings.ComponentName() + "Archive.json");
}

}  // namespace

void TQApp::InitializeQtSettings(std::string const& name, std::string const& componentId,
                                 std::string const& componentLabel) {
    auto& settings = AppSettings::GetInstance();
    settings.SetComponentName(name);
    settings.SetComponentIdentifier(componentId);
    settings.SetComponentIdentifierString(componentLabel);
    // The platform's own keyboard, if the surfaces are shown on the printer's screen.
    if (qEnvironmentVariableIsEmpty("QT_IM_MODULE")) qputenv("QT_IM_MODULE", "qtvirtualkeyboard");
}

void TQApp::AddLibraryPaths() {
    auto const& settings = AppSettings::GetInstance();
    for (auto const& folder : {settings.DevDir(), settings.AppBin()}) {
        if (!folder.empty()) QCoreApplication::addLibraryPath(QString::fromStdString(folder.string()));
    }
}

TQApp::TQApp(std::filesystem::path const& settings, std::filesystem::path const& settingsOverride) {
    auto& values = AppSettings::GetInstance();
    values.LoadFile(settings);
    values.LoadFile(settingsOverride);
    if (auto const onTarget = values.Value("RunningOnTarget"); !onTarget.empty())
        values.SetRunningOnTarget(onTarget == "true");
    properties_ = std::make_shared<PublishingPropertyManager>(threads_, ArchiveAttempts, ArchivePause,
                                                              values.GetComponentIdentifier(), ArchivePath());
}
