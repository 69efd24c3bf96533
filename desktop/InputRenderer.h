#pragma once

#include <exception>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "desktop/DrawingThreads.h"
#include "desktop/PageStore.h"
#include "desktop/Progress.h"
#include "desktop/RenderReport.h"
#include "labels/Job.h"
#include "library/StreamInterpreter.h"

/// Programs are told of each field; people, of what is wrong with one.
ZplCore::FieldMap::Detail DetailOf(RenderOptions const& options);
std::optional<FieldsJson> FieldsJsonOf(RenderOptions const& options, std::string_view stream);

/// Renders the labels of one input, each as a job of its own the moment it is finished, so that memory does not grow
/// with the stream; or, to keep the job folder, all of them as one job at the end. Where more threads than one may
/// draw, the thread that reads the stream goes on while they do; pages, lines and findings come in the same order and
/// are the same.
class InputRenderer {
public:
    InputRenderer(RenderOptions const& options, Desk& desk, std::string const& input, std::string_view stream,
                  RenderReport& report);

    ExitCode Run();

private:
    void RenderLabels();
    void RenderJob();
    void StartJob(Zpl::Job& job);
    LabelTask TaskOf(Zpl::Label label, unsigned number, std::uint64_t format);
    void Draw(QueuedLabel queued, std::size_t rest);
    bool AsksForSources(Zpl::Label const& label) const { return fieldsJson_ && label.HasRecalledCommands(); }
    void HandOut(QueuedLabel& queued);
    std::optional<unsigned> WantedCopies(unsigned before, unsigned copies) const;
    void DrawHere(QueuedLabel label);
    std::optional<StagedPage> Stage(Scripting::FinishedPage& page, QueuedLabel& label, DrawnCopy const& copy,
                                    bool atOnce) const;
    void Tell(Telling telling);
    void UseThreads();
    void KeepDrawn(LabelTask const& task, StagedPage page, DrawnCopy copy);
    void CheckFile(std::filesystem::path const& what);
    void Report(LabelTask const& task, PageStore::Place place, Scripting::Extent size, DrawnCopy copy);
    void ReportWaiting();

    RenderOptions const& options_;
    Desk& desk_;
    std::string const& input_;
    RenderReport& report_;
    Findings findings_;
    StreamInterpreter interpreter_;
    std::optional<FieldsJson> const fieldsJson_;
    unsigned const mostThreads_;  ///< that draw pages
    PageStore store_;
    Progress progress_;
    std::vector<Zpl::Label> kept_;
    std::vector<std::uint64_t> keptFormats_;
    std::string jobName_;
    bool jobFlag_ = false;
    std::filesystem::path jobPath_;        ///< empty while none is kept
    unsigned asked_ = 0;                   ///< pages of the labels that have been read
    unsigned drawn_ = 0;                   ///< copies, on this thread
    unsigned pages_ = 0;                   ///< that were made
    std::optional<RenderedPage> waiting_;  ///< until it is known how often it prints
    bool pictureStands_ = false;           ///< which the next label begins with
    bool drawsHere_ = false;               ///< a label in its turn
    std::exception_ptr failure_;           ///< of what was done for a report, amid a label
    std::optional<DrawingThreads> threads_;
};
