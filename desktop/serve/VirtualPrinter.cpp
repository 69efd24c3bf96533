#include "desktop/serve/VirtualPrinter.h"

#include <fcntl.h>
#include <signal.h>
#include <sys/file.h>
#include <sys/prctl.h>
#include <unistd.h>

#include <QtCore/QCoreApplication>
#include <QtCore/QElapsedTimer>
#include <QtCore/QProcessEnvironment>
#include <QtCore/QSysInfo>
#include <QtCore/QTimer>
#include <algorithm>
#include <cerrno>
#include <cmath>
#include <cstdio>
#include <thread>

#include "desktop/CommandLine.h"
#include "desktop/OptionValues.h"
#include "foundation/AppSettings.h"
#include "foundation/DebugZones.h"
#include "foundation/Features.h"
#include "foundation/Files.h"
#include "foundation/Json.h"
#include "frontend/context/ObjectStore.h"

namespace {

using namespace std::chrono_literals;

constexpr std::chrono::milliseconds RestartPause = 200ms;
constexpr std::chrono::milliseconds LongestPause = 5s;
constexpr std::chrono::milliseconds LookAgain = 10ms;
constexpr std::chrono::milliseconds EndsAtOnce = 300ms;
constexpr std::string_view SpeedWord = "speed ";
constexpr char const* KnownWords = "words: status, pause, resume, cancel, cancel-all, speed N, preview, screen, quit";

/// Whether windows can be opened at all, as far as that can be told without opening one.
bool HasDisplay() {
    return qEnvironmentVariableIsSet("DISPLAY") || qEnvironmentVariableIsSet("WAYLAND_DISPLAY") ||
           qEnvironmentVariableIsSet("QT_QPA_PLATFORM");
}

/// Whatever ends this process ends the other too; but what is typed at the terminal is for this one alone.
void EndWithThisProcess(QProcess& process) {
    process.setChildProcessModifier([] {
        ::prctl(PR_SET_PDEATHSIG, SIGTERM);
        ::setpgid(0, 0);
    });
}

/// Makes a folder in which files can be written.
void MakeFolder(std::filesystem::path const& folder) {
    std::error_code error;
    std::filesystem::create_directories(folder, error);
    if (!error && ::access(folder.c_str(), W_OK) != 0) error = {errno, std::generic_category()};
    if (error) throw std::system_error(error, "cannot write " + folder.string());
}

/// What the processes of the printer tell each other is text.
void RequireUtf8(std::filesystem::path const& folder, char const* remedy) {
    auto const bytes = QByteArray::fromStdString(folder.string());
    if (QString::fromUtf8(bytes).toUtf8() != bytes)
        throw std::runtime_error("the path " + folder.string() + " is no UTF-8 text; " + remedy);
}

ServeOptions const& Checked(ServeOptions const& options) {
    for (auto const& [isWanted, option] : {std::pair(options.preview, "--preview"), {options.screen, "--screen"}}) {
        if (isWanted && !HasDisplay())
            throw UsageError(std::string(option) + " needs a display: neither DISPLAY nor WAYLAND_DISPLAY is set");
    }
    MakeFolder(options.outputFolder);
    return options;
}

std::filesystem::path StateFolder(ServeOptions const& options) {
    auto const folder = std::filesystem::absolute(options.stateFolder);
    RequireUtf8(folder, "--state DIR names another folder");
    MakeFolder(folder);
    MakeFolder(folder / "zplhost");
    return folder;
}

std::uintmax_t BytesIn(std::filesystem::path const& folder) {
    std::uintmax_t bytes = 0;
    std::error_code error;
    for (std::filesystem::directory_iterator entry(folder, error), end; !error && entry != end;
         entry.increment(error)) {
        std::error_code ignored;
        auto const size = entry->file_size(ignored);
        if (!ignored) bytes += size;
    }
    return bytes;
}

}  // namespace

VirtualPrinter::Lock::Lock(std::filesystem::path const& folder)
    : descriptor_(::open((folder / "lock").c_str(), O_RDWR | O_CREAT | O_CLOEXEC, 0600)) {
    if (descriptor_ >= 0 && ::flock(descriptor_, LOCK_EX | LOCK_NB) == 0) return;
    ::close(descriptor_);
    throw std::runtime_error(folder.string() + " is in use by another printer; --state DIR names another folder");
}

VirtualPrinter::Lock::~Lock() { ::close(descriptor_); }

VirtualPrinter::VirtualPrinter(ServeOptions const& options)
    : options_(Checked(options)), state_(StateFolder(options)), lock_(state_) {
    RequireUtf8(runtime_.Path(), "TMPDIR names another folder for temporary files");
    try {
        Begin();
    } catch (...) {
        End();
        throw;
    }
}

VirtualPrinter::~VirtualPrinter() { End(); }

void VirtualPrinter::Begin() {
    auto const socket = runtime_.Socket();
    WriteSettings();
    Start(server_, "propertyserver",
          {QString::fromStdString(socket.string()), QString::fromStdString((state_ / "properties.json").string())});
    for (int i = 0; i < 500 && !std::filesystem::exists(socket); ++i) std::this_thread::sleep_for(2ms);
    auto const tell = [this](PrinterEvent const& event) { Tell(event); };
    JobHandler::Options door;
    door.answers = options_.answers;
    door.facts = [this] { return Facts(); };
    door.onCancelled = [this](std::uint32_t origin) { driver_->CancelUpTo(origin); };
    door.onPacket = [this](Zpl::Host::Packet const& packet) { TellWebOfPacket(packet); };
    minute_.setSingleShot(true);
    connect(&minute_, &QTimer::timeout, this, [this] { TellLeftOut(); });
    auto const tellOfStreams = [this](PrinterEvent const& event) { TellOfStreams(event); };
    handler_ =
        std::make_unique<JobHandler>(threads_, socket, options_.host, options_.port, tellOfStreams, std::move(door));
    driver_ = std::make_unique<PrintDriver>(
        threads_, socket,
        PrintDriver::Options{runtime_.Jobs(), std::filesystem::absolute(options_.outputFolder), options_.dpi,
                             options_.speed, options_.pauseOnStart, options_.tag, 30s,
                             [this](std::uint32_t origin) { handler_->NoteJobOver(origin); }},
        [this] { handler_->ForgetJobs(); }, tell);
    connect(&host_, &QProcess::finished, this, [this] { hostStart_ = HostStart::AwaitsSilence; });
    Start(host_, "zplhost", {});
    if (options_.preview) Open(preview_, "preview");
    if (options_.screen) Open(screen_, "screen");
    connect(&terminal_, &QSocketNotifier::activated, this, [this] { ReadTerminal(); });
    if (!handler_->IsLocal())
        std::fprintf(stderr, "zpl: every machine that reaches %s can print here\n", options_.host.c_str());
    std::string const address = AddressText(options_.host, handler_->Port());
    Tell(
        {"printer at " + address + ", pages go to " + options_.outputFolder.string(), "ready", [&](JsonWriter& writer) {
             writer.Key("address").String(address).Key("out").String(options_.outputFolder.string());
         }});
    if (options_.web.isWanted) StartWeb();
}

void VirtualPrinter::Tell(PrinterEvent const& event) {
    TellWeb(event);
    Print(event);
}

void VirtualPrinter::Print(PrinterEvent const& event) const {
    auto const& line = options_.json ? event.Json() : event.Line();
    if (line.empty()) return;
    std::printf("%s\n", line.c_str());
    std::fflush(stdout);
}

void VirtualPrinter::TellOfStreams(PrinterEvent const& event) {
    TellWeb(event);
    if (options_.json) return Print(event);
    if (event.Line().empty()) return;
    if (!minute_.isActive()) minute_.start(1min);
    if (repeats_.Admits(event.Sentence())) Print(event);
}

void VirtualPrinter::TellLeftOut() {
    for (auto const& line : repeats_.EndPeriod()) Print(line);
}

PrinterFacts VirtualPrinter::Facts() const {
    PrinterFacts facts;
    facts.version = ZPL_VERSION;
    facts.serialNumber = QSysInfo::machineHostName().toStdString();
    facts.address = options_.host;
    facts.dpi = options_.dpi;
    facts.widthDots = static_cast<unsigned>(std::lround(options_.widthInches * options_.dpi));
    facts.lengthDots = static_cast<unsigned>(std::lround(options_.heightInches * options_.dpi));
    facts.inchesPerSecond = options_.speed;
    facts.paused = driver_ && driver_->IsPaused();
    facts.printedInches = driver_ ? driver_->PageCount() * options_.heightInches : 0;
    facts.totalMemory = MaximumStoredBytes;
    facts.freeMemory = MaximumStoredBytes - std::min(MaximumStoredBytes, BytesIn(state_ / "zplhost/SavedZPLFormats/R"));
    return facts;
}

void VirtualPrinter::End() {
    ending_ = true;
    web_.reset();
    EndProcess(preview_);
    EndProcess(screen_);
    EndProcess(host_);
    handler_.reset();
    TellLeftOut();
    driver_.reset();
    EndProcess(server_);
}

void VirtualPrinter::EndProcess(QProcess& process) {
    if (process.state() == QProcess::NotRunning) return;
    process.terminate();
    if (!process.waitForFinished(5000)) process.kill();
    process.waitForFinished(1000);
}

void VirtualPrinter::WriteSettings() const {
    JsonWriter writer;
    writer.StartObject().Key("RunningOnTarget").String("true");
    writer.Key("PropertyServerSocket").String(runtime_.Socket().string());
    writer.Key("JobsFolder").String(runtime_.Jobs().string());
    writer.Key("TellFindings").String("true");
    writer.Key("LabelWidth").String(std::to_string(options_.widthInches));
    writer.Key("LabelHeight").String(std::to_string(options_.heightInches)).EndObject();
    for (std::string const& name :
         {std::string(AppSettings::GetComponentNameZplHost()), std::string("ZplPreview"), std::string("ZplScreen")}) {
        auto const file = state_ / "zplhost" / (name + ".json");
        if (auto const error = WriteFileAtomically(file, writer.Text()))
            throw std::system_error(error, "cannot write " + file.string());
    }
    WriteFeatures();
}

/// A printer whose labels carry tags has an encoder for them.
void VirtualPrinter::WriteFeatures() const {
    auto const file = state_ / "zplhost" / "Features" / "TagEncoder.json";
    std::error_code error;
    std::filesystem::remove(file, error);
    if (!options_.tag) return;
    std::filesystem::create_directories(file.parent_path());
    JsonWriter writer;
    writer.StartObject().Key("Features").StartArray().String(FeatureNames::rfidEncoderSupport).EndArray().EndObject();
    error = WriteFileAtomically(file, writer.Text());
    if (error) throw std::system_error(error, "cannot write " + file.string());
}

/// For the other processes: their store is this printer's.
QProcessEnvironment VirtualPrinter::Environment() const {
    QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
    environment.insert(QStringLiteral("XDG_STATE_HOME"), QString::fromStdString(state_.string()));
    QString const runtime = QStringLiteral("XDG_RUNTIME_DIR");
    if (!environment.contains(runtime)) environment.insert(runtime, QString::fromStdString(runtime_.Path().string()));
    return environment;
}

void VirtualPrinter::Start(QProcess& process, char const* program, QStringList const& arguments) {
    auto const path = options_.programFolder / program;
    QProcessEnvironment environment = Environment();
    environment.insert(QStringLiteral("QT_QPA_PLATFORM"), QStringLiteral("offscreen"));
    process.setProcessEnvironment(environment);
    process.setProcessChannelMode(QProcess::ForwardedErrorChannel);
    process.setStandardInputFile(QProcess::nullDevice());
    EndWithThisProcess(process);
    // A process that ends as soon as it is started is started less and less often.
    auto const started = std::make_shared<QElapsedTimer>();
    connect(&process, &QProcess::started, this, [started] { started->start(); });
    connect(&process, &QProcess::finished, this,
            [this, &process, started, name = path.filename().string(), pause = RestartPause]() mutable {
                if (ending_) return;
                DebugLog(Error, name + " has ended; it is started again");
                pause = started->hasExpired(EndsAtOnce.count()) ? RestartPause : std::min(2 * pause, LongestPause);
                QTimer::singleShot(pause, this, [this, &process] { StartAgain(process); });
            });
    process.start(QString::fromStdString(path.string()), arguments);
    if (!process.waitForStarted()) throw std::runtime_error("cannot run " + path.string());
}

void VirtualPrinter::StartAgain(QProcess& process) {
    if (ending_) return;
    if (&process != &host_ || MayStartHost()) return process.start();
    QTimer::singleShot(LookAgain, this, [this, &process] { StartAgain(process); });
}

/// Meanwhile the pages that the last host has left print on.
bool VirtualPrinter::MayStartHost() {
    if (hostStart_ == HostStart::May) return true;
    if (hostStart_ == HostStart::AwaitsPacket) {
        if (handler_->IsReadyForHost()) hostStart_ = HostStart::May;
    } else if (!handler_->IsHostGone()) {
        hostStart_ = HostStart::AwaitsSilence;
    } else if (hostStart_ == HostStart::AwaitsSilence) {
        hostStart_ = HostStart::Hears;
    } else {
        driver_->GiveUpJobs();
        unsigned const pages = driver_->PageCount();
        handler_->HostEnded(pages != std::exchange(pagesAtEndOfHost_, pages));
        hostStart_ = HostStart::AwaitsPacket;
    }
    return hostStart_ == HostStart::May;
}

void VirtualPrinter::Open(QProcess& window, std::string const& name) {
    if (!HasDisplay()) return Tell("there is no display that a " + name + " can be opened on");
    if (window.state() != QProcess::NotRunning) return Tell("the " + name + " is open");
    window.setProcessEnvironment(Environment());
    window.setProcessChannelMode(QProcess::ForwardedErrorChannel);
    window.setStandardInputFile(QProcess::nullDevice());
    EndWithThisProcess(window);
    auto const path = options_.programFolder / ("zpl" + name);
    window.start(QString::fromStdString(path.string()), {});
    if (!window.waitForStarted()) Tell("cannot run " + path.string());
}

void VirtualPrinter::ReadTerminal() {
    char buffer[512];
    ssize_t const count = ::read(0, buffer, sizeof buffer);
    // Without a terminal the printer runs on until a signal ends it.
    if (count <= 0) return terminal_.setEnabled(false);
    typed_.append(buffer, static_cast<std::size_t>(count));
    for (auto end = typed_.find('\n'); end != std::string::npos; end = typed_.find('\n')) {
        std::string const word = typed_.substr(0, end);
        typed_.erase(0, end + 1);
        if (!word.empty() && !Command(word)) Tell(KnownWords);
    }
    constexpr std::size_t LongestLine = 4096;
    if (typed_.size() > LongestLine) typed_.clear();
}

/// The jobs that the host has, and the streams that wait until it has fewer.
void VirtualPrinter::CancelAll() {
    handler_->DropWaiting();
    driver_->CancelAll();
    Tell("cancelled");
}

bool VirtualPrinter::SetSpeed(std::string const& text) {
    try {
        driver_->SetSpeed(OptionValues::Speed(text));
        Tell("prints " + text + " inches a second");
        return true;
    } catch (UsageError const&) {
        return false;
    }
}

bool VirtualPrinter::Command(std::string const& word) {
    if (word == "status")
        Tell(driver_->StatusText());
    else if (word == "pause")
        driver_->Pause(), Tell("paused");
    else if (word == "resume")
        driver_->Resume(), Tell("resumed");
    else if (word == "cancel")
        Tell(driver_->Cancel() ? "cancelled" : "idle");
    else if (word == "cancel-all")
        CancelAll();
    else if (word.starts_with(SpeedWord))
        return SetSpeed(word.substr(SpeedWord.size()));
    else if (word == "preview")
        Open(preview_, word);
    else if (word == "screen")
        Open(screen_, word);
    else if (word == "quit")
        QCoreApplication::quit();
    else
        return false;
    return true;
}
