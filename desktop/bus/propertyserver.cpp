#include <signal.h>
#include <sys/signalfd.h>

#include <cstdio>
#include <exception>
#include <filesystem>

#include "desktop/bus/PropertyServer.h"
#include "foundation/DebugZones.h"

// usage: propertyserver SOCKET ARCHIVE
int main(int argc, char** argv) {
    if (argc != 3) {
        std::fputs("usage: propertyserver SOCKET ARCHIVE\n", stderr);
        return 2;
    }
    SetDebugLogName("propertyserver");
    sigset_t signals;
    sigemptyset(&signals);
    sigaddset(&signals, SIGTERM);
    sigaddset(&signals, SIGINT);
    // A reader of the log that goes away is no reason to go too.
    signal(SIGPIPE, SIG_IGN);
    // And a file that may not grow is an error of that file.
    signal(SIGXFSZ, SIG_IGN);
    sigprocmask(SIG_BLOCK, &signals, nullptr);
    try {
        std::filesystem::create_directories(std::filesystem::path(argv[2]).parent_path());
        PropertyServer(argv[1], argv[2]).Run(signalfd(-1, &signals, SFD_CLOEXEC));
    } catch (std::exception const& error) {
        std::fprintf(stderr, "propertyserver: %s\n", error.what());
        return 1;
    }
    return 0;
}
