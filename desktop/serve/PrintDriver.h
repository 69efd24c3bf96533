#pragma once

#include <QtCore/QFileSystemWatcher>
#include <QtCore/QObject>
#include <QtCore/QTimer>
#include <chrono>
#include <filesystem>
#include <functional>
#include <optional>
#include <set>
#include <string>

#include "PrintEngine/Printing/JobMetaData.h"
#include "desktop/VirtualTag.h"
#include "desktop/serve/BusComponent.h"

/// Consumes the pages of jobs as a printer does: one job after the other, page by page, each in the time that its
/// length takes. Reports status, then path, then page, and keeps a copy of each page.
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
    };

    PrintDriver(ThreadFactory& threads, std::filesystem::path const& socket, Options options,
                std::function<void()> onJobsLost, std::function<void(std::string const&)> say);

    void Pause();
    void Resume();
    void Cancel();
    void CancelAll();
    /// The host is gone, and with it the jobs that it had: they are given up.
    void GiveUpJobs();
    std::string StatusText() const;
    bool IsPaused() const { return options_.paused || state_ == State::Paused; }
    unsigned PrintedPages() const { return printed_; }

private:
    enum class State { Idle, Printing, Paused };

    void PublishProperties();
    void OnMain(std::shared_ptr<Property> const& property, std::function<void(std::string const&)> react);
    void StartNext();
    void Start(std::filesystem::path const& path, PrintEngine::Printing::JobMetaData metaData);
    void PrintPage();
    std::vector<RfidOperation> TagOperationsOfPage() const;
    void ReadTag();
    void TellTag();
    std::filesystem::path OutputFile(std::string const& name, unsigned page) const;
    std::string FreeOutputName() const;
    bool KeepPage(std::filesystem::path const& file);
    std::chrono::milliseconds TimeOf(std::filesystem::path const& file) const;
    void PausePrinting(char const* status);
    void GoOn();
    void FinishJob();

    Options options_;
    std::function<void()> onJobsLost_;
    std::function<void(std::string const&)> say_;
    BusComponent driver_;
    BusComponent apps_;
    BusComponent spooler_;
    std::shared_ptr<StringProperty> status_;
    std::shared_ptr<StringProperty> path_;
    std::shared_ptr<UInt32Property> page_;
    std::shared_ptr<UInt32Property> resumeFrom_;
    std::shared_ptr<BoolProperty> resume_;
    std::shared_ptr<BoolProperty> pausePrinting_;
    std::shared_ptr<BoolProperty> cancelZpl_;
    std::shared_ptr<BoolProperty> cancelPrint_;
    std::shared_ptr<StringProperty> canSend_;
    std::shared_ptr<StringProperty> tagResponse_;
    QFileSystemWatcher watcher_;
    QTimer pageTimer_;
    QTimer scanTimer_;
    QTimer patience_;

    State state_ = State::Idle;
    std::filesystem::path job_;
    PrintEngine::Printing::JobMetaData metaData_;
    unsigned next_ = 0;       // page to print next
    bool tagIsRead_ = false;  // of that page
    std::string outputName_;  // of the files that the pages become, without their numbers
    std::set<std::filesystem::path> finished_;
    unsigned printed_ = 0;
};
