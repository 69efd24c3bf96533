#include <signal.h>
#include <sys/signalfd.h>

#include <QtCore/QCoreApplication>
#include <QtCore/QSocketNotifier>
#include <cstdio>

#include "desktop/Manual.h"
#include "desktop/Options.h"
#include "desktop/serve/VirtualPrinter.h"
#include "foundation/AppSettings.h"
#include "foundation/DebugZones.h"

int main(int argc, char** argv) {
    SetDebugLogName("zpl serve");
    sigset_t signals;
    sigemptyset(&signals);
    sigaddset(&signals, SIGTERM);
    sigaddset(&signals, SIGINT);
    // The terminal may go, unless this was started to outlive it.
    struct sigaction hangUp {};
    if (sigaction(SIGHUP, nullptr, &hangUp) == 0 && hangUp.sa_handler != SIG_IGN) sigaddset(&signals, SIGHUP);
    try {
        CommandRow const& command = *FindCommand("serve");
        Reading const reading = ReadArguments(command, {argv + 1, argv + argc});
        ServeOptions options = reading.serve;
        options.web = reading.web;
        auto const& settings = AppSettings::GetInstance();
        options.programFolder = settings.AppBin();
        if (options.stateFolder.empty()) options.stateFolder = settings.StorageDir() / "printer";
        if (options.help) return std::fputs(HelpText(command).c_str(), stdout) < 0 ? 2 : 0;
        // A reader of what is printed here that goes away is no reason to go too.
        signal(SIGPIPE, SIG_IGN);
        // And a file that may not grow is an error of that file.
        signal(SIGXFSZ, SIG_IGN);
        sigprocmask(SIG_BLOCK, &signals, nullptr);
        QCoreApplication application(argc, argv);
        QSocketNotifier ending(signalfd(-1, &signals, SFD_CLOEXEC), QSocketNotifier::Read);
        QObject::connect(&ending, &QSocketNotifier::activated, &application, [] { QCoreApplication::quit(); });
        VirtualPrinter printer(options);
        return QCoreApplication::exec();
    } catch (std::exception const& error) {
        std::fprintf(stderr, "zpl: %s\n", error.what());
        return 2;
    }
}
