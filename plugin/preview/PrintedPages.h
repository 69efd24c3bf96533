#pragma once

#include <QtCore/QObject>
#include <QtCore/QString>
#include <memory>

#include "propertybus/Property.h"

class PublishingPropertyManager;

/// Where the printer on a desk keeps the pages that it has printed, as its driver tells it at the start of each job.
class PrintedPages : public QObject {
    Q_OBJECT
    Q_PROPERTY(QString job READ job NOTIFY changed)    ///< the folder of the job
    Q_PROPERTY(QString stem READ stem NOTIFY changed)  ///< what the names of its files begin with

public:
    explicit PrintedPages(PublishingPropertyManager& properties);

    QString job() const { return job_; }
    QString stem() const { return stem_; }

Q_SIGNALS:
    void changed();

private:
    void Read();

    std::shared_ptr<StringProperty> property_;
    QString job_;
    QString stem_;
};
