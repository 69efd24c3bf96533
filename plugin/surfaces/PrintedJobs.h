#pragma once

#include <QtCore/QString>
#include <cstddef>
#include <optional>
#include <vector>

/// A job among those whose printed pages are kept in one folder, in files NAME-JOB-PAGE.png with pages from 1.
struct PrintedJob {
    QString stem;   ///< what the names of its files begin with, with their folder: FOLDER/NAME-JOB-
    QString name;   ///< NAME-JOB
    int pages = 0;  ///< the highest number of one that is kept

    /// Of which pages are kept; none without one.
    static std::optional<PrintedJob> Find(QString const& stem);
    /// The next that was printed before (`step` -1) or behind (1) the job of that stem; none if there is no such job,
    /// or nothing is kept of that one.
    static std::optional<PrintedJob> Beside(QString const& stem, int step);
    /// Those in the folder of a stem, or in a folder with a slash behind it, that began to print last, the newest
    /// first.
    static std::vector<PrintedJob> Newest(QString const& stem, std::size_t most);
};
