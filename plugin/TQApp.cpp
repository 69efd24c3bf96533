#include "plugin/TQApp.h"

#include <QtCore/QCoreApplication>
#include <QtCore/QDir>
#include <QtCore/QFile>
#include <QtGui/QFontDatabase>

#include "foundation/AppSettings.h"
#include "foundation/DebugZones.h"

namespace {

constexpr unsigned ArchiveAttempts = 5;
constexpr unsigned ArchivePause = 5;  // seconds

std::filesystem::path ArchivePath() {
    auto const& settings = AppSettings::GetInstance();
    return settings.StorageDir() / (settings.ComponentName() + "Archive.json");
}

/// For every engine that is made from now on.
void AddQmlPath(QString const& folder) {
    constexpr char const* Variable = "QML_IMPORT_PATH";
    QByteArray const others = qgetenv(Variable);
    qputenv(Variable, QFile::encodeName(folder) + (others.isEmpty() ? QByteArray() : ':' + others));
}

/// Fonts that lie beside the program, for the surfaces.
void LoadApplicationFonts() {
    std::error_code error;
    for (auto const& entry :
         std::filesystem::directory_iterator(AppSettings::GetInstance().AppBin() / "fonts", error)) {
        if (QFontDatabase::addApplicationFont(QString::fromStdString(entry.path().string())) < 0)
            DebugLog(Warning, entry.path().string() + " is no font");
    }
}

}  // namespace

void TQApp::InitializeQtSettings(std::string const& name, std::string const& componentId,
                                 std::string const& componentLabel) {
    AddQmlPath(QDir::currentPath() + QStringLiteral("/qml"));
    auto& settings = AppSettings::GetInstance();
    settings.SetComponentName(name);
    SetDebugLogName(name);
    settings.SetComponentIdentifier(componentId);
    settings.SetComponentIdentifierString(componentLabel);
    // The platform's own keyboard, if the surfaces are shown on the printer's screen.
    if (qEnvironmentVariableIsEmpty("QT_IM_MODULE")) qputenv("QT_IM_MODULE", "qtvirtualkeyboard");
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
    std::chrono::milliseconds const followTimeout(values.ExternalPropertySubscriptionTimeoutMS());
    properties_ = std::make_shared<PublishingPropertyManager>(
        threads_, ArchiveAttempts, ArchivePause, values.GetComponentIdentifier(), ArchivePath(), followTimeout);
    LoadApplicationFonts();
}
