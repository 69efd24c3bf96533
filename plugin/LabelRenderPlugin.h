#pragma once

#include <QtCore/QObject>
#include <QtCore/QtPlugin>
#include <memory>

#include "plugin/TQPluginInterface.h"

class TQTWSProcessorInterface;
class TQZPLProcessorInterface;
class TWSProcessorInterface;
class ZPLProcessorInterface;

/// The plugin: makes the job queue, the door of the host and that of the surfaces, and connects them to the bus.
class LabelRenderPlugin : public QObject, public TQPluginInterface {
    Q_OBJECT
    Q_PLUGIN_METADATA(IID "Tarvo.VexaPlugins.ZPLProcessor")

public:
    LabelRenderPlugin();
    ~LabelRenderPlugin() override;

    void Create(QString const& name, std::shared_ptr<QQmlApplicationEngine> engine) override;
    void Init(std::shared_ptr<PublishingPropertyManager> properties, std::shared_ptr<PICLServerAgent> agent) override;

private:
    std::shared_ptr<TQZPLProcessorInterface> zplInterface_;
    std::shared_ptr<TQTWSProcessorInterface> twsInterface_;
    std::shared_ptr<ZPLProcessorInterface> zplModel_;
    std::shared_ptr<TWSProcessorInterface> twsModel_;
};
