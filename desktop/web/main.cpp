#include <unistd.h>

#include <csignal>
#include <cstdio>

#include "desktop/DeskMachine.h"
#include "desktop/Manual.h"
#include "desktop/Options.h"
#include "desktop/web/WebDesk.h"
#include "foundation/DebugZones.h"

namespace {

/// Where the files of the page are: below the build, or where they are installed.
std::filesystem::path Files(std::filesystem::path const& programs) {
    auto const built = programs / "../share/zplhost/web";
    return std::filesystem::exists(built) ? built : programs / "../../share/zplhost/web";
}

void OpenBrowser(std::string const& address) {
    if (::fork() != 0) return;
    ::execlp("xdg-open", "xdg-open", address.c_str(), static_cast<char*>(nullptr));
    std::fprintf(stderr, "zpl: there is no xdg-open that would open %s\n", address.c_str());
    ::_exit(1);
}

}  // namespace

int main(int argc, char** argv) {
    SetDebugLogName("zpl web");
    try {
        CommandRow const& command = *FindCommand("web");
        std::vector<std::string> arguments(argv + 1, argv + argc);
        // As zpl serve starts it.
        bool const hasPrinter = !arguments.empty() && arguments.front() == "--behind-pipes";
        if (hasPrinter) arguments.erase(arguments.begin());
        Reading const reading = ReadArguments(command, arguments);
        if (reading.help) return std::fputs(HelpText(command).c_str(), stdout) < 0 ? 2 : 0;
        // A client that goes away is no reason to go too, nor is a browser that ends.
        std::signal(SIGPIPE, SIG_IGN);
        std::signal(SIGXFSZ, SIG_IGN);
        std::signal(SIGCHLD, SIG_IGN);
        WebDesk desk(reading.web, DeskMachine(), Files(AppSettings::GetInstance().AppBin()), hasPrinter);
        if (!desk.IsLocal())
            std::fprintf(stderr, "zpl: every machine that reaches %s can draw labels here\n", reading.web.host.c_str());
        if (!hasPrinter) std::printf("labels are written and seen at %s\n", desk.Address().c_str());
        std::fflush(stdout);
        if (reading.web.opens) OpenBrowser(desk.Address());
        desk.Run();
        return 0;
    } catch (std::exception const& error) {
        std::fprintf(stderr, "zpl: %s\n", error.what());
        return 2;
    }
}
