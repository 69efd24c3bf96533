#pragma once

#include <QtCore/QObject>
#include <QtCore/QProcess>
#include <QtCore/QProcessEnvironment>
#include <QtCore/QSocketNotifier>
#include <QtCore/QTimer>
#include <memory>
#include <string>

#include "desktop/serve/JobHandler.h"
#include "desktop/serve/PrintDriver.h"
#include "desktop/serve/RepeatLimit.h"
#include "desktop/serve/RuntimeFolder.h"
#include "desktop/serve/ServeOptions.h"
#include "desktop/serve/WebProcess.h"

/// The whole printer: the property server and the host as processes of their own, which are started again when they
/// fail, and in this process the job handler, the print driver and the terminal.
class VirtualPrinter : public QObject {
public:
    /// Throws if the state folder is in use, or the address is.
    explicit VirtualPrinter(ServeOptions const& options);
    ~VirtualPrinter() override;

    /// One typed word; false if it is none that is known.
    bool Command(std::string const& word);

private:
    /// Holds the state folder for one printer.
    class Lock {
    public:
        explicit Lock(std::filesystem::path const& folder);
        ~Lock();
        Lock(Lock const&) = delete;
        Lock& operator=(Lock const&) = delete;

    private:
        int descriptor_;
    };

    /// What is to be done before a host that has ended is followed by the next: the bus tells all that it has said,
    /// that is heard here, and the bus takes the first packet for the next. See StreamsAtHost.
    enum class HostStart { AwaitsSilence, Hears, AwaitsPacket, May };

    void Tell(PrinterEvent const& event);
    void Print(PrinterEvent const& event) const;
    /// Of streams, as many as there are: people are told the same only some times a minute.
    void TellOfStreams(PrinterEvent const& event);
    void TellLeftOut();
    void StartWeb();
    void TellWeb(PrinterEvent const& event);
    void TellWebOfPrinter();
    void TellWebOfState();
    void TellWebOfPacket(Zpl::Host::Packet const& packet);
    void Begin();
    /// What the door tells hosts that ask.
    PrinterFacts Facts() const;
    void End();
    void WriteSettings() const;
    void WriteFeatures() const;
    QProcessEnvironment Environment() const;
    void Start(QProcess& process, char const* program, QStringList const& arguments);
    void StartAgain(QProcess& process);
    bool MayStartHost();
    /// A window on the printer's pages, which the user may close and open again.
    void Open(QProcess& window, std::string const& name);
    void ReadTerminal();
    void CancelAll();
    bool SetSpeed(std::string const& text);
    static void EndProcess(QProcess& process);

    ServeOptions const options_;
    std::filesystem::path const state_;
    Lock lock_;
    RuntimeFolder runtime_;
    ThreadFactory threads_{20};
    QProcess server_;
    QProcess host_;
    QProcess preview_;
    QProcess screen_;
    std::unique_ptr<PrintDriver> driver_;
    std::unique_ptr<JobHandler> handler_;
    std::unique_ptr<WebProcess> web_;  ///< null without one
    std::string toldState_;            ///< to it
    std::uint32_t firstPacket_ = 0;    ///< of the stream that the host is given
    std::string stream_;               ///< its bytes so far, if they are few enough to be kept
    RepeatLimit repeats_;
    QTimer minute_;
    QSocketNotifier terminal_{0, QSocketNotifier::Read};
    std::string typed_;
    bool ending_ = false;
    HostStart hostStart_ = HostStart::May;
    unsigned pagesAtEndOfHost_ = 0;
};
