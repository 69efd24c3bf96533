#include "desktop/InputRenderer.h"

#include <algorithm>
#include <thread>
#include <utility>

#include "desktop/Commands.h"

ZplCore::FieldMap::Detail DetailOf(RenderOptions const& options) {
    return options.json ? ZplCore::FieldMap::Detail::Everything : ZplCore::FieldMap::Detail::Symbols;
}

std::optional<FieldsJson> FieldsJsonOf(RenderOptions const& options, std::string_view stream) {
    return options.json ? std::optional<FieldsJson>(stream) : std::nullopt;
}

InputRenderer::InputRenderer(RenderOptions const& options, Desk& desk, std::string const& input,
                             std::string_view stream, RenderReport& report)
    : options_(options),
      desk_(desk),
      input_(input),
      report_(report),
      findings_(stream),
      interpreter_(
          desk, stream, [this](Telling telling) { Tell(std::move(telling)); }, DetailOf(options)),
      fieldsJson_(FieldsJsonOf(options, stream)),
      mostThreads_(options.mostThreads != 0 ? options.mostThreads : std::max(std::thread::hardware_concurrency(), 1U)),
      store_(options, input),
      progress_(!options.json) {}

ExitCode InputRenderer::Run() {
    report_.StartInput(input_);
    std::exception_ptr failure;
    auto const attempt = [&failure](auto const& step) {
        try {
            step();
        } catch (...) {
            if (!failure) failure = std::current_exception();
        }
    };
    attempt([this] { RenderLabels(); });
    threads_.reset();
    if (store_.HasGivenUp()) waiting_.reset();
    attempt([this] { ReportWaiting(); });
    attempt([this] { store_.End(); });
    // What was finished and found is told all the same.
    progress_.Clear();
    report_.EndInput(findings_, false);
    if (failure) std::rethrow_exception(failure);
    if (options_.strict && findings_.HasFaults()) return ExitCode::Findings;
    return pages_ == 0 ? ExitCode::NoLabel : ExitCode::Success;
}

void InputRenderer::RenderLabels() {
    interpreter_.Run([this](FinishedLabel& finished) {
        if (failure_) std::rethrow_exception(failure_);
        if (options_.keepJob) {
            jobName_ = jobName_.empty() ? finished.text : jobName_;
            jobFlag_ = jobFlag_ || finished.hasTagOperations;
            kept_.push_back(std::move(finished.label));
            keptFormats_.push_back(finished.format);
        } else {
            UseThreads();
            if (finished.label.Quantity() > options_.mostCopies) finished.label.JudgeLeft();
            auto const rest = finished.rest;
            QueuedLabel queued{TaskOf(std::move(finished.label), finished.number, finished.format)};
            queued.pagesBefore = asked_;
            asked_ += queued.task.copies;
            Draw(std::move(queued), rest);
        }
        return InterruptedBy() == 0;
    });
    if (failure_) std::rethrow_exception(failure_);
    if (!kept_.empty()) RenderJob();
    if (threads_) threads_->Settle(true);
    if (asked_ != 0 && !options_.pages.LastOf(1, asked_))
        findings_.AddNotice("the stream has " + std::to_string(asked_) + (asked_ == 1 ? " page" : " pages") +
                                ", none of which --pages takes",
                            {});
}

void InputRenderer::RenderJob() {
    Zpl::Job job(std::move(kept_), {}, jobFlag_);
    StartJob(job);
    // Pages of a job are drawn when all labels have been read, each on the picture that the one before it leaves.
    bool const areTied = std::any_of(job.Labels().begin(), job.Labels().end(), [this](Zpl::Label const& label) {
        return label.KeepsPicture() || AsksForSources(label);
    });
    if (!areTied) UseThreads();
    unsigned page = 0;
    for (std::size_t i = 0; i < job.Labels().size() && InterruptedBy() == 0; ++i) {
        auto const& label = job.Labels()[i];
        auto task = TaskOf(label, static_cast<unsigned>(i + 1), keptFormats_[i]);
        task.firstPage = page;
        task.lastPage = job.Quantity() - 1;
        task.operations = label.GetRfidOperations();
        page += task.quantity;
        if (threads_) {
            threads_->Add({std::move(task)});
            if (!threads_->Settle(false)) break;
        } else {
            DrawHere({std::move(task)});
        }
    }
    if (threads_) threads_->Settle(true);
    job.End();
    CheckFile(jobPath_);
}

void InputRenderer::StartJob(Zpl::Job& job) {
    job.Start(jobName_);
    jobPath_ = job.JobPath();
    if (interpreter_.Target().FileError().empty()) return;
    std::error_code ignored;
    if (!jobPath_.empty()) std::filesystem::remove_all(jobPath_, ignored);
    CheckFile(jobPath_.empty() ? std::filesystem::path(options_.outputFolder) : jobPath_);
}

LabelTask InputRenderer::TaskOf(Zpl::Label label, unsigned number, std::uint64_t format) {
    auto task = ::TaskOf(std::move(label), number, format, desk_.Printer(), options_.mostCopies,
                         fieldsJson_ ? &*fieldsJson_ : nullptr);
    if (task.copies < task.quantity) {
        Tell([text = "of " + std::to_string(task.quantity) + " copies " + std::to_string(task.copies) +
                     " are drawn; --copies N draws more",
              format](Findings& findings) { findings.AddNotice(text, format); });
    }
    return task;
}

/// A label that has something in common with those before or behind it is drawn in its turn, by the thread that reads;
/// and at once a label behind which little can follow, so that its page still stands from its first replay. `rest` is
/// that of the stream, in bytes.
void InputRenderer::Draw(QueuedLabel queued, std::size_t rest) {
    auto& task = queued.task;
    auto& label = task.label;
    bool const keepsPicture = label.KeepsPicture();
    bool const isTied = keepsPicture || pictureStands_ || label.ReadsStore() || AsksForSources(label);
    if (!isTied) {
        auto const copies = WantedCopies(queued.pagesBefore, task.copies);
        if (!copies) return label.JudgeLeft();
        task.copies = *copies;
    }
    bool const isLast = threads_ && threads_->IsEmpty() && rest <= DrawingThreads::LittleWork;
    if (threads_ && !isTied && !isLast) {
        HandOut(queued);
        threads_->Add(std::move(queued));
        threads_->Settle(false);
        return;
    }
    label.JudgeLeft();
    if (threads_ && !threads_->Settle(true)) return;
    unsigned const before = drawn_;
    DrawHere(std::move(queued));
    pictureStands_ = keepsPicture || (pictureStands_ && drawn_ == before);
}

/// Gives a label along what its first replay has drawn.
void InputRenderer::HandOut(QueuedLabel& queued) {
    auto& label = queued.task.label;
    // The next one leaves it to whoever draws it; the first was read before there were threads.
    if (label.Fields()) label.Fields()->LeaveJudging();
    // What the tag says is drawn anew.
    bool const asksTag = options_.tag && label.IsWaitingOnRfidReadResponse(0);
    if (!asksTag) queued.drawn = label.HandOut(threads_->TakeRoom());
    if (!queued.drawn.page) return label.JudgeLeft();
    if (queued.task.copies != 1) return;
    // Memory goes back fastest on the thread that took it.
    queued.task.operations = label.GetRfidOperations();
    queued.isUsedUp = true;
    Zpl::Label const over = std::move(label);
}

/// How many copies of a label are drawn, behind so many pages, until the last one that is wanted: each goes on from the
/// one before. Nothing if none is.
std::optional<unsigned> InputRenderer::WantedCopies(unsigned before, unsigned copies) const {
    auto const last = options_.pages.LastOf(before + 1, before + copies);
    return last ? std::optional(*last - before) : std::nullopt;
}

void InputRenderer::DrawHere(QueuedLabel label) {
    auto const& task = label.task;
    auto& target = interpreter_.Target();
    auto const folder = options_.keepJob ? jobPath_ : store_.Prepare(target);
    interpreter_.SetDrawnFormat(task.format);
    drawsHere_ = true;
    DrawQueued(
        label, target, folder, options_.tag, desk_.Reader(), [this](Telling const& telling) { telling(findings_); },
        [&](DrawnCopy copy) {
            interpreter_.SetDrawnFormat({});
            ++drawn_;
            unsigned const page = task.firstPage + copy.copy;
            auto const jobPage = [&] { return folder / std::to_string(page); };
            if (!target.FileError().empty()) CheckFile(options_.keepJob ? jobPage() : store_.NextPath());
            if (options_.keepJob) {
                Report(task, {jobPage()}, target.PageSize(), std::move(copy));
            } else {
                store_.WithPage(target, page, [&](Scripting::FinishedPage& drawn) {
                    if (auto staged = Stage(drawn, label, copy, true))
                        KeepDrawn(task, *std::move(staged), std::move(copy));
                });
            }
            interpreter_.SetDrawnFormat(task.format);
            return InterruptedBy() == 0;
        });
    drawsHere_ = false;
    interpreter_.SetDrawnFormat({});
}

/// Called by any thread that draws.
std::optional<StagedPage> InputRenderer::Stage(Scripting::FinishedPage& page, QueuedLabel& label, DrawnCopy const& copy,
                                               bool atOnce) const {
    if (options_.keepJob) return StageFile(PageFormats[0], jobPath_ / "page", page);
    unsigned const number = label.pagesBefore + copy.copy + 1;
    if (!options_.pages.Hold(number)) return std::nullopt;
    if (options_.isDistinct) {
        auto const rows = page.PackedRows();
        if (label.lastRows == rows && label.lastOperations == copy.operations) {
            StagedPage repeat;
            repeat.isRepeat = true;
            return repeat;
        }
        label.lastRows = rows;
        label.lastOperations = copy.operations;
    }
    auto staged = store_.Stage(page, atOnce);
    staged.number = options_.pages.AreAll() ? 0 : number;
    return staged;
}

/// What there is to tell waits for the labels that stand before it.
void InputRenderer::Tell(Telling telling) {
    if (failure_) return;
    if (!threads_ || drawsHere_) return telling(findings_);
    try {
        threads_->Tell(std::move(telling));
    } catch (...) {
        // Not from amid a label, which would be taken for what failed.
        failure_ = std::current_exception();
    }
}

void InputRenderer::UseThreads() {
    if (threads_ || mostThreads_ == 1 || !Scripting::PageKeeper::Of(&interpreter_.Target())) return;
    auto const stage = [this](Scripting::FinishedPage& page, QueuedLabel& label, DrawnCopy const& copy) {
        return Stage(page, label, copy, false);
    };
    threads_.emplace(DrawingThreads::Work{mostThreads_, options_.tag,
                                          [this] { return std::make_unique<LabelDrawer>(desk_, DetailOf(options_)); },
                                          stage, [this](QueuedLabel label) { DrawHere(std::move(label)); },
                                          [this](Telling const& telling) { telling(findings_); },
                                          [this](LabelTask const& task, StagedPage page, DrawnCopy copy) {
                                              KeepDrawn(task, std::move(page), std::move(copy));
                                          }});
}

void InputRenderer::KeepDrawn(LabelTask const& task, StagedPage page, DrawnCopy copy) {
    if (page.isRepeat) {
        ++*waiting_->prints;
        return;
    }
    auto const size = page.size;
    PageStore::Place place;
    if (options_.keepJob) {
        place.path = jobPath_ / std::to_string(task.firstPage + copy.copy);
        page.file->SetPath(place.path);
        if (auto const error = page.file->Keep()) throw CannotWrite(place.path, error);
    } else {
        place = store_.Keep(std::move(page));
    }
    Report(task, std::move(place), size, std::move(copy));
}

void InputRenderer::CheckFile(std::filesystem::path const& what) {
    auto const& error = interpreter_.Target().FileError();
    if (!error.empty()) throw OutputError("cannot write " + what.string() + ": " + error);
}

void InputRenderer::Report(LabelTask const& task, PageStore::Place place, Scripting::Extent size, DrawnCopy copy) {
    ReportWaiting();
    waiting_ =
        RenderedPage{std::move(place.path), place.page, options_.rotation, {}, ReportOf(task, size, std::move(copy))};
    if (options_.isDistinct) waiting_->prints = 1;
    if (!options_.isDistinct && !store_.TakesOnePage()) ReportWaiting();
}

void InputRenderer::ReportWaiting() {
    if (!waiting_) return;
    progress_.Clear();
    report_.Page(*std::exchange(waiting_, {}));
    progress_.Page(++pages_);
}
