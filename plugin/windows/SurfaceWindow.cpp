#include "plugin/windows/SurfaceWindow.h"

#include <QtCore/QDir>
#include <QtCore/QFile>
#include <QtGui/QImage>
#include <QtQml/QQmlApplicationEngine>
#include <QtQuick/QQuickWindow>
#include <algorithm>
#include <filesystem>
#include <stdexcept>

#include "plugin/TQTWSProcessorInterface.h"
#include "plugin/TWSProcessorInterface.h"
#include "plugin/surfaces/RegisterSurfaces.h"
#include "propertybus/PropertyIdentifiers.h"
#include "propertybus/PublishingPropertyManager.h"

namespace {

bool HasModule(QQmlEngine const& engine, QString const& module) {
    auto const folders = engine.importPathList();
    return std::any_of(folders.begin(), folders.end(), [&](QString const& folder) {
        return QFile::exists(QDir(folder).filePath(module + QStringLiteral("/qmldir")));
    });
}

/// A keyboard on the screen, where the machine has one with all that it needs.
QString Keyboard(QQmlEngine const& engine) {
    bool const isWhole = HasModule(engine, QStringLiteral("QtQuick/VirtualKeyboard")) &&
                         HasModule(engine, QStringLiteral("Qt/labs/folderlistmodel"));
    return isWhole ? QStringLiteral("qrc:/TCPrintEngine/UiKeyboard.qml") : QString();
}

/// What the host has of itself, and these surfaces draw labels by.
void FollowResolution(PublishingPropertyManager& properties) {
    auto const follow = [&](char const* component, char const* property, char const* group) {
        properties.Follow<UInt32Property>(component, ExternalAppRegistration::Plain,
                                          PropertyName{property, property, group}, 0U);
    };
    follow(ComponentIdentifiers::FirmwareDriver, PropertyNames::DotsPerInch, PropertyGroups::General);
    follow(ComponentIdentifiers::ZplHost, PropertyNames::ZPLEmulatedDpi, PropertyGroups::PrintOperations);
}

}  // namespace

// The window goes before the objects that it speaks to.
SurfaceWindow::~SurfaceWindow() {
    if (engine_) qDeleteAll(engine_->rootObjects());
}

void SurfaceWindow::Create(QString const&, std::shared_ptr<QQmlApplicationEngine> engine) {
    engine_ = std::move(engine);
    twsInterface_ = std::make_shared<TQTWSProcessorInterface>();
    RegisterSurfaces(*engine_, nullptr, twsInterface_.get());
}

void SurfaceWindow::Init(std::shared_ptr<PublishingPropertyManager> properties,
                         std::shared_ptr<PICLServerAgent> agent) {
    FollowResolution(*properties);
    TQTWSProcessorInterface::ConnectModel(twsInterface_, TWSProcessorInterface::Create(properties, agent));
    twsInterface_->SetPropertyManager(properties);
    twsInterface_->InitCallbacks();
    twsInterface_->SetServerAgent(agent);
    Load();
    auto* const window = qobject_cast<QQuickWindow*>(engine_->rootObjects().constFirst());
    QString const picture = qEnvironmentVariable("ZPL_PREVIEW_PICTURE");
    if (!window || picture.isEmpty()) return;
    // The picture may be wanted of a room of the screen.
    auto* const screen = window->findChild<QObject*>(QStringLiteral("screen"));
    if (screen && qEnvironmentVariableIsSet("ZPL_SCREEN_ROOM"))
        screen->setProperty("room", qEnvironmentVariableIntValue("ZPL_SCREEN_ROOM"));
    KeepPicture(*window, picture);
}

void SurfaceWindow::Load() {
    QString reason;
    connect(engine_.get(), &QQmlEngine::warnings, this, [&reason](QList<QQmlError> const& warnings) {
        if (reason.isEmpty()) reason = warnings.first().toString();
    });
    engine_->setInitialProperties({{QStringLiteral("keyboard"), Keyboard(*engine_)}});
    engine_->load(source_);
    disconnect(engine_.get(), &QQmlEngine::warnings, this, nullptr);
    if (engine_->rootObjects().isEmpty()) throw std::runtime_error(reason.toStdString());
}

/// For documents and tests: a file that always holds what the window shows.
void SurfaceWindow::KeepPicture(QQuickWindow& window, QString const& file) {
    constexpr int Milliseconds = 200;
    connect(&pictureTimer_, &QTimer::timeout, &window, [&window, file] {
        QString const temporary = file + QStringLiteral(".tmp");
        if (!window.grabWindow().save(temporary, "png")) return;
        // Replaces the one before in one step.
        std::error_code error;
        std::filesystem::rename(temporary.toStdString(), file.toStdString(), error);
    });
    pictureTimer_.start(Milliseconds);
}
