#include "desktop/serve/PrintDriver.h"

#include <algorithm>
#include <chrono>
#include <sstream>

#include "PrintEngine/Printing/JobFileSystemStrings.h"
#include "foundation/DebugZones.h"
#include "foundation/Files.h"
#include "jobhost/model/RfidReadResponses.h"
#include "rfid/TagOperations.h"

using PrintEngine::Printing::JobMetaData;

PrintDriver::PrintDriver(ThreadFactory& threads, std::filesystem::path const& socket, Options options,
                         std::function<void()> onJobsLost, std::function<void(std::string const&)> say)
    : options_(std::move(options)),
      onJobsLost_(std::move(onJobsLost)),
      say_(std::move(say)),
      driver_(threads, ComponentIdentifiers::FirmwareDriver, socket),
      apps_(threads, ComponentIdentifiers::PerMainAndApps, socket),
      spooler_(threads, ComponentIdentifiers::PrintSpooler, socket) {
    std::filesystem::create_directories(options_.jobsFolder);
    std::filesystem::create_directories(options_.outputFolder);
    PublishProperties();
    watcher_.addPath(QString::fromStdString(options_.jobsFolder.string()));
    connect(&watcher_, &QFileSystemWatcher::directoryChanged, this, [this] {
        if (state_ == State::Printing) PrintPage();
        if (state_ == State::Idle) StartNext();
    });
    pageTimer_.setSingleShot(true);
    connect(&pageTimer_, &QTimer::timeout, this, [this] { PrintPage(); });
    scanTimer_.setSingleShot(true);
    patience_.setSingleShot(true);
    connect(&patience_, &QTimer::timeout, this, [this] {
        if (state_ != State::Printing) return;
        say_("page " + std::to_string(next_ + 1) + " of " + job_.filename().string() + " does not come");
        PausePrinting("Print Error");
    });
    connect(&scanTimer_, &QTimer::timeout, this, [this] { StartNext(); });
}

void PrintDriver::PublishProperties() {
    namespace Group = PropertyGroups;
    using namespace PropertyNames;
    driver_.Own<UInt32Property>(DotsPerInch, Group::General, options_.dpi);
    driver_.Own<UInt32Property>(SubstrateMode, Group::SubstratePrinterProperties, 2U);
    driver_.Own<BoolProperty>(PrintingIsStopped, Group::PrintOperations, false);
    tagResponse_ = driver_.Own<StringProperty>(RfidReadCommandResponse, Group::RfidEncoderOperations, "");
    tagResponse_->SetEveryWriteCounts(true);
    page_ = driver_.Own<UInt32Property>(CurrentPrintingPageNumber, Group::PrintOperations, 0U);
    resumeFrom_ = driver_.Own<UInt32Property>(ResumePrintingFromPageNumber, Group::PrintOperations, 0U);
    resume_ = driver_.Own<BoolProperty>(ResumePrinting, Group::PrintOperations, false);
    pausePrinting_ = driver_.Own<BoolProperty>(PropertyNames::PausePrinting, Group::PrintOperations, false);
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

    OnMain(resume_, [this](std::string const& value) {
        if (value != "true") return;
        resume_->Set(false);
        // The host says so twice when nothing is left of a job, and the next one may be printing by then.
        if (state_ != State::Paused) return;
        next_ = resumeFrom_->Get();
        GoOn();
    });
    OnMain(pausePrinting_, [this](std::string const& value) { value == "true" ? Pause() : Resume(); });
    OnMain(cancelPrint_, [this](std::string const& value) {
        if (value != "true") return;
        cancelPrint_->Set(false);
        if (state_ != State::Idle) FinishJob();
        onJobsLost_();
    });
}

/// Properties are delivered on threads of the bus; the driver works on the main thread.
void PrintDriver::OnMain(std::shared_ptr<Property> const& property, std::function<void(std::string const&)> react) {
    property->AddCallback([this, react = std::move(react)](std::shared_ptr<Property> const& changed) {
        QMetaObject::invokeMethod(
            this, [react, value = changed->ValueText()] { react(value); }, Qt::QueuedConnection);
    });
}

void PrintDriver::StartNext() {
    if (state_ != State::Idle || options_.paused) return;
    std::erase_if(finished_, [](auto const& path) { return !std::filesystem::exists(path); });
    std::optional<JobMetaData> first;
    std::filesystem::path firstPath;
    std::error_code error;
    bool incomplete = false;
    for (auto const& entry : std::filesystem::directory_iterator(options_.jobsFolder, error)) {
        if (finished_.contains(entry.path())) continue;
        auto metaData = JobMetaData::Read(entry.path());
        if (!metaData) incomplete = true;
        if (!metaData || (first && first->serial <= metaData->serial)) continue;
        first = std::move(metaData);
        firstPath = entry.path();
    }
    constexpr std::chrono::milliseconds Later{20};
    // A job whose folder was made a moment ago gets its metadata next.
    if (first) return Start(firstPath, std::move(*first));
    if (incomplete) scanTimer_.start(Later);
}

void PrintDriver::Start(std::filesystem::path const& path, JobMetaData metaData) {
    job_ = path;
    metaData_ = std::move(metaData);
    next_ = metaData_.firstPage;
    tagIsRead_ = false;
    outputName_ = FreeOutputName();
    state_ = State::Printing;
    watcher_.addPath(QString::fromStdString(path.string()));
    status_->Set("Printing");
    path_->Set(path.string());
    page_->Set(next_);
    PrintPage();
}

void PrintDriver::PrintPage() {
    while (state_ == State::Printing && !pageTimer_.isActive()) {
        if (next_ >= metaData_.totalPages) return FinishJob();
        std::filesystem::path const file = job_ / std::to_string(next_);
        std::error_code error;
        if (!std::filesystem::exists(file, error)) {
            if (std::filesystem::exists(job_, error)) {
                ReadTag();
                return patience_.start(options_.patience);
            }
            DebugLog(Error, "the folder of job " + job_.filename().string() + " is gone; the job is given up");
            return Cancel();
        }
        patience_.stop();
        page_->Set(next_);
        if (!KeepPage(file)) return PausePrinting("Print Error");
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

std::vector<RfidOperation> PrintDriver::TagOperationsOfPage() const {
    for (auto const& range : metaData_.tagOperations) {
        if (range.firstPage <= next_ && next_ <= range.lastPage) return range.operations;
    }
    return {};
}

/// Answers for the tag of the page to come, if its label reads one: the page is drawn when that is known.
void PrintDriver::ReadTag() {
    if (!options_.tag || tagIsRead_) return;
    auto const responses = VirtualTag(*options_.tag).Perform(TagOperationsOfPage());
    if (responses.empty()) return;
    tagIsRead_ = true;
    page_->Set(next_);
    // A response counts for the page that stood when a path was reported last.
    path_->Set(JobFileSystemStrings::NoPage);
    path_->Set(job_.string());
    tagResponse_->Set(RfidReadResponsesText(responses));
}

void PrintDriver::TellTag() {
    auto const operations = TagOperationsOfPage();
    if (!options_.tag || operations.empty()) return;
    std::istringstream lines(TagOperations::Report(operations, VirtualTag(*options_.tag).Perform(operations)));
    for (std::string line; std::getline(lines, line);) say_("  tag " + line.substr(0, line.find('\r')));
}

std::filesystem::path PrintDriver::OutputFile(std::string const& name, unsigned page) const {
    return options_.outputFolder / (name + "-" + std::to_string(page + 1) + ".png");
}

/// The name of the job, with a number behind it if an earlier run of the printer has left pages of that name.
std::string PrintDriver::FreeOutputName() const {
    std::string const job = job_.filename().string();
    std::string name = job;
    for (unsigned number = 2; std::filesystem::exists(OutputFile(name, next_)); ++number)
        name = job + "_" + std::to_string(number);
    return name;
}

bool PrintDriver::KeepPage(std::filesystem::path const& file) {
    std::string content;
    auto const target = OutputFile(outputName_, next_);
    std::error_code error = ReadFile(file, content);
    if (!error) error = WriteFileAtomically(target, content);
    if (error) {
        say_("page " + std::to_string(next_ + 1) + " cannot be kept in " + target.string() + ": " + error.message() +
             "; printing pauses");
    } else {
        say_(target.string());
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
    status_->Set(status);
    say_(std::string("paused before page ") + std::to_string(next_ + 1) + "; type resume to go on");
}

void PrintDriver::Pause() {
    options_.paused = true;
    if (state_ == State::Printing) PausePrinting("Print Paused");
    if (state_ == State::Idle) status_->Set("Print Paused");
}

void PrintDriver::Resume() {
    options_.paused = false;
    pausePrinting_->Set(false);
    if (state_ == State::Idle) {
        status_->Set("");
        return StartNext();
    }
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

void PrintDriver::Cancel() {
    if (state_ == State::Idle) return;
    std::error_code error;
    std::filesystem::remove_all(job_, error);
    canSend_->Set("false");
    FinishJob();
}

void PrintDriver::CancelAll() { cancelZpl_->Set(true); }

void PrintDriver::GiveUpJobs() {
    std::error_code error;
    for (auto const& entry : std::filesystem::directory_iterator(options_.jobsFolder, error)) {
        std::error_code ignored;
        std::filesystem::remove_all(entry.path(), ignored);
    }
    if (state_ != State::Idle) FinishJob();
}

void PrintDriver::FinishJob() {
    pageTimer_.stop();
    patience_.stop();
    watcher_.removePath(QString::fromStdString(job_.string()));
    finished_.insert(job_);
    state_ = State::Idle;
    // The end of a job is told of the path, so the path goes after it.
    status_->Set("");
    path_->Set(JobFileSystemStrings::NoPage);
    page_->Set(0);
    // Hosts ask whether the printer is paused, also while it has nothing to print.
    if (options_.paused) status_->Set("Print Paused");
    scanTimer_.start(0);
}

std::string PrintDriver::StatusText() const {
    std::string const total = std::to_string(printed_) + " pages printed";
    if (state_ == State::Idle) return (options_.paused ? "paused, " : "ready, ") + total;
    std::string const where =
        job_.filename().string() + ", page " + std::to_string(next_) + " of " + std::to_string(metaData_.totalPages);
    return (state_ == State::Paused ? "paused: " : "printing: ") + where + ", " + total;
}
