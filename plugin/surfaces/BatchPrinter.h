#pragma once

#include <QtCore/QFileSystemWatcher>
#include <QtCore/QObject>
#include <QtCore/QStringList>
#include <atomic>
#include <memory>
#include <optional>

#include "library/forms/Batch.h"
#include "library/forms/BatchJournal.h"
#include "plugin/surfaces/TemplateStore.h"

/// Prints a label of one or more templates for each row of a list. The list is looked through first; then it goes to
/// the printer piece by piece, each when the one before is taken, so that its length does not matter. How far it has
/// come is kept on the disk: after an end of the process the batch is there again, stopped.
class BatchPrinter : public QObject {
    Q_OBJECT
    /// Names of the lists on the storage folder.
    Q_PROPERTY(QStringList lists READ lists NOTIFY listsChanged)
    Q_PROPERTY(QString folder READ folder CONSTANT)  ///< that they are put in
    /// "", "checking", "ready", "refused", "printing", "stopped" or "done".
    Q_PROPERTY(QString state READ state NOTIFY changed)
    Q_PROPERTY(QString list READ list NOTIFY changed)
    Q_PROPERTY(QStringList formats READ formats NOTIFY changed)  ///< full names
    Q_PROPERTY(double rows READ rows NOTIFY changed)
    Q_PROPERTY(double faulty READ faulty NOTIFY changed)  ///< rows that cannot print
    Q_PROPERTY(double labels READ labels NOTIFY changed)
    Q_PROPERTY(double taken READ taken NOTIFY changed)  ///< rows that the printer has taken over
    /// Rows behind those that may have been taken, or not: the process ended as they were handed over.
    Q_PROPERTY(double doubtful READ doubtful NOTIFY changed)
    Q_PROPERTY(QStringList faults READ faults NOTIFY changed)  ///< of rows, a sentence each
    Q_PROPERTY(QStringList remarks READ remarks NOTIFY changed)
    Q_PROPERTY(QString notice READ notice NOTIFY changed)
    Q_PROPERTY(bool isTrouble READ isTrouble NOTIFY changed)

public:
    explicit BatchPrinter(TemplateStore store);
    ~BatchPrinter() override;

    QStringList lists() const { return lists_; }
    QString folder() const { return QString::fromStdString(store_.ValuesFolder().string()); }
    QString state() const { return QString::fromLatin1(state_); }
    QString list() const;
    QStringList formats() const;
    double rows() const { return static_cast<double>(record_.rows); }
    double faulty() const { return static_cast<double>(check_.faulty); }
    double labels() const { return static_cast<double>(record_.labels); }
    double taken() const { return static_cast<double>(record_.taken); }
    double doubtful() const { return isHandedOver_ ? 0 : static_cast<double>(record_.underWay - record_.taken); }
    QStringList faults() const;
    QStringList remarks() const;
    QString notice() const { return notice_; }
    bool isTrouble() const { return isTrouble_; }

    /// Looks a list of the folder through. Not while another one prints or is stopped.
    Q_INVOKABLE void check(QString const& list, QStringList const& formats);
    /// Prints the rows that have no fault.
    Q_INVOKABLE void start();
    /// No further row is handed over; those that were taken print.
    Q_INVOKABLE void stop();
    /// `again`: with the doubtful rows.
    Q_INVOKABLE void goOn(bool again);
    /// Forgets a batch that is stopped, or done.
    Q_INVOKABLE void giveUp();
    /// Reads the names of the lists anew.
    Q_INVOKABLE void look();

Q_SIGNALS:
    void listsChanged();
    void changed();

private:
    /// What the drawing thread has read.
    struct Found {
        std::vector<BatchTemplate> templates;
        BatchCheck check;
    };
    using Flag = std::shared_ptr<std::atomic<bool>>;

    /// Reads templates and list, then calls `take`.
    void Read(std::function<void(Found)> take);
    void TakeCheck(Found found);
    void TakeOn(Found found, std::uint64_t behind);
    /// `otherwise`: the state if it cannot begin.
    void Begin(std::uint64_t behind, char const* otherwise);
    void HandOver();
    void Send(Batch::Piece const& piece);
    void TakeAnswer(QString const& error);
    std::string FaultOfTemplates() const;
    void Keep();
    void Set(char const* state, QString const& notice = {}, bool isTrouble = false);

    TemplateStore store_;
    BatchJournal journal_;
    QFileSystemWatcher watcher_;
    QStringList lists_;
    char const* state_ = "";
    BatchRecord record_;
    BatchCheck check_;
    std::vector<BatchTemplate> templates_;
    std::optional<Batch> batch_;
    bool isHandedOver_ = false;  ///< a piece, and not answered
    Flag looks_;                 ///< false: the look through the list is given up
    QString notice_;
    bool isTrouble_ = false;
};
