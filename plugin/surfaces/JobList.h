#pragma once

#include <QtCore/QFileSystemWatcher>
#include <QtCore/QObject>
#include <QtCore/QString>
#include <QtCore/QTimer>
#include <QtCore/QVariantList>
#include <filesystem>

/// The jobs whose pages can be looked at, each with its "name", the number of its "pages", and as PageView takes them
/// its "folder" or, if it has printed, its "stem". Of each kind at most 100. The folders are read beside the main
/// thread.
class JobList : public QObject {
    Q_OBJECT
    /// That print or wait, in the order in which they print. Kept up to date once they have been looked at.
    Q_PROPERTY(QVariantList waiting READ waiting NOTIFY waitingChanged)
    /// That have printed and whose pages are kept, the newest first.
    Q_PROPERTY(QVariantList printed READ printed NOTIFY printedChanged)

public:
    /// `jobsFolder`: below which each job that waits or prints has its folder.
    explicit JobList(std::filesystem::path jobsFolder);

    QVariantList waiting() const { return waiting_; }
    QVariantList printed() const { return printed_; }

    Q_INVOKABLE void lookAtWaiting();
    /// `stem`: of any job whose printed pages are kept; empty if none is known.
    Q_INVOKABLE void lookAtPrinted(QString const& stem);

Q_SIGNALS:
    void waitingChanged();
    void printedChanged();

private:
    template <typename Read>
    void LookBeside(QVariantList JobList::*list, void (JobList::*changed)(), Read read);

    std::filesystem::path const jobsFolder_;
    QVariantList waiting_;
    QVariantList printed_;
    QFileSystemWatcher watcher_;
    QTimer soon_;
};
