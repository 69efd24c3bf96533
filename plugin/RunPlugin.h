#pragma once

#include <QtCore/QString>
#include <QtGui/QGuiApplication>
#include <QtQml/QQmlApplicationEngine>
#include <csignal>
#include <memory>
#include <string>

#include "foundation/AppSettings.h"
#include "foundation/Ending.h"
#include "plugin/FontsInterface.h"
#include "plugin/PlatformStrings.h"
#include "plugin/SignalWatch.h"
#include "plugin/TQApp.h"
#include "plugin/TQFonts.h"
#include "propertybus/PICLIF.h"

/// Makes the link to the property server and the plugin of class T, and takes them apart again in reverse order.
template <typename T>
class PluginHostApp {
public:
    explicit PluginHostApp(TQApp& app) : app_(app) {}

    /// Property callbacks run on threads that the plugin outlives.
    ~PluginHostApp() {
        if (link_) link_->Disconnect();
        app_.Properties()->StopThread();
        plugin_.reset();
    }

    void RegisterInterfaceClasses(QGuiApplication& application, std::shared_ptr<QQmlApplicationEngine> engine) {
        auto const& properties = app_.Properties();
        link_ = std::make_unique<PICLIF>(app_.Threads(), properties, AppSettings::GetInstance().ComponentName());
        signals_ = std::make_unique<SignalWatch>(app_.Threads(), [this, &application] {
            processIsEnding = true;
            link_->GetServerAgent()->CancelWaiting();
            QMetaObject::invokeMethod(&application, &QCoreApplication::quit, Qt::QueuedConnection);
        });
        properties->StartThread();
        link_->Connect(PlatformStrings::ComponentPaths::PropertyServer());
        plugin_ = std::make_unique<T>();
        auto const agent = link_->GetServerAgent();
        fonts_ = std::make_shared<TQFonts>();
        TQFonts::ConnectModel(fonts_, FontsInterface::Create(properties, app_.Threads(), agent));
        plugin_->Create(QString(), std::move(engine));
        plugin_->Init(properties, agent);
    }

private:
    TQApp& app_;
    std::unique_ptr<PICLIF> link_;
    std::unique_ptr<SignalWatch> signals_;
    std::unique_ptr<T> plugin_;
    std::shared_ptr<TQFonts> fonts_;
};

/// Runs a plugin process until its event loop ends.
template <typename T>
void RunPlugin(int argc, char** argv, std::string const& name, std::string const& componentId,
               std::string const& componentLabel) {
    SignalWatch::BlockSignals();
    // A reader of our log that goes away is no reason to go too.
    std::signal(SIGPIPE, SIG_IGN);
    // A file that may not grow is an error of that file.
    std::signal(SIGXFSZ, SIG_IGN);
    TQApp::InitializeQtSettings(name, componentId, componentLabel);
    QGuiApplication application(argc, argv);
    auto const& settings = AppSettings::GetInstance();
    TQApp app(settings.StorageDir() / (name + ".json"), settings.AppBin() / (name + "Override.json"));
    auto const engine = std::make_shared<QQmlApplicationEngine>();
    PluginHostApp<T> host(app);
    host.RegisterInterfaceClasses(application, engine);
    QGuiApplication::exec();
}
