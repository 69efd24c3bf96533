#pragma once

#include <memory>

class PICLServerAgent;
class PublishingPropertyManager;
class QQmlApplicationEngine;
class QString;

/// What the platform's host asks of a plugin.
class TQPluginInterface {
public:
    virtual ~TQPluginInterface() = default;
    /// Makes the objects, before there is a model.
    virtual void Create(QString const& name, std::shared_ptr<QQmlApplicationEngine> engine) = 0;
    /// Connects them to their models; may wait for other components.
    virtual void Init(std::shared_ptr<PublishingPropertyManager> properties,
                      std::shared_ptr<PICLServerAgent> agent) = 0;
    virtual void Close() {}
};
