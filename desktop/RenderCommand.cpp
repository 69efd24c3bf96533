#include <unistd.h>

#include <cerrno>
#include <csignal>
#include <optional>
#include <set>

#include "desktop/Commands.h"
#include "desktop/PageStore.h"
#include "desktop/Progress.h"
#include "desktop/RenderReport.h"
#include "desktop/StreamInterpreter.h"
#include "foundation/Files.h"
#include "labels/Job.h"

namespace {

volatile std::sig_atomic_t interrupted = 0;

/// Ctrl-C ends the run behind the page under way, so that nothing half done is left.
void StopOnInterrupt() {
    struct sigaction action {};
    action.sa_handler = [](int signal) { interrupted = signal; };
    action.sa_flags = static_cast<int>(SA_RESETHAND);
    for (int const signal : {SIGINT, SIGTERM, SIGHUP}) sigaction(signal, &action, nullptr);
    // A reader that goes away is noticed by the failing write.
    std::signal(SIGPIPE, SIG_IGN);
}

/// Programs are told of each field; people, of what is wrong with one.
ZplCore::FieldMap::Detail DetailOf(RenderOptions const& options) {
    return options.json ? ZplCore::FieldMap::Detail::Everything : ZplCore::FieldMap::Detail::Ink;
}

std::optional<FieldsJson> MapperOf(RenderOptions const& options, std::string_view stream) {
    return options.json ? std::optional<FieldsJson>(stream) : std::nullopt;
}

/// Renders the labels of one input, each as a job of its own the moment it is finished, so that memory does not grow
/// with the stream; or, to keep the job folder, all of them as one job at the end.
class InputRenderer {
public:
    InputRenderer(RenderOptions const& options, Desk& desk, std::string const& input, std::string_view stream,
                  RenderReport& report)
        : options_(options),
          input_(input),
          report_(report),
          findings_(stream),
          interpreter_(desk, stream, findings_, DetailOf(options)),
          mapper_(MapperOf(options, stream)),
          store_(options, input),
          progress_(!options.json) {}

    ExitCode Run() {
        report_.StartInput(input_);
        std::exception_ptr failure;
        try {
            RenderLabels();
        } catch (...) {
            failure = std::current_exception();
        }
        try {
            store_.End();
        } catch (...) {
            if (!failure) failure = std::current_exception();
        }
        // What was finished and found is told all the same.
        progress_.Clear();
        report_.EndInput(findings_, false);
        if (failure) std::rethrow_exception(failure);
        if (options_.strict && findings_.HasFaults()) return ExitCode::Findings;
        return pages_ == 0 ? ExitCode::NoLabel : ExitCode::Success;
    }

private:
    void RenderLabels() {
        interpreter_.Run([this](FinishedLabel& finished) {
            if (options_.keepJob) {
                jobName_ = jobName_.empty() ? finished.text : jobName_;
                jobFlag_ = jobFlag_ || finished.hasTagOperations;
                keptFields_.push_back(finished.label.Fields());
                kept_.push_back(std::move(finished.label));
                keptFormats_.push_back(finished.format);
            } else {
                RenderOne(std::move(finished));
            }
            return interrupted == 0;
        });
        if (!kept_.empty()) RenderJob();
    }

    unsigned CopiesToDraw(unsigned quantity, std::uint64_t format) {
        if (quantity <= options_.mostCopies) return quantity;
        findings_.AddNotice("of " + std::to_string(quantity) + " copies " + std::to_string(options_.mostCopies) +
                                " are drawn; --copies N draws more",
                            format);
        return options_.mostCopies;
    }

    void RenderOne(FinishedLabel finished) {
        unsigned const quantity = finished.label.Quantity();
        unsigned const copies = CopiesToDraw(quantity, finished.format);
        for (unsigned copy = 0; copy < copies && interrupted == 0; ++copy) {
            auto& target = interpreter_.Target();
            auto const folder = store_.Prepare(target);
            bool const drawn = Draw(store_.NextPath(), finished.format, [&] {
                if (options_.tag && finished.label.IsWaitingOnRfidReadResponse(copy)) {
                    finished.label.SetRfidReadResponse(
                        copy, VirtualTag(*options_.tag).Perform(finished.label.GetRfidOperations()));
                }
                finished.label.RenderLabel(folder, copy, copy, copy + 1 == quantity);
            });
            if (!drawn) break;
            auto const [path, page] = store_.Keep(target, copy);
            Report({path, page, 0, 0, finished.number, copy + 1, quantity, finished.label.GetRfidOperations()},
                   *finished.label.Fields());
        }
    }

    void RenderJob() {
        std::vector<unsigned> quantities;
        std::vector<std::vector<RfidOperation>> tagOperations;
        for (auto const& label : kept_) {
            quantities.push_back(label.Quantity());
            tagOperations.push_back(label.GetRfidOperations());
        }
        Zpl::Job job(std::move(kept_), {}, jobFlag_);
        job.Start(jobName_);
        if (!interpreter_.Target().FileError().empty()) {
            std::error_code ignored;
            if (!job.JobPath().empty()) std::filesystem::remove_all(job.JobPath(), ignored);
            CheckFile(job.JobPath().empty() ? std::filesystem::path(options_.outputFolder) : job.JobPath());
        }
        unsigned page = 0;
        for (std::size_t i = 0; i < quantities.size(); ++i) {
            auto const number = static_cast<unsigned>(i + 1);
            unsigned const copies = CopiesToDraw(quantities[i], keptFormats_[i]);
            for (unsigned copy = 0; copy < copies && interrupted == 0; ++copy) {
                auto const file = job.JobPath() / std::to_string(page + copy);
                bool const drawn = Draw(file, keptFormats_[i], [&] {
                    if (options_.tag && job.IsWaitingOnRfidReadResponse(page + copy))
                        job.SetRfidReadResponse(page + copy, VirtualTag(*options_.tag).Perform(tagOperations[i]));
                    job.RenderLabel(page + copy);
                });
                if (!drawn) break;
                Report({file, 0, 0, 0, number, copy + 1, quantities[i], tagOperations[i]}, *keptFields_[i]);
            }
            page += quantities[i];
        }
        job.End();
        CheckFile(job.JobPath());
    }

    /// Runs `render`, which makes the page that ends as `file` of the label that begins at `format`. False if it could
    /// not be drawn; the label is given up then.
    template <typename Render>
    bool Draw(std::filesystem::path const& file, std::uint64_t format, Render&& render) {
        interpreter_.SetDrawnFormat(format);
        try {
            render();
        } catch (std::exception const& error) {
            findings_.AddNotice(Zpl::Host::Explain(error) + "; its pages from here on are dropped", format);
            interpreter_.SetDrawnFormat({});
            return false;
        }
        interpreter_.SetDrawnFormat({});
        CheckFile(file);
        return true;
    }

    void CheckFile(std::filesystem::path const& what) {
        auto const& error = interpreter_.Target().FileError();
        if (!error.empty()) throw OutputError("cannot write " + what.string() + ": " + error);
    }

    void Report(RenderedPage page, ZplCore::FieldMap const& fields) {
        auto const size = interpreter_.Target().PageSize();
        page.width = static_cast<unsigned>(size.width);
        page.height = static_cast<unsigned>(size.height);
        if (mapper_) page.fields = mapper_->Of(fields);
        progress_.Clear();
        report_.Page(page);
        progress_.Page(++pages_);
    }

    RenderOptions const& options_;
    std::string const& input_;
    RenderReport& report_;
    Findings findings_;
    StreamInterpreter interpreter_;
    std::optional<FieldsJson> mapper_;
    PageStore store_;
    Progress progress_;
    std::vector<Zpl::Label> kept_;
    std::vector<std::uint64_t> keptFormats_;
    std::vector<std::shared_ptr<ZplCore::FieldMap>> keptFields_;
    std::string jobName_;
    bool jobFlag_ = false;
    unsigned pages_ = 0;
};

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
        auto const mapper = MapperOf(options, stream);
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
