#pragma once

#include <memory>
#include <optional>
#include <string_view>

#include "PrintEngine/PartManagement/LabelPart.h"
#include "Scripting/ScriptGraphicContext.h"
#include "fields/map/FieldMap.h"
#include "foundation/MachineSettings.h"
#include "frontend/processor/ZplCommandProcessor.h"

class ZPLProcessorInterface;

namespace Zpl::Host {

/// One print stream: a command processor with the drawing target and the label part that it works on.
class Session {
public:
    Session(ZPLProcessorInterface& model, std::shared_ptr<Context> systemContext,
            PrintEngine::Printing::TrueTypeCacheCreator& fontCache,
            std::shared_ptr<Scripting::PrinterContextInterface> printerContext, CommandHandlerPool const& handlerPool,
            MachineSettings const& machine);

    ZplCommandProcessor::ProcessResult Consume(std::string_view input, bool controlCommandsOnly, bool flushAtEnd) {
        return processor_.ProcessString(input, controlCommandsOnly, flushAtEnd);
    }
    /// See ZplCommandProcessor.
    ZplCommandProcessor::ProcessResult ConsumeOpenCommand() { return processor_.ProcessOpenCommand(); }

    void SetUnknownCommandObserver(ZplCommandProcessor::UnknownCommandObserver observer) {
        processor_.SetUnknownCommandObserver(std::move(observer));
    }
    /// Notes the fields of labels as they are drawn, and reports what their pages do not show of them. Labels give what
    /// was noted, see Zpl::Label::Fields.
    void MapFields(ZplCore::FieldMap::Detail detail = ZplCore::FieldMap::Detail::Ink);
    /// Symbols of fields that are noted from now on are read back by this one; null: they are not.
    void SetSymbolReader(std::shared_ptr<ZplCore::SymbolReader const> reader) { reader_ = std::move(reader); }
    bool IsInFormat() const { return processor_.IsInFormat(); }
    std::optional<std::uint64_t> FormatOffset() const { return processor_.FormatOffset(); }
    std::uint64_t LastCommandOffset() const { return processor_.LastCommandOffset(); }
    std::uint64_t ConsumedBytes() const { return processor_.ConsumedBytes(); }
    /// Reads on what `before` has left, which an exception has ended (see ZplCommandProcessor), and draws on its
    /// target: labels of one stream share a page's memory, and the picture that one of them keeps for the next.
    void GoOnFrom(Session& before, ZplCommandProcessor::StreamRest rest);
    ZplCommandProcessor::StreamRest TakeRest() { return processor_.TakeRest(); }
    /// What is noted of the label that was drawn last, also of one that has nothing to print; null where nobody asks.
    ZplCore::FieldMap const* Fields() const { return fieldMap_.get(); }
    /// What the labels of the stream are drawn on.
    Scripting::ScriptGraphicContext& Target() { return *graphicContext_; }

private:
    ZplCommandProcessor processor_;
    std::shared_ptr<Scripting::ScriptGraphicContext> graphicContext_;
    std::shared_ptr<ZplCore::FieldMap> fieldMap_;  ///< null where fields are not noted
    ZplCore::FieldMap::Detail detail_ = ZplCore::FieldMap::Detail::Ink;
    std::shared_ptr<ZplCore::SymbolReader const> reader_;
    PrintEngine::PartManagement::LabelPart part_;
};

}  // namespace Zpl::Host
