#pragma once

#include <QtCore/QAbstractListModel>
#include <QtCore/QFileSystemWatcher>
#include <QtCore/QTimer>
#include <vector>

#include "plugin/surfaces/DrawingThread.h"
#include "plugin/surfaces/TemplateStore.h"

class BatchPrinter;

/// The formats that the printer has stored, with their pictures, which are drawn when they are first asked for. Follows
/// the store. From here surfaces open a template, or print a batch.
class TemplateList : public QAbstractListModel {
    Q_OBJECT
    Q_PROPERTY(int count READ count NOTIFY countChanged)
    /// One batch at a time.
    Q_PROPERTY(QObject* batch READ batch CONSTANT)

public:
    /// `settings`: of the printer, with the folder of its store.
    TemplateList(DeskSettings const& settings, TemplateStore::Print print);
    ~TemplateList() override;

    int count() const { return static_cast<int>(entries_.size()); }
    QObject* batch();

    /// A TemplateForm for "E:ORDER.ZPL", the caller's until it is closed.
    Q_INVOKABLE QObject* open(QString const& fullName);
    /// A TemplateOrganizer for the fields of a format, in the same way.
    Q_INVOKABLE QObject* organize(QString const& fullName);
    Q_INVOKABLE void close(QObject* opened);
    /// Draws its picture, if that is not there or under way.
    Q_INVOKABLE void wantPicture(int row);

    int rowCount(QModelIndex const& parent = {}) const override;
    QVariant data(QModelIndex const& index, int role) const override;
    QHash<int, QByteArray> roleNames() const override;

    /// What is known of a format's file, to see that it has changed.
    static std::filesystem::file_time_type TimeOf(StoredFormats const& formats, StoredFormat const& format);

Q_SIGNALS:
    void countChanged();
    /// Formats have come, gone or been stored anew.
    void changed();

private:
    enum Role { Name = Qt::UserRole, FullName, IsInMemory, Picture, Problem };
    struct Entry {
        StoredFormat format;
        std::filesystem::file_time_type time;
        QImage picture;
        QString problem;
        bool isAsked = false;
    };

    void Watch();
    void Refresh();
    void ShowSettled(std::string const& fullName);
    void TakePicture(Entry const& drawn, QImage picture, QString const& problem);
    QObject* Keep(QObject* opened);

    DrawingThread drawing_;
    TemplateStore store_;
    std::vector<Entry> entries_;
    QFileSystemWatcher watcher_;
    QTimer refresh_;
    BatchPrinter* batch_ = nullptr;  ///< made when it is first asked for
};
