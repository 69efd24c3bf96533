#include "foundation/Log.h"
#include "foundation/Quoted.h"
#include "frontend/context/ObjectName.h"
#include "frontend/context/ObjectStore.h"
#include "frontend/context/ZplContextKeys.h"
#include "frontend/handlers/CommandHandlerPool.h"
#include "labels/LabelHandlers.h"

namespace {

using enum SyntacticType;
using enum ProcessingType;

/// The stored format that `text` names: on the device it names, else on the first that has it.
std::optional<ObjectName> FindStoredFormat(std::string const& text, std::filesystem::path const& folder) {
    constexpr std::string_view SearchOrder = "REBA";
    auto name = ObjectName::Parse(text, SearchOrder.front(), "UNKNOWN", "ZPL");
    if (!name || ObjectName::NamesDevice(text)) return name;
    for (char const device : SearchOrder) {
        name->device = device;
        std::error_code error;
        if (std::filesystem::is_regular_file(ObjectFile(folder, name->Path()), error)) break;
    }
    return name;
}

/// `^DF`: the format is stored under a name and not printed.
class SaveFormatHandler : public HandlerFor<CommandId("DF"), Format, Immediate> {
public:
    bool HandleCommand(Context&, ZplCommand const& command, ContextProcessor& processor) override {
        // Of a format that is thrown away nothing is stored.
        if (processor.at(ZplContextKeys::CancelCurrentFormat)) return true;
        auto const name = ObjectName::Parse(command.Parameter(0), 'R', "UNKNOWN", "ZPL");
        if (name) {
            processor.set(ContextProcessor::FormatContext, ZplContextKeys::SavedFormatPath, name->Path().string());
        } else {
            // Its fields wait for data that only a recall brings, so it must not be printed either.
            Log::Report(LogTopic::Limit, "a format cannot be stored under the name " + Quoted(command.Parameter(0)));
            processor.set(ContextProcessor::FormatContext, ZplContextKeys::CancelCurrentFormat, true);
        }
        return true;
    }
};

/// `^XA`: a format begins, with empty contexts whatever stands on the stack.
class StartFormatHandler : public HandlerFor<CommandId("XA"), Format, Immediate> {
public:
    bool HandleCommand(Context&, ZplCommand const&, ContextProcessor& processor) override {
        processor.BeginFormat();
        return true;
    }
};

/// `^XF`: the commands of a stored format are put in at this place.
class RecallFormatHandler : public HandlerFor<CommandId("XF"), Format, Immediate> {
public:
    bool HandleCommand(Context&, ZplCommand const& command, ContextProcessor& processor) override {
        auto const name = FindStoredFormat(command.Parameter(0), processor.FormatsFolder());
        if (!name) {
            Log::Report(LogTopic::Data, "no format can have the name " + Quoted(command.Parameter(0)));
            return true;
        }
        std::string const path = name->Path().string();
        processor.set(ContextProcessor::FormatContext, ZplContextKeys::RecallFormatPath, path);
        std::error_code error;
        if (!std::filesystem::is_regular_file(ObjectFile(processor.FormatsFolder(), path), error))
            Log::Report(LogTopic::File, "no format is stored under the name " + Quoted(command.Parameter(0)));
        processor.RecallFormat(path, command.length);
        return true;
    }
};

/// `^XZ`: the format ends; the processor does the rest.
class EndFormatHandler : public HandlerFor<CommandId("XZ"), Format, Immediate> {
public:
    bool HandleCommand(Context&, ZplCommand const&, ContextProcessor& processor) override {
        processor.EndFormat();
        return true;
    }
};

}  // namespace

void AddFormatHandlers(CommandHandlerPool& pool) {
    pool.AddToCache<SaveFormatHandler>();
    pool.AddToCache<StartFormatHandler>();
    pool.AddToCache<RecallFormatHandler>();
    pool.AddToCache<EndFormatHandler>();
}

void AddLabelHandlers(CommandHandlerPool& pool, bool disablePausing) {
    AddFormatHandlers(pool);
    AddLabelSetupHandlers(pool);
    AddMediaHandlers(pool);
    AddClockHandlers(pool);
    AddPrintControlHandlers(pool, disablePausing);
    AddHostHandlers(pool);
}
