#include <cstdio>

#include "desktop/DeskMachine.h"
#include "desktop/Manual.h"
#include "desktop/Options.h"
#include "desktop/compare/CompareCommand.h"

/// `zpl compare`, a program of its own beside `zpl`, which loads no library for foreign pictures.
int main(int argc, char** argv) {
    CompareResult result = CompareResult::Trouble;
    try {
        CommandRow const& command = *FindCommand("compare");
        Reading reading = ReadArguments(command, {argv + 1, argv + argc});
        if (reading.help) return std::fputs(HelpText(command).c_str(), stdout) < 0 ? 2 : 0;
        reading.render.machine = DeskMachine();
        result = RunCompare(reading.render, reading.compare);
    } catch (std::exception const& error) {
        std::fprintf(stderr, "zpl: %s\n", error.what());
    }
    return static_cast<int>(result);
}
