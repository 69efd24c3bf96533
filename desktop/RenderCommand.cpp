#include <unistd.h>

#include <atomic>
#include <cerrno>
#include <csignal>
#include <optional>
#include <set>

#include "desktop/Commands.h"
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

/// Inputs from different folders may have one name, and their pages would overwrite each other.
void RefuseEqualStems(RenderOptions const& options) {
    std::set<std::string> stems;
    for (auto const& input : options.inputs) {
        if (!options.keepJob && !stems.insert(PageStem(input)).second) {
            throw UsageError("two inputs would both be drawn as " + PageFileName(options, input, 1) +
                             "; draw them apart, with --out");
        }
    }
}

}  // namespace

std::string ReadInput(std::string const& name) {
    std::string content;
    std::error_code const error = name == "-" ? ReadStandardInput(content) : ReadFile(name, content);
    if (error) throw UsageError("cannot read " + name + ": " + error.message());
    return content;
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
    RefuseEqualStems(options);
    RefuseMissingFonts(options);
    StopOnInterrupt();
    Desk desk(options);
    RenderReport report(options.json, options.inputs.size() > 1);
    ExitCode const code = ForEachInput(options, report, [&](std::string const& input, std::string const& stream) {
        desk.StartStream();
        return InputRenderer(options, desk, input, stream, report).Run();
    });
    return report.Finish(code);
}

ExitCode RunCheck(RenderOptions const& options) {
    StopOnInterrupt();
    Desk desk(options);
    RenderReport report(options.json, options.inputs.size() > 1);
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
