#include <glob.h>
#include <unistd.h>

#include <algorithm>
#include <atomic>
#include <cerrno>
#include <csignal>
#include <cstdio>
#include <filesystem>
#include <optional>
#include <set>

#include "desktop/Commands.h"
#include "desktop/FileWatch.h"
#include "desktop/InputRenderer.h"
#include "desktop/PageStore.h"
#include "desktop/RenderReport.h"
#include "foundation/Files.h"
#include "library/StreamInterpreter.h"

namespace {

// The handler writes it, and every thread that draws reads it.
std::atomic<int> interrupted = 0;
static_assert(std::atomic<int>::is_always_lock_free);

/// Ctrl-C ends the run behind the page under way, so that nothing half done is left.
void StopOnInterrupt() {
    struct sigaction action {};
    action.sa_handler = [](int signal) { interrupted = signal; };
    action.sa_flags = static_cast<int>(SA_RESETHAND);
    for (int const signal : {SIGINT, SIGTERM, SIGHUP}) sigaction(signal, &action, nullptr);
    // A reader that goes away is noticed by the failing write.
    std::signal(SIGPIPE, SIG_IGN);
}

/// Runs `one` on each input and gathers the exit code: 0 as soon as one input made a page, unless something failed.
template <typename One>
ExitCode ForEachInput(RenderOptions const& options, RenderReport& report, One&& one) {
    std::optional<ExitCode> code;
    for (auto const& input : options.inputs) {
        if (interrupted != 0) break;
        ExitCode result = ExitCode::Usage;
        try {
            result = one(input, ReadInput(input));
        } catch (UsageError const& error) {
            report.UnreadInput(input, error.what());
        } catch (std::exception const& error) {
            report.Error(error.what());
            if (dynamic_cast<OutputError const*>(&error)) {
                code = ExitCode::Usage;
                break;
            }
        }
        code = code ? Worse(*code, result) : result;
    }
    return code.value_or(ExitCode::NoLabel);
}

void RefuseMissingFonts(RenderOptions const& options) {
    for (auto const& [font, file] : options.fonts) {
        if (::access(file.c_str(), R_OK) == 0) continue;
        throw UsageError("cannot read the font " + file + ": " + std::generic_category().message(errno));
    }
}

/// Options that go without each other.
void RefuseUnfitOptions(RenderOptions const& options) {
    bool const isOneFile = !options.outputFile.empty();
    bool const isStandardOutput = options.outputFile == "-";
    bool const readsStandardInput = std::count(options.inputs.begin(), options.inputs.end(), "-") != 0;
    bool const areChosen = isOneFile || !options.namePattern.empty() || !options.pages.AreAll() ||
                           options.rotation != 0 || options.isDistinct || options.watches;
    struct Row {
        bool isUnfit;
        char const* text;
    };
    for (auto const& [isUnfit, text] : {
             Row{options.keepJob && areChosen,
                 "--job keeps all pages as the print driver takes them, and goes without -o, --name, --pages, "
                 "--rotate, --distinct and --watch"},
             {isOneFile && options.inputs.size() > 1,
              "-o takes the pages of one input; --name '{stem}-{page}.{ext}' names the files of several"},
             {isOneFile && !options.namePattern.empty(), "-o names the file already; it goes without --name"},
             {isOneFile && options.outputFolder != ".", "-o names the file with its folder; it goes without --out"},
             {isOneFile && options.isSplit,
              "-o makes one file of all pages, --split one of each; --name '{stem}-{page}.{ext}' names those"},
             {isStandardOutput && options.json, "--json and pages cannot both go to standard output"},
             {isStandardOutput && options.watches, "--watch draws into files, not to standard output"},
             {readsStandardInput && options.watches, "--watch takes files, not standard input"},
         }) {
        if (isUnfit) throw UsageError(text);
    }
}

/// Inputs from different folders may have one name, and their pages would overwrite each other, or an input.
void RefuseEqualPaths(RenderOptions const& options) {
    std::set<std::filesystem::path> paths;
    for (auto const& input : options.inputs) {
        auto const path = PagePath(options, input, 1);
        if (!options.keepJob && !paths.insert(path).second) {
            throw UsageError("two inputs would both be drawn as " + path.string() +
                             "; draw them apart, with --out, or with {stem} in --name");
        }
        std::error_code ignored;
        if (std::filesystem::equivalent(path, input, ignored))
            throw UsageError(path.string() + " is the input, and would be overwritten by its page");
    }
}

/// Draws the inputs, one after the other.
ExitCode DrawAll(RenderOptions const& options) {
    Desk desk(options);
    RenderReport report(options);
    ExitCode const code = ForEachInput(options, report, [&](std::string const& input, std::string const& stream) {
        desk.StartStream();
        return InputRenderer(options, desk, input, stream, report).Run();
    });
    return report.Finish(code);
}

/// Draws them, and each again when its file changes, until a signal ends it.
ExitCode DrawWhenChanged(RenderOptions const& options) {
    FileWatch watch(options.inputs);
    RenderOptions changed = options;
    do {
        DrawAll(changed);
        if (std::ferror(stdout) != 0) return ExitCode::Usage;
        changed.inputs = watch.Wait([] { return interrupted != 0; });
    } while (!changed.inputs.empty());
    return ExitCode::Success;
}

}  // namespace

std::string ReadInput(std::string const& name) {
    std::string content;
    std::error_code const error = name == "-" ? ReadStandardInput(content) : ReadFile(name, content);
    if (error) throw UsageError("cannot read " + name + ": " + error.message());
    return content;
}

std::vector<std::string> NamedInputs(std::vector<std::string> const& inputs) {
    std::vector<std::string> files;
    for (auto const& input : inputs) {
        // A file that is called so is meant itself.
        glob_t found{};
        if (::access(input.c_str(), F_OK) != 0) ::glob(input.c_str(), GLOB_NOCHECK, nullptr, &found);
        if (found.gl_pathc == 0) files.push_back(input);
        files.insert(files.end(), found.gl_pathv, found.gl_pathv + found.gl_pathc);
        ::globfree(&found);
    }
    return files;
}

int InterruptedBy() { return interrupted; }

ExitCode Worse(ExitCode earlier, ExitCode code) {
    constexpr auto rank = [](ExitCode value) {
        switch (value) {
            case ExitCode::Usage: return 3;
            case ExitCode::Findings: return 2;
            case ExitCode::Success: return 1;
            case ExitCode::NoLabel: break;
        }
        return 0;
    };
    return rank(earlier) >= rank(code) ? earlier : code;
}

ExitCode RunRender(RenderOptions const& options) {
    RefuseUnfitOptions(options);
    RefuseEqualPaths(options);
    RefuseMissingFonts(options);
    StopOnInterrupt();
    return options.watches ? DrawWhenChanged(options) : DrawAll(options);
}

ExitCode RunCheck(RenderOptions const& options) {
    StopOnInterrupt();
    Desk desk(options);
    RenderReport report(options);
    ExitCode const code = ForEachInput(options, report, [&](std::string const& input, std::string const& stream) {
        desk.StartStream();
        report.StartInput(input);
        Findings findings(stream);
        StreamInterpreter interpreter(desk, stream, findings, DetailOf(options));
        auto const mapper = FieldsJsonOf(options, stream);
        unsigned labels = 0;
        interpreter.Run([&](FinishedLabel& finished) {
            auto const fields = mapper ? std::optional(mapper->Of(*finished.label.Fields())) : std::nullopt;
            report.Label(finished.number, finished.text, finished.label.Quantity(), finished.offset, fields);
            ++labels;
            return interrupted == 0;
        });
        report.EndInput(findings, true);
        if (options.strict && findings.HasFaults()) return ExitCode::Findings;
        return labels == 0 ? ExitCode::NoLabel : ExitCode::Success;
    });
    return report.Finish(code);
}
