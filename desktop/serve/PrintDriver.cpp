#include "desktop/serve/PrintDriver.h"

#include <sys/stat.h>

#include <QtCore/QThread>
#include <algorithm>
#include <chrono>

#include "PrintEngine/Printing/JobFileSystemStrings.h"
#include "foundation/DebugZones.h"
#include "foundation/Files.h"
#include "foundation/Json.h"

using PrintEngine::Printing::JobMetaData;

namespace {

/// A second name for the file where both folders are of one file system: nobody writes in a page, another one takes its
/// place. Elsewhere a copy.
std::error_code KeepFile(std::filesystem::path const& file, std::filesystem::path const& target) {
    std::error_code error;
    std::filesystem::create_hard_link(file, target, error);
    if (!error) return {};
    std::string content;
    error = ReadFile(file, content);
    return error ? error : WriteFileAtomically(target, content);
}

}  // namespace

PrintDriver::PrintDriver(ThreadFactory& threads, std::filesystem::path const& socket, Options options,
                         std::function<void()> onJobsLost, TellEvent say)
    : options_(std::move(options)),
      onJobsLost_(std::move(onJobsLost)),
      say_(std::move(say)),
      driver_(threads, ComponentIdentifiers::FirmwareDriver, socket),
      apps_(threads, ComponentIdentifiers::PerMainAndApps, socket),
      spooler_(threads, ComponentIdentifiers::PrintSpooler, socket),
      names_(options_.outputFolder) {
    std::filesystem::create_directories(options_.outputFolder);
    PublishProperties();
    WatchFolders();
    connect(&watcher_, &QFileSystemWatcher::directoryChanged, this, [this] { NoteFolderChange(); });
    pageTimer_.setSingleShot(true);
    connect(&pageTimer_, &QTimer::timeout, this, [this] { PrintPage(); });
    nextTimer_.setSingleShot(true);
    connect(&nextTimer_, &QTimer::timeout, this, [this] { GoAhead(); });
    patience_.setSingleShot(true);
    connect(&patience_, &QTimer::timeout, this, [this] {
        if (state_ != State::Printing) return;
        say_("page " + std::to_string(next_ + 1) + " of job " + names_.Job() + " does not come");
        PausePrinting("Print Error");
    });
}

/// The folder that the jobs' one stands in is watched too, so that its end is noticed.
void PrintDriver::WatchFolders() {
    std::error_code error;
    std::filesystem::create_directories(options_.jobsFolder, error);
    if (error) say_("cannot make " + options_.jobsFolder.string() + ": " + error.message());
    watched_.reset(::opendir(options_.jobsFolder.c_str()), [](DIR* folder) {
        if (folder) ::closedir(folder);
    });
    watcher_.removePath(QString::fromStdString(options_.jobsFolder.string()));
    for (auto const& folder : {options_.jobsFolder.parent_path(), options_.jobsFolder})
        watcher_.addPath(QString::fromStdString(folder.string()));
}

/// The watcher goes by the path, and does not notice a folder that the host has made again by the time it looks.
bool PrintDriver::IsWatchedFolderThere() const {
    struct stat watched {};
    struct stat named {};
    return watched_ && ::fstat(::dirfd(watched_.get()), &watched) == 0 &&
           ::stat(options_.jobsFolder.c_str(), &named) == 0 && watched.st_dev == named.st_dev &&
           watched.st_ino == named.st_ino;
}

void PrintDriver::NoteFolderChange() {
    if (!IsWatchedFolderThere()) {
        say_(options_.jobsFolder.string() + " was removed, and the jobs in it; it is made again");
        WatchFolders();
        canSend_->Set("false");
    }
    if (EndIfGone()) return;
    if (state_ == State::Printing) PrintPage();
    if (state_ == State::Idle) GoAhead();
}

void PrintDriver::PublishProperties() {
    namespace Group = PropertyGroups;
    using namespace PropertyNames;
    driver_.Own<UInt32Property>(DotsPerInch, Group::General, options_.dpi);
    driver_.Own<UInt32Property>(SubstrateMode, Group::SubstratePrinterProperties, 2U);
    driver_.Own<BoolProperty>(PrintingIsStopped, Group::PrintOperations, false);
    tagResponse_ = driver_.Own<StringProperty>(RfidReadCommandResponse, Group::RfidEncoderOperations, "");
    tagResponse_->SetEveryWriteCounts(true);
    printedPages_ = driver_.Own<StringProperty>(PrintedPages, Group::PrintOperations, PrintedPagesText());
    page_ = driver_.Own<UInt32Property>(CurrentPrintingPageNumber, Group::PrintOperations, 0U);
    resumeFrom_ = driver_.Own<UInt32Property>(ResumePrintingFromPageNumber, Group::PrintOperations, 0U);
    resume_ = driver_.Own<BoolProperty>(ResumePrinting, Group::PrintOperations, false);
    pausePrinting_ = driver_.Own<BoolProperty>(PropertyNames::PausePrinting, Group::PrintOperations, false);
    // Who asks to go on may mean a pause that was not asked for by it.
    pausePrinting_->SetEveryDeliveryCounts();
    // Not emptied here when it has been read: the next order may be on its way.
    jobToCancel_ = driver_.Own<StringProperty>(JobToCancel, Group::PrintOperations, "");
    jobToCancel_->SetEveryDeliveryCounts();
    apps_.Own<BoolProperty>(PrintOnDemandToggle, Group::PrintingPreferences, false);
    apps_.Own<UInt32Property>(PrintStyle, Group::PrintingPreferences, 0U);
    apps_.Own<UInt32Property>(PrintingUnPaused, Group::PrintOperations, 0U);
    cancelZpl_ = apps_.Own<BoolProperty>(ZPLCancelAllJobs, Group::PrintOperations, false);
    cancelPrint_ = spooler_.Own<BoolProperty>(CancelAllPrintJobs, Group::PrintOperations, false);
    canSend_ = spooler_.Own<StringProperty>(CanSendCurrentJobToPrintResponse, Group::PrintOperations, "");
    canSend_->SetEveryWriteCounts(true);
    // The host waits for these two, so everything else is there when they are.
    path_ = driver_.Own<StringProperty>(JobToPrintPathName, Group::PrintOperations, JobFileSystemStrings::NoPage);
    status_ =
        driver_.Own<StringProperty>(PrintJobStatus, Group::PrintOperations, options_.paused ? "Print Paused" : "");

    for (auto const& property : std::initializer_list<std::shared_ptr<Property>>{status_, path_, page_}) {
        property->SetTakenCallback([this] {
            QMetaObject::invokeMethod(
                this, [this] { GoAhead(); }, Qt::QueuedConnection);
        });
    }
    OnMain(resume_, [this](std::string const& value) {
        if (value != "true") return;
        resume_->Set(false);
        // The host says so twice when nothing is left of a job, and the next one may be printing by then.
        if (state_ != State::Paused) return;
        next_ = resumeFrom_->Get();
        GoOn();
    });
    OnMain(pausePrinting_, [this](std::string const& value) { TakePause(value == "true"); });
    OnMain(jobToCancel_, [this](std::string const& value) {
        // The one that was meant may be over, and the next one printing.
        if (value == job_.string() && Cancel()) say_("cancelled");
    });
    OnMain(cancelPrint_, [this](std::string const& value) {
        if (value != "true") return;
        cancelPrint_->Set(false);
        NoteCancellation();
        onJobsLost_();
        EndIfGone();
    });
}

/// Properties are delivered on threads of the bus; the driver works on the main thread, and is not told there of what
/// it has written itself.
void PrintDriver::OnMain(std::shared_ptr<Property> const& property, std::function<void(std::string const&)> react) {
    property->AddCallback([this, react = std::move(react)](std::shared_ptr<Property> const& changed) {
        if (QThread::currentThread() == thread()) return;
        QMetaObject::invokeMethod(
            this, [react, value = changed->ValueText()] { react(value); }, Qt::QueuedConnection);
    });
}

void PrintDriver::Start(std::filesystem::path const& path, JobMetaData metaData) {
    job_ = path;
    metaData_ = std::move(metaData);
    next_ = metaData_.firstPage;
    origin_ = OriginOf(path);
    auto const cut = std::exchange(cut_, std::nullopt);
    bool const goesOn = cut && cut->origin == origin_;
    if (goesOn) next_ = cut->page;
    tagIsRead_ = false;
    waiting_.erase(path);
    names_.StartJob(metaData_.jobName, next_);
    state_ = State::Printing;
    watcher_.addPath(QString::fromStdString(path.string()));
    printedPages_->Set(PrintedPagesText());
    say_({"", "job", [this](JsonWriter& writer) {
              writer.Key("job").String(names_.Job()).Key("name").String(metaData_.jobName);
              writer.Key("pages").Int(metaData_.totalPages);
              WritePacket(writer);
          }});
    status_->Set("Printing");
    path_->Set(path.string());
    page_->Set(next_);
    if (origin_ != 0 && origin_ <= cancelledUpTo_) return FinishJob();
    goesOn && cut->isPaused ? PausePrinting("Print Paused") : PrintPage();
}

/// Where the job's pages can be looked at when they have been printed and its folder holds them no more; before the
/// first job where those of earlier runs are.
std::string PrintDriver::PrintedPagesText() const {
    auto const pages = job_.empty() ? options_.outputFolder / "" : names_.Stem();
    JsonWriter writer;
    writer.StartObject().Key("job").String(job_.string()).Key("pages").String(pages.string()).EndObject();
    return writer.Text();
}

void PrintDriver::PrintPage() {
    while (state_ == State::Printing && !pageTimer_.isActive()) {
        if (next_ >= metaData_.totalPages) return FinishJob();
        std::filesystem::path const file = job_ / std::to_string(next_);
        std::error_code error;
        if (!std::filesystem::exists(file, error)) {
            if (EndIfGone()) return;
            ReadTag();
            return patience_.start(options_.patience);
        }
        patience_.stop();
        if (origin_ == 0) origin_ = OriginOf(job_);
        page_->Set(next_);
        if (!KeepPage(file)) return state_ == State::Printing ? PausePrinting("Print Error") : void();
        TellTag();
        ++next_;
        tagIsRead_ = false;
        ++printed_;
        auto const time = TimeOf(file);
        if (std::binary_search(metaData_.pauseIndices.begin(), metaData_.pauseIndices.end(), next_))
            return PausePrinting("Print Paused");
        if (time.count() > 0) pageTimer_.start(time);
    }
}

bool PrintDriver::KeepPage(std::filesystem::path const& file) {
    auto const target = names_.Of(next_);
    auto const error = KeepFile(file, target);
    if (error && EndIfGone()) return false;
    if (error) {
        say_("page " + std::to_string(next_ + 1) + " of job " + names_.Job() + " cannot be kept in " + target.string() +
             ": " + error.message() + "; printing pauses");
    } else {
        say_({target.string(), "page", [&](JsonWriter& writer) {
                  writer.Key("job").String(names_.Job()).Key("page").Int(next_ + 1).Key("path").String(target.string());
                  WritePacket(writer);
              }});
    }
    return !error;
}

std::chrono::milliseconds PrintDriver::TimeOf(std::filesystem::path const& file) const {
    // The height stands in bytes 20 to 23 of a PNG file.
    std::string const content = options_.speed > 0 ? ReadRegularFile(file) : std::string();
    if (content.size() < 24) return {};
    unsigned height = 0;
    for (std::size_t i = 20; i < 24; ++i) height = height << 8 | static_cast<unsigned char>(content[i]);
    return std::chrono::milliseconds(static_cast<int>(1000.0 * height / options_.dpi / options_.speed));
}

void PrintDriver::PausePrinting(char const* status) {
    pageTimer_.stop();
    patience_.stop();
    state_ = State::Paused;
    pauseStatus_ = status;
    ReportPause();
    say_("paused before page " + std::to_string(next_ + 1) + " of job " + names_.Job() + "; type resume to go on");
    EndIfGone();
}

/// Not before the path is there: where the start of the job is lost with the server, what replaces its status is told
/// behind the path, and the host would take the job for the one before, which is done.
void PrintDriver::ReportPause() {
    if (path_->IsTaken()) status_->Set(pauseStatus_);
}

void PrintDriver::Pause() {
    options_.paused = true;
    if (state_ == State::Printing) PausePrinting("Print Paused");
    if (state_ == State::Idle) GoAhead();
}

void PrintDriver::Resume() {
    options_.paused = false;
    pausePrinting_->Set(false);
    if (state_ == State::Idle) return GoAhead();
    // The host renders the pages anew and then says from where to go on.
    if (state_ == State::Paused)
        driver_.Write(ComponentIdentifiers::ZplHost, PropertyNames::ZplUnPause, std::to_string(next_));
}

void PrintDriver::GoOn() {
    if (state_ != State::Paused) return;
    state_ = State::Printing;
    // What was drawn is drawn anew, and its tag read again.
    tagIsRead_ = false;
    if (next_ < metaData_.totalPages) page_->Set(next_);
    status_->Set("Printing");
    PrintPage();
}

/// Somebody on the bus pauses the printer, or has it go on.
void PrintDriver::TakePause(bool isPause) {
    bool const wasPaused = IsPaused();
    isPause ? Pause() : Resume();
    if (isPause != wasPaused) say_(isPause ? "paused" : "resumed");
}

bool PrintDriver::Cancel() {
    if (state_ != State::Printing && state_ != State::Paused) return false;
    // The host, which may be drawing pages of the job, takes its folder away when it hears of the end.
    FinishJob();
    return true;
}

void PrintDriver::FinishJob() {
    if (origin_ == 0) origin_ = OriginOf(job_);
    if (origin_ != 0) options_.onJobOver(origin_);
    EndJob();
}

void PrintDriver::EndJob() {
    pageTimer_.stop();
    patience_.stop();
    watcher_.removePath(QString::fromStdString(job_.string()));
    finished_.insert(job_);
    state_ = State::Ending;
    say_({"", "done", [this](JsonWriter& writer) {
              writer.Key("job").String(names_.Job()).Key("printed").Int(next_).Key("pages").Int(metaData_.totalPages);
              WritePacket(writer);
          }});
    nextTimer_.start(0);
}

void PrintDriver::ReportEnd() {
    state_ = State::Idle;
    // The end of a job is told of the path, so the path goes after it.
    status_->Set("");
    path_->Set(JobFileSystemStrings::NoPage);
    page_->Set(0);
    nextTimer_.start(0);
}

/// Which packet has ended the stream of the job, as far as it is known yet.
void PrintDriver::WritePacket(JsonWriter& writer) const {
    if (origin_ != 0) writer.Key("packet").Int(origin_);
}

std::string PrintDriver::JobUnderWay() const {
    return state_ == State::Printing || state_ == State::Paused ? names_.Job() : std::string();
}

std::string PrintDriver::StatusText() const {
    std::string const total = std::to_string(printed_) + " pages printed";
    if (state_ == State::Idle || state_ == State::Ending) return (options_.paused ? "paused, " : "ready, ") + total;
    std::string const where =
        names_.Job() + ", page " + std::to_string(next_) + " of " + std::to_string(metaData_.totalPages);
    return (state_ == State::Paused ? "paused: " : "printing: ") + where + ", " + total;
}
