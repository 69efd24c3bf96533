#include <malloc.h>
#include <unistd.h>

#include <cstdio>
#include <string>
#include <vector>

#include "desktop/Commands.h"
#include "desktop/Completion.h"
#include "desktop/DeskMachine.h"
#include "desktop/Manual.h"
#include "desktop/Options.h"

namespace {

int Print(std::string_view text, std::FILE* stream, ExitCode code) {
    std::fwrite(text.data(), 1, text.size(), stream);
    return static_cast<int>(code);
}

/// Becomes the program `zpl-NAME` beside this one, for a command that needs libraries which the others do not load.
int Become(std::string const& name, std::vector<std::string> const& arguments) {
    std::string program = (AppSettings::GetInstance().AppBin() / ("zpl-" + name)).string();
    std::vector<std::string> words = arguments;
    std::vector<char*> list{program.data()};
    for (auto& word : words) list.push_back(word.data());
    list.push_back(nullptr);
    ::execv(program.c_str(), list.data());
    throw UsageError("cannot run " + program +
                     (name == "serve" ? "; zpl serve is in the package zplhost-printer"
                      : name == "web" ? "; zpl web is in the package zplhost-web"
                                      : ""));
}

/// Throws UsageError if there is no command of that name.
CommandRow const& Find(std::string const& name) {
    if (auto const* const command = FindCommand(name)) return *command;
    throw UsageError("unknown command " + name + "; zpl --help lists them");
}

/// Of the one command named, or of all.
int PrintManual(std::vector<std::string> const& names) {
    std::string const text = names.empty() ? ManualPage(ZPL_VERSION) : ManualPage(Find(names.front()), ZPL_VERSION);
    return Print(text, stdout, ExitCode::Success);
}

/// The memory of a label is needed again by the next one. Given back to the system in between, it would be wiped and
/// mapped anew for each label whose pictures are large.
void KeepFreedMemory() {
#ifdef __GLIBC__
    constexpr int KeptBytes = 8 << 20;
    mallopt(M_TRIM_THRESHOLD, KeptBytes);
    mallopt(M_MMAP_THRESHOLD, KeptBytes / 2);
#endif
}

int Draw(CommandRow const& command, RenderOptions options) {
    KeepFreedMemory();
    options.machine = DeskMachine();
    if (options.keepJob) options.machine.jobsFolder = options.outputFolder;
    options.inputs = NamedInputs(options.inputs);
    int const code = static_cast<int>(command.name == "render" ? RunRender(options) : RunCheck(options));
    // As the shell says of a program that a signal has ended.
    constexpr int EndedBySignal = 128;
    return InterruptedBy() != 0 && !options.watches ? EndedBySignal + InterruptedBy() : code;
}

int Run(std::vector<std::string> arguments) {
    if (arguments.empty()) return Print(GeneralHelp(), stderr, ExitCode::Usage);
    std::string const name = arguments.front();
    arguments.erase(arguments.begin());
    if (name == "--help" || name == "-h" || name == "help") {
        bool const ofCommand = name == "help" && !arguments.empty();
        return Print(ofCommand ? HelpText(Find(arguments.front())) : GeneralHelp(), stdout, ExitCode::Success);
    }
    if (name == "--version" || name == "-V") return Print("zpl " ZPL_VERSION "\n", stdout, ExitCode::Success);
    CommandRow const& command = Find(name);
    if (name == "serve" || name == "compare" || name == "web") return Become(name, arguments);

    Reading const reading = ReadArguments(command, arguments);
    if (reading.help) return Print(HelpText(command), stdout, ExitCode::Success);
    if (name == "man") return PrintManual(reading.operands);
    if (name == "completion" && reading.operands.empty())
        throw UsageError("for which shell? zpl completion bash, or zpl completion zsh");
    if (name == "completion") return Print(CompletionScript(reading.operands.front()), stdout, ExitCode::Success);
    if (reading.operands.empty())
        throw UsageError("no input: name a file, or - for standard input; see zpl " + name + " --help");
    return Draw(command, reading.render);
}

}  // namespace

int main(int argc, char** argv) {
    try {
        return Run({argv + 1, argv + argc});
    } catch (std::exception const& error) {
        std::fprintf(stderr, "zpl: %s\n", error.what());
        return static_cast<int>(ExitCode::Usage);
    }
}
