#include "plugin/preview/PreviewPlugin.h"

#include <QtGui/QImage>
#include <QtQml/QQmlApplicationEngine>
#include <QtQml/QQmlContext>
#include <QtQuick/QQuickWindow>
#include <filesystem>
#include <stdexcept>

#include "plugin/TQTWSProcessorInterface.h"
#include "plugin/TWSProcessorInterface.h"
#include "plugin/preview/PrintedPages.h"
#include "plugin/surfaces/RegisterSurfaces.h"

// The window goes before the objects that it speaks to.
PreviewPlugin::~PreviewPlugin() {
    if (engine_) qDeleteAll(engine_->rootObjects());
}

void PreviewPlugin::Create(QString const&, std::shared_ptr<QQmlApplicationEngine> engine) {
    engine_ = std::move(engine);
    twsInterface_ = std::make_shared<TQTWSProcessorInterface>();
    RegisterSurfaces(*engine_, nullptr, twsInterface_.get());
}

void PreviewPlugin::Init(std::shared_ptr<PublishingPropertyManager> properties,
                         std::shared_ptr<PICLServerAgent> agent) {
    TQTWSProcessorInterface::ConnectModel(twsInterface_, TWSProcessorInterface::Create(properties, agent));
    twsInterface_->SetPropertyManager(properties);
    twsInterface_->InitCallbacks();
    twsInterface_->SetServerAgent(agent);
    printedPages_ = std::make_shared<PrintedPages>(*properties);
    engine_->rootContext()->setContextProperty(QStringLiteral("PrintedPages"), printedPages_.get());

    QString reason;
    connect(engine_.get(), &QQmlEngine::warnings, this, [&reason](QList<QQmlError> const& warnings) {
        if (reason.isEmpty()) reason = warnings.first().toString();
    });
    engine_->load(QUrl(QStringLiteral("qrc:/preview/PreviewWindow.qml")));
    disconnect(engine_.get(), &QQmlEngine::warnings, this, nullptr);
    if (engine_->rootObjects().isEmpty()) throw std::runtime_error(reason.toStdString());

    auto* const window = qobject_cast<QQuickWindow*>(engine_->rootObjects().constFirst());
    QString const picture = qEnvironmentVariable("ZPL_PREVIEW_PICTURE");
    if (window && !picture.isEmpty()) KeepPicture(*window, picture);
}

/// For documents and tests: a file that always holds what the window shows.
void PreviewPlugin::KeepPicture(QQuickWindow& window, QString const& file) {
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
