#pragma once

#include <filesystem>
#include <map>
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "Scripting/FinishedPage.h"
#include "Scripting/RfidOperation.h"
#include "fields/map/FieldMap.h"
#include "fields/scan/ScanCheck.h"
#include "frontend/context/ContextProcessor.h"

class CommandHandlerPool;

namespace Zpl {

/// A finished format, frozen: the recorded commands and the state at the moment the format ended. It draws any copy of
/// itself at any later time, by running the recorded commands again on a state of its own. Copies are counted from 0.
class Label {
public:
    /// Takes the state over.
    Label(ContextProcessor processor, CommandHandlerPool const& handlerPool);
    Label DeepClone() const { return *this; }
    /// Gives the state that the job asks for its pages, pauses and darkness a system context of its own, so that what
    /// the stream sets from now on does not reach it.
    void Freeze() { processor_ = processor_.DeepClone(); }

    /// Copy 0 as it was drawn, on its way to another target.
    struct Drawn {
        std::unique_ptr<Scripting::HandedLabel> page;  ///< null if the copy has to be drawn
        std::optional<ZplCore::FieldMap::Label> fields;
        std::optional<ZplCore::ScannedLabel> unjudged;  ///< its barcodes are judged where it is taken over
    };
    /// Goes on from what the first replay left (GoOnFrom) and hands out what it drew, if the target holds it. `room` is
    /// that of an earlier page; may be null.
    Drawn HandOut(std::unique_ptr<Scripting::HandedLabel> room);
    /// Copy 0 need not be drawn. Leaves the room of the page.
    void TakeOver(Drawn& drawn);
    /// Draws on another target from now on, copy 0 anew if nothing is taken over, and notes its fields in `map`, which
    /// may be null. Behind Freeze a label and what it is moved to may go to another thread: what it has in common
    /// with others then never changes, or is locked.
    void MoveTo(std::shared_ptr<Scripting::GraphicContext> const& target,
                std::shared_ptr<Scripting::PrinterContextInterface> const& printer,
                std::shared_ptr<ZplCore::FieldMap> const& map);
    /// Whether the labels that follow begin with its picture, which its target keeps for them.
    bool KeepsPicture() const;
    /// Whether it reads stored pictures for each page, since there was no memory to freeze them with it.
    bool ReadsStore() const;
    /// Whether commands of stored formats are among its own.
    bool HasRecalledCommands() const { return pristineProcessor_.GetFormatCommands().HasRecalled(); }
    /// What its commands take in a stream, about.
    std::size_t CommandBytes() const { return pristineProcessor_.GetFormatCommands().Bytes(); }

    /// How many copies are printed.
    unsigned Quantity() const;
    /// Whether printing pauses behind the last copy.
    bool PauseAfterSet() const;
    /// After how many copies printing pauses; 0 for never.
    unsigned PauseGroupQuantity() const;

    /// Asks the drawing target to start the job, and gives the path of the job's folder.
    std::string StartJob(std::string_view jobName, unsigned totalPages, std::vector<unsigned> const& pauseIndices,
                         bool flag, std::vector<PageRangeRfidOperations> const& tagOperations);
    void EndJob(std::filesystem::path const& jobPath) const;

    void StartLabel();
    void NoteBarcodes() const;
    void EndLabel();
    /// What the first replay left, once it has run: the state, and the copy as the drawing target holds it.
    struct Replay {
        ContextProcessor processor;
        std::uint64_t drawn;               ///< by Scripting::PageKeeper::DrawnLabel
        ZplCore::SymbolBoxes symbolBoxes;  ///< where its barcodes stand
        std::optional<ZplCore::ScannedLabel> unjudged;
    };
    /// Judges the barcodes of the first replay where its map has left that (FieldMap::LeaveJudging). The target must
    /// still hold what it drew, and the map what it noted: before the next label is read. A label that is handed out
    /// goes without.
    void JudgeLeft();
    /// Uses the label up. Null if the target cannot tell what it holds.
    std::shared_ptr<Replay> TakeReplay();
    /// Copy 0 is not drawn again as long as that replay lives and the target holds what it drew.
    void GoOnFrom(std::weak_ptr<Replay> replay) { replay_ = std::move(replay); }
    /// Replays the format for one copy. The result is the text of the label if anything was drawn.
    std::optional<std::string> ProcessLabel(unsigned copyIndex, bool forcePageEnd);
    /// Draws a copy and writes it as page `pageNumber` of the job. Copy 0 starts from the frozen state; later copies go
    /// on from the state that the copy before left.
    void RenderLabel(std::filesystem::path const& jobPath, unsigned copyIndex, unsigned pageNumber, bool isLastPage);
    /// A page of the same size with nothing on it.
    void RenderBlank(std::filesystem::path const& jobPath, unsigned pageNumber, bool isLastPage) const;

    /// Stores the page as a picture where the format asked for it.
    void RenderLabelToFile() const;
    bool HasImageSavePath() const;
    bool ShouldPrint() const;

    /// Where its fields are noted as they are drawn, those of the copy drawn last; null where nobody asks.
    std::shared_ptr<ZplCore::FieldMap> const& Fields() const { return processor_.GetFieldMap(); }

    bool HasRfidOperations() const { return !GetRfidOperations().empty(); }
    std::vector<RfidOperation> GetRfidOperations() const;
    void SetRfidOperations(std::vector<RfidOperation> const& operations) { rfidOperations_ = operations; }
    /// Writes the operations of the copy that was rendered last, with what was read, into the printer's tag log.
    void LogTagOperations() const;
    bool HasRfidReadOperations() const;
    bool IsWaitingOnRfidReadResponse(unsigned copyIndex) const;
    void SetRfidReadResponse(unsigned copyIndex, std::vector<RfidReadResponse> const& responses);

    /// Send to the host what the format's queries ask for: after each page, and after the last page of the format.
    void SendEndOfPageNetworkResponses() const;
    void SendEndOfFormatNetworkResponses() const;

private:
    bool GoOnFromReplay();
    void ReplayCommands();
    void RequestCuts(unsigned copyIndex, bool forcePageEnd);

    ContextProcessor processor_;
    ContextProcessor pristineProcessor_;
    CommandHandlerPool const* handlerPool_;
    std::vector<RfidOperation> rfidOperations_;
    std::map<unsigned, std::vector<RfidReadResponse>> rfidReadResponses_;
    std::weak_ptr<Replay> replay_;
    ZplCore::SymbolBoxes symbolBoxes_;               ///< of the copy that was drawn last
    std::optional<ZplCore::ScannedLabel> unjudged_;  ///< likewise
    bool isDrawn_ = false;                           ///< copy 0, which has been taken over
};

}  // namespace Zpl
