#include "desktop/serve/WebProcess.h"

#include <signal.h>
#include <sys/prctl.h>
#include <unistd.h>

#include <chrono>

#include "desktop/serve/Listener.h"
#include "desktop/serve/PrinterEvent.h"
#include "foundation/DebugZones.h"

namespace {

constexpr std::chrono::seconds RestartPause{1};
constexpr qint64 MostUnsent = 16 << 20;  // bytes that wait for it

}  // namespace

WebProcess::WebProcess(std::filesystem::path const& program, WebOptions const& options, Hooks hooks)
    : hooks_(std::move(hooks)) {
    QStringList arguments{QStringLiteral("--behind-pipes"), QStringLiteral("--web"),
                          QString::fromStdString(AddressText(options.host, options.port))};
    for (auto const& origin : options.origins)
        arguments << QStringLiteral("--allow-origin") << QString::fromStdString(origin);
    for (auto const& host : options.hosts) arguments << QStringLiteral("--allow-host") << QString::fromStdString(host);
    process_.setProgram(QString::fromStdString(program.string()));
    process_.setArguments(arguments);
    process_.setProcessChannelMode(QProcess::ForwardedErrorChannel);
    // What is typed at the terminal is for the printer alone, and with it this ends.
    process_.setChildProcessModifier([] {
        ::prctl(PR_SET_PDEATHSIG, SIGTERM);
        ::setpgid(0, 0);
    });
    pause_.setSingleShot(true);
    connect(&pause_, &QTimer::timeout, this, [this] { Start(); });
    connect(&process_, &QProcess::started, this, [this] { hooks_.hasBegun(); });
    connect(&process_, &QProcess::readyReadStandardOutput, this, [this] { ReadWords(); });
    connect(&process_, &QProcess::finished, this, [this](int code) { NoteEnd(code); });
    connect(&process_, &QProcess::errorOccurred, this, [this](QProcess::ProcessError error) {
        if (error == QProcess::FailedToStart)
            hooks_.tell("cannot run " + process_.program().toStdString() + "; it is in the package zplhost-web");
    });
    // Not before its lines can be told.
    QTimer::singleShot(0, this, [this] { Start(); });
}

WebProcess::~WebProcess() {
    isEnding_ = true;
    process_.closeWriteChannel();
    process_.terminate();
    if (!process_.waitForFinished(2000)) process_.kill();
    process_.waitForFinished(1000);
}

void WebProcess::Start() {
    said_.clear();
    lost_ = 0;
    process_.start();
}

void WebProcess::NoteEnd(int code) {
    // It has said why: an address that it cannot have does not get free by asking again and again.
    bool const cannotServe = process_.exitStatus() == QProcess::NormalExit && code != 0;
    if (isEnding_) return;
    if (cannotServe)
        return hooks_.tell("labels print without the page in the browser; --web names another address for it");
    DebugLog(Error, "zpl-web has ended; it is started again");
    pause_.start(RestartPause);
}

void WebProcess::Tell(std::string const& json) {
    if (process_.state() != QProcess::Running) return;
    if (process_.bytesToWrite() > MostUnsent) {
        ++lost_;
        return;
    }
    if (unsigned const lost = std::exchange(lost_, 0); lost > 0) {
        PrinterEvent const event(std::to_string(lost) + " events were lost, as the page did not take them");
        process_.write(QByteArray::fromStdString(event.Json() + '\n'));
    }
    process_.write(QByteArray::fromStdString(json + '\n'));
}

void WebProcess::ReadWords() {
    said_ += process_.readAllStandardOutput().toStdString();
    for (auto end = said_.find('\n'); end != std::string::npos; end = said_.find('\n')) {
        std::string const line = said_.substr(0, end);
        said_.erase(0, end + 1);
        static constexpr std::string_view Address = "address ";
        line.starts_with(Address) ? hooks_.isAt(line.substr(Address.size())) : hooks_.say(line);
    }
    constexpr std::size_t LongestLine = 4096;
    if (said_.size() > LongestLine) said_.clear();
}
