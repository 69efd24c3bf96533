#pragma once

#include <exception>
#include <filesystem>
#include <functional>
#include <memory>
#include <optional>
#include <string_view>
#include <vector>

#include "PrintEngine/PartManagement/LabelPart.h"
#include "PrintEngine/Printing/TrueTypeCacheCreator.h"
#include "Scripting/PrinterContextInterface.h"
#include "Scripting/ScriptGraphicContext.h"
#include "desktop/FieldsJson.h"
#include "desktop/PageStore.h"
#include "desktop/VirtualTag.h"
#include "foundation/Clock.h"
#include "jobhost/model/Findings.h"
#include "labels/Label.h"

/// The characters that open and part commands: a field may ask for them while it is drawn.
struct CommandCharacters {
    char format = '^';
    char control = '~';
    char delimiter = ',';

    static CommandCharacters Of(Scripting::PrinterContextInterface const& printer) {
        return {printer.FormatPrefix(), printer.ControlPrefix(), printer.Delimiter()};
    }
};

/// A label on its way to its pages.
struct LabelTask {
    Zpl::Label label;
    unsigned number;       ///< among the labels of its stream, from 1
    std::uint64_t format;  ///< where its format begins, in bytes
    unsigned quantity;     ///< copies that were asked for
    unsigned copies;       ///< copies that are drawn
    unsigned firstPage;    ///< its pages are counted from here
    unsigned lastPage;     ///< of its job
    /// Of all copies alike; without it each copy has what it recorded.
    std::optional<std::vector<RfidOperation>> operations;
    CommandCharacters characters;  ///< as they were when its turn came
    FieldsJson const* fieldsJson;  ///< lists the fields of its pages; may be null
};

/// A copy of a label that has been drawn on its target.
struct DrawnCopy {
    unsigned copy;  ///< from 0
    std::vector<RfidOperation> operations;
    std::optional<PageFields> fields;
};

/// Draws the copies of a label on its target, one after the other, as each goes on from the one before, and calls
/// `take` behind each. A label that cannot be drawn is given up with a finding. False if the run is interrupted, or
/// `take` gives false: there are no further copies then.
bool DrawCopies(LabelTask& task, std::filesystem::path const& folder, std::optional<VirtualTag> const& tag,
                std::function<void(Telling)> const& tell, std::function<bool(DrawnCopy)> const& take);

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
/// - the label itself, which is moved here with all of its state,
/// - by thread: the receiver of reports and the place in the stream (`Log`), the last symbols (`Memoizer`).
/// Shared and never changed are the handlers, recorded commands and pictures that are frozen with labels, the clock and
/// the options; shared and locked, what the table of owners in docs/architecture.md names for the process. A label that
/// needs more than that does not come here: one that keeps its picture for the next, one that is drawn on such a
/// picture, one whose stored pictures are not frozen, and one that asks its map for what the stream has stored.
class LabelDrawer {
public:
    using Report = std::function<Telling(LogTopic, std::string_view text, std::string_view subject, Findings::Format)>;

    /// `report` makes what there is to tell of a report.
    LabelDrawer(std::filesystem::path const& fontsFolder, PrintEngine::PartManagement::LabelPart const& part,
                ZplCore::FieldMap::Detail detail, std::shared_ptr<PrinterOfThread> printer, Report report);

    PrintEngine::Printing::TrueTypeCacheCreator& Fonts() { return fonts_; }

    /// Makes the pages of a label by `stage` and hands them on by `put`, the last time without a page. False if the run
    /// is interrupted, or `put` gives false.
    bool Draw(LabelTask task, std::optional<VirtualTag> const& tag,
              std::function<StagedPage(Scripting::FinishedPage&)> const& stage,
              std::function<bool(DrawnPage)> const& put);

private:
    PrintEngine::Printing::TrueTypeCacheCreator fonts_;
    std::shared_ptr<PrinterOfThread> printer_;
    std::shared_ptr<Scripting::ScriptGraphicContext> target_;
    std::shared_ptr<ZplCore::FieldMap> map_;
    Report report_;
    Findings::Format format_;        ///< of the label under way
    std::vector<Telling> tellings_;  ///< since the page before
};
