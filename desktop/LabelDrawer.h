#pragma once

#include <exception>
#include <filesystem>
#include <functional>
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "PrintEngine/PartManagement/LabelPart.h"
#include "PrintEngine/Printing/TrueTypeCacheCreator.h"
#include "Scripting/PrinterContextInterface.h"
#include "Scripting/ScriptGraphicContext.h"
#include "desktop/PageStore.h"
#include "foundation/Clock.h"
#include "jobhost/model/Findings.h"
#include "library/Desk.h"
#include "library/DrawCopies.h"

/// The printer as a label sees it that another thread draws than the one which reads the stream: nothing of it changes
/// while the label is drawn, and nothing is asked of the machine.
class PrinterOfThread final : public Scripting::PrinterContextInterface {
public:
    PrinterOfThread(Scripting::Dpi printerDpi, Scripting::Dpi designDpi, std::shared_ptr<Clock const> clock)
        : printerDpi_(printerDpi), designDpi_(designDpi), clock_(std::move(clock)) {}

    void SetCharacters(CommandCharacters characters) { characters_ = characters; }

    char FormatPrefix() const override { return characters_.format; }
    char ControlPrefix() const override { return characters_.control; }
    char Delimiter() const override { return characters_.delimiter; }
    void SetFormatPrefix(char) override {}
    void SetControlPrefix(char) override {}
    void SetDelimiter(char) override {}
    Scripting::Dpi PrinterDpi() const override { return printerDpi_; }
    Scripting::Dpi DesignDpi() const override { return designDpi_; }
    std::chrono::system_clock::time_point Now() const override { return clock_->Now(); }
    bool CutsAfterLabel() const override { return true; }
    std::optional<unsigned> CutInterval() const override { return std::nullopt; }
    void CancelAll() override {}
    void Pause() override {}
    void Start() override {}
    void Reset() override {}
    void SendToHost(std::string_view) override {}

private:
    Scripting::Dpi printerDpi_;
    Scripting::Dpi designDpi_;
    std::shared_ptr<Clock const> clock_;
    CommandCharacters characters_;
};

/// A label on its way to a thread.
struct QueuedLabel {
    LabelTask task;
    Zpl::Label::Drawn drawn = {};  ///< copy 0, if it stands drawn; behind it room for another
    bool isUsedUp = false;         ///< that was its only copy: the task has no label any more
    unsigned pagesBefore = 0;      ///< of the run
    std::string lastRows = {};     ///< of the copy that became a page, where the next one is held against it
    std::vector<RfidOperation> lastOperations = {};  ///< likewise
};

/// Makes the page of a copy ready; nothing if it is not wanted.
using StagePage = std::function<std::optional<StagedPage>(Scripting::FinishedPage&, QueuedLabel&, DrawnCopy const&)>;

/// Draws its copies on `target`, see DrawCopies. Where its barcodes are left to be judged, they are also read by
/// `reader`, which may be null.
bool DrawQueued(QueuedLabel& label, Scripting::GraphicContext& target, std::filesystem::path const& folder,
                std::optional<VirtualTag> const& tag, std::shared_ptr<ZplCore::SymbolReader const> const& reader,
                std::function<void(Telling)> const& tell, std::function<bool(DrawnCopy)> const& take);

/// A page that a thread has made ready, or what there is to tell behind the last one.
struct DrawnPage {
    std::vector<Telling> tellings = {};  ///< of this page, in their order
    std::optional<StagedPage> page = {};
    DrawnCopy copy = {};
    std::exception_ptr failure = {};  ///< ends the run

    /// What it takes while it waits, in bytes of memory.
    std::size_t Bytes() const {
        return (page ? page->content.size() : 0) + (copy.fields ? copy.fields->list.size() : 0);
    }
};

/// What a thread draws labels with. All that drawing changes is its own:
/// - the target: the rasters, the compressor, the form of the page under way,
/// - the fonts: opened files, typefaces at their sizes, glyphs,
/// - the map of the fields of the label under way, the printer with its characters,
/// - the label itself, which is moved here with all of its state, or what was drawn of it,
/// - by thread: the receiver of reports and the place in the stream (`Log`), the last symbols (`Memoizer`).
/// Shared and never changed are the handlers, recorded commands and pictures that are frozen with labels, the clock and
/// the options; shared and locked, what the table of owners in docs/architecture.md names for the process. A label that
/// needs more than that does not come here: one that keeps its picture for the next, one that is drawn on such a
/// picture, one whose stored pictures are not frozen, and one that asks its map for what the stream has stored.
class LabelDrawer {
public:
    using Report = std::function<Telling(LogTopic, std::string_view text, std::string_view subject, Findings::Format)>;

    /// Draws labels of sessions of this desk, which outlives it. Called by the desk's thread.
    LabelDrawer(Desk& desk, ZplCore::FieldMap::Detail detail);

    /// Makes the pages of a label by `stage` and hands them on by `put`; last, without a page, what else there is to
    /// tell. Uses the label up, and leaves the room of what was drawn. False if the run is interrupted, or `put` gives
    /// false.
    bool Draw(QueuedLabel& label, std::optional<VirtualTag> const& tag, StagePage const& stage,
              std::function<bool(DrawnPage)> const& put);

private:
    PrintEngine::Printing::TrueTypeCacheCreator fonts_;
    std::shared_ptr<PrinterOfThread> printer_;
    std::shared_ptr<Scripting::ScriptGraphicContext> target_;
    std::shared_ptr<ZplCore::FieldMap> map_;
    std::shared_ptr<ZplCore::SymbolReader const> reader_;
    Report report_;
    Findings::Format format_;        ///< of the label under way
    std::vector<Telling> tellings_;  ///< since the page before
};
