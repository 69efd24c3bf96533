#include <unistd.h>

#include <cstdio>
#include <string>
#include <vector>

#include "desktop/Commands.h"
#include "foundation/AppSettings.h"

namespace {

int Print(std::string_view text, std::FILE* stream, ExitCode code) {
    std::fwrite(text.data(), 1, text.size(), stream);
    return static_cast<int>(code);
}

/// Becomes the virtual printer, a program of its own beside this one.
int Serve(std::vector<std::string> const& arguments) {
    std::string program = (AppSettings::GetInstance().AppBin() / "zpl-serve").string();
    std::vector<std::string> words = arguments;
    std::vector<char*> list{program.data()};
    for (auto& word : words) list.push_back(word.data());
    list.push_back(nullptr);
    ::execv(program.c_str(), list.data());
    throw UsageError("cannot run " + program);
}

int Run(std::vector<std::string> arguments) {
    if (arguments.empty()) return Print(GeneralHelp(), stderr, ExitCode::Usage);
    std::string const command = arguments.front();
    arguments.erase(arguments.begin());
    if (command == "--help" || command == "-h" || command == "help")
        return Print(GeneralHelp(), stdout, ExitCode::Success);
    if (command == "--version") return Print("zpl " ZPL_VERSION "\n", stdout, ExitCode::Success);
    if (command == "serve") return Serve(arguments);
    bool const render = command == "render";
    if (!render && command != "check") throw UsageError("unknown command " + command + "; zpl --help lists them");

    RenderOptions const options = ParseRenderOptions(arguments);
    if (options.help) return Print(render ? RenderHelp() : CheckHelp(), stdout, ExitCode::Success);
    if (options.inputs.empty())
        throw UsageError("no input: name a file, or - for standard input; see zpl " + command + " --help");
    int const code = static_cast<int>(render ? RunRender(options) : RunCheck(options));
    // As the shell says of a program that a signal has ended.
    constexpr int EndedBySignal = 128;
    return InterruptedBy() != 0 ? EndedBySignal + InterruptedBy() : code;
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
