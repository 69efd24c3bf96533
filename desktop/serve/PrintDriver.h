#pragma once

#include <dirent.h>

#include <QtCore/QDeadlineTimer>
#include <QtCore/QFileSystemWatcher>
#include <QtCore/QObject>
#include <QtCore/QTimer>
#include <algorithm>
#include <chrono>
#include <cstdint>
#include <filesystem>
#include <functional>
#include <map>
#include <optional>
#include <set>
#include <string>

#include "PrintEngine/Printing/JobMetaData.h"
#include "desktop/serve/BusComponent.h"
#include "desktop/serve/PageNames.h"
#include "desktop/serve/PrinterEvent.h"
#include "library/VirtualTag.h"

/// Consumes the pages of jobs as a printer does: one job after the other, page by page, each in the time that its
/// length takes. Reports status, then path, then page, and keeps a copy of each page. The end of a job is reported when
/// the host has heard of its start, and the next job starts when it has heard of that end: a report that is lost with
/// the property server is made again, but not one that a later report has replaced. So a pause is reported when the
/// path is taken.
class PrintDriver : public QObject {
public:
    struct Options {
        std::filesystem::path jobsFolder;
        std::filesystem::path outputFolder;
        unsigned dpi = 203;
        double speed = 6;  ///< inches a second; 0 for as fast as it goes
        bool paused = false;
        std::optional<VirtualTag> tag = {};  ///< that every label carries
        /// How long a page may take to come while nothing else changes in the folders of the jobs.
        std::chrono::milliseconds patience = std::chrono::seconds(30);
        /// Is told of a job that prints no more, when its last page has been kept or it has been given up: the number
        /// in the name of a file (Zpl::Job::OriginPrefix).
        std::function<void(std::uint32_t)> onJobOver = [](std::uint32_t) {};
    };

    PrintDriver(ThreadFactory& threads, std::filesystem::path const& socket, Options options,
                std::function<void()> onJobsLost, TellEvent say);

    void Pause();
    void Resume();
    /// Gives up the job that prints; false if there is none.
    bool Cancel();
    void CancelAll();
    /// Of streams that ended with that packet, or before it, no job is printed that begins from now on.
    void CancelUpTo(std::uint32_t origin) { cancelledUpTo_ = std::max(cancelledUpTo_, origin); }
    /// The host is gone, and with it the jobs that it had: they are given up. The one that prints may come again, of
    /// the same origin: it goes on behind the pages that have been kept.
    void GiveUpJobs();
    std::string StatusText() const;
    bool IsPaused() const { return options_.paused || state_ == State::Paused; }
    unsigned PageCount() const { return printed_; }
    /// The name of the job that prints; empty if none does.
    std::string JobUnderWay() const;
    double Speed() const { return options_.speed; }
    /// Inches a second, for the pages behind the one under way.
    void SetSpeed(double speed) { options_.speed = speed; }

private:
    /// Ending: what is left of the job is to report its end.
    enum class State { Idle, Printing, Paused, Ending };
    /// A job that a host has left unfinished.
    struct CutJob {
        std::uint32_t origin;
        unsigned page;  ///< to print next
        bool isPaused;  ///< until somebody says that it goes on
    };

    /// Jobs that have not begun, with the number by which they are in order; 0 if it is not known yet.
    using WaitingJobs = std::map<std::filesystem::path, std::uint64_t>;

    void PublishProperties();
    void TakePause(bool isPause);
    void OnMain(std::shared_ptr<Property> const& property, std::function<void(std::string const&)> react);
    void WatchFolders();
    bool IsWatchedFolderThere() const;
    void NoteFolderChange();
    bool HostHasHeard();
    void GoAhead();
    void StartNext();
    void NoteCancellation();
    std::uint64_t SerialOf(std::filesystem::path const& job);
    void CleanUpAfter(WaitingJobs const& waiting);
    void Start(std::filesystem::path const& path, PrintEngine::Printing::JobMetaData metaData);
    std::string PrintedPagesText() const;
    void PrintPage();
    std::vector<RfidOperation> TagOperationsOfPage() const;
    void ReadTag();
    void TellTag();
    bool KeepPage(std::filesystem::path const& file);
    std::chrono::milliseconds TimeOf(std::filesystem::path const& file) const;
    void PausePrinting(char const* status);
    void GoOn();
    bool EndIfGone();
    static std::uint32_t OriginOf(std::filesystem::path const& job);
    static bool IsOriginKnown(std::filesystem::path const& job, PrintEngine::Printing::JobMetaData const& metaData);
    void FinishJob();
    void EndJob();
    void ReportEnd();
    void ReportPause();
    void WritePacket(JsonWriter& writer) const;

    Options options_;
    std::function<void()> onJobsLost_;
    TellEvent say_;
    BusComponent driver_;
    BusComponent apps_;
    BusComponent spooler_;
    std::shared_ptr<StringProperty> status_;
    std::shared_ptr<StringProperty> path_;
    std::shared_ptr<UInt32Property> page_;
    std::shared_ptr<StringProperty> printedPages_;
    std::shared_ptr<UInt32Property> resumeFrom_;
    std::shared_ptr<BoolProperty> resume_;
    std::shared_ptr<BoolProperty> pausePrinting_;
    std::shared_ptr<StringProperty> jobToCancel_;
    std::shared_ptr<BoolProperty> cancelZpl_;
    std::shared_ptr<BoolProperty> cancelPrint_;
    std::shared_ptr<StringProperty> canSend_;
    std::shared_ptr<StringProperty> tagResponse_;
    QFileSystemWatcher watcher_;
    std::shared_ptr<DIR> watched_;  ///< the jobs folder that is watched, while another may have its name by now
    QTimer pageTimer_;
    QTimer nextTimer_;
    QTimer patience_;

    State state_ = State::Idle;
    std::filesystem::path job_;
    PrintEngine::Printing::JobMetaData metaData_;
    std::uint32_t origin_ = 0;  // of that job; 0 if it is not known
    std::optional<CutJob> cut_;
    char const* pauseStatus_ = "";  // while that job is paused
    unsigned next_ = 0;             // page to print next
    bool tagIsRead_ = false;        // of that page
    PageNames names_;
    std::set<std::filesystem::path> finished_;
    WaitingJobs waiting_;
    std::set<std::filesystem::path> cancelled_;  // what was there when all was cancelled
    QDeadlineTimer cancellation_;                // by which it has taken away those that it means
    std::set<std::filesystem::path> doomed_;     // what was there when the user cancelled all; none of it starts before
    std::uint32_t cancelledUpTo_ = 0;            // origins
    QDeadlineTimer doomEnd_;                     // the host should long have heard of it
    unsigned printed_ = 0;
};
