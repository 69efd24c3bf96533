#pragma once

#include <QtCore/QObject>
#include <QtCore/QString>
#include <QtCore/QVariantList>
#include <QtCore/QVariantMap>
#include <memory>

#include "library/DeskSettings.h"
#include "plugin/surfaces/DriverOrders.h"
#include "plugin/surfaces/JobList.h"
#include "plugin/surfaces/PrintDoor.h"
#include "propertybus/Property.h"

class LabelEditor;
class PICLServerAgent;
class PublishingPropertyManager;
class TemplateList;
class TWSProcessorInterface;

/// What the surfaces see of the process: the job that prints, and the label part. Lives on the main thread; what other
/// threads deliver reaches it through the event loop.
class TQTWSProcessorInterface : public QObject {
    Q_OBJECT
    /// Of the job that prints, or printed last; empty before the first one.
    Q_PROPERTY(QString jobFolder READ jobFolder NOTIFY jobChanged)
    Q_PROPERTY(bool isPrinting READ isPrinting NOTIFY jobChanged)
    /// In the driver's words, as "Print Paused"; empty when it is ready and nothing prints.
    Q_PROPERTY(QString jobStatus READ jobStatus NOTIFY jobChanged)
    /// Counted from 0.
    Q_PROPERTY(int printingPage READ printingPage NOTIFY jobChanged)

    /// Where printed pages are kept, as on a desk: "job", the folder of a job, and "stem", what the names of the files
    /// of its printed pages begin with. Of the job that began to print last; before the first one since the printer was
    /// started, the "stem" is that of the newest that is kept, and there is no "job".
    Q_PROPERTY(QVariantMap printedPages READ printedPages NOTIFY printedPagesChanged)

    /// The jobs whose pages can be looked at: a JobList.
    Q_PROPERTY(QObject* jobList READ jobList CONSTANT)

    /// Inches.
    Q_PROPERTY(double labelWidth READ labelWidth NOTIFY labelPartChanged)
    Q_PROPERTY(double labelHeight READ labelHeight NOTIFY labelPartChanged)
    /// The fields of the label part, each with the texts "name" and "value".
    Q_PROPERTY(QVariantList labelFields READ labelFields NOTIFY labelPartChanged)
    /// A TemplateList of what the printer has stored, made when it is first asked for; null before the model is there.
    Q_PROPERTY(QObject* templates READ templates NOTIFY labelPartChanged)
    /// A LabelEditor: changes stored formats.
    Q_PROPERTY(QObject* editor READ editor CONSTANT)

public:
    TQTWSProcessorInterface();
    ~TQTWSProcessorInterface() override;

    static void ConnectModel(std::shared_ptr<TQTWSProcessorInterface> const& self,
                             std::shared_ptr<TWSProcessorInterface> model);
    void SetPropertyManager(std::shared_ptr<PublishingPropertyManager> properties);
    void InitCallbacks();
    /// Behind SetPropertyManager.
    void SetServerAgent(std::shared_ptr<PICLServerAgent> agent);

    QString jobFolder() const { return jobFolder_; }
    bool isPrinting() const;
    QString jobStatus() const;
    int printingPage() const;
    QVariantMap printedPages() const { return printedPages_; }
    QObject* jobList() const { return jobList_.get(); }
    double labelWidth() const;
    double labelHeight() const;
    QVariantList labelFields() const;
    QObject* templates();

    /// Made when it is first asked for.
    QObject* editor();

    /// What a person has the print driver do; see DriverOrders. False if nobody is there who would.
    Q_INVOKABLE bool pause() { return orders_ && orders_->Pause(); }
    Q_INVOKABLE bool resume() { return orders_ && orders_->Resume(); }
    Q_INVOKABLE bool cancel(QString const& folder) { return orders_ && orders_->Cancel(folder.toStdString()); }

    /// By which surfaces print; null before the agent is set.
    PrintDoor* Door() const { return door_.get(); }
    /// What a desk is opened with that is to draw what this printer would print, from its store. Whoever opens it must
    /// leave that store as it is.
    DeskSettings PrinterDesk() const;

Q_SIGNALS:
    void jobChanged();
    void printedPagesChanged();
    void labelPartChanged();

private:
    void Update();
    void ReadPrintedPages();
    void FindNewestPrinted(QString const& folder);
    unsigned Number(char const* identifier) const;
    unsigned Resolution() const;

    std::shared_ptr<TWSProcessorInterface> model_;
    std::shared_ptr<PublishingPropertyManager> properties_;
    std::unique_ptr<PrintDoor> door_;
    std::unique_ptr<DriverOrders> orders_;
    std::unique_ptr<TemplateList> templates_;
    QString jobFolder_;
    QVariantMap printedPages_;
    std::unique_ptr<JobList> jobList_;
    std::unique_ptr<LabelEditor> editor_;
};
