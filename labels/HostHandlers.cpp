#include <algorithm>

#include "Scripting/PrinterContextInterface.h"
#include "fields/data/FieldDataHelper.h"
#include "fields/data/HostQuestions.h"
#include "frontend/context/ObjectStore.h"
#include "frontend/context/ZplContextKeys.h"
#include "frontend/handlers/CommandHandlerPool.h"
#include "frontend/stream/Ascii.h"
#include "frontend/stream/ParameterRange.h"
#include "frontend/stream/ZplParse.h"
#include "labels/HostStatus.h"
#include "labels/LabelHandlers.h"
#include "labels/ReportLabel.h"

namespace {

using namespace ZplContextKeys;
using enum SyntacticType;
using enum ProcessingType;

unsigned CountStoredGraphics(std::filesystem::path const& folder) {
    SettleObjects();
    std::error_code error;
    unsigned count = 0;
    for (std::filesystem::recursive_directory_iterator entry(folder, error), end; !error && entry != end;
         entry.increment(error)) {
        if (entry->path().extension() == ".GRF") ++count;
    }
    return count;
}

/// `~HS`: the status of the printer, answered at once and without disturbing a format.
class HostStatusHandler : public HandlerFor<CommandId("HS"), Control, Immediate> {
public:
    bool HandleCommand(Context&, ZplCommand const&, ContextProcessor& processor) override {
        auto& printer = *processor.GetPrinterContext();
        auto const status = printer.Status();
        ZplCore::StreamStatus stream;
        unsigned const length = processor.at(LabelLength);
        stream.labelLength = length != 0 ? length : status.partLength;
        stream.formatOpen = processor.GetContext(ContextProcessor::LabelContext) != nullptr;
        stream.printMode = ZplCore::PrintModeToTell(processor);
        stream.storedGraphics = CountStoredGraphics(processor.FormatsFolder());
        printer.SendToHost(ZplCore::HostStatusAnswer(status, stream));
        return true;
    }
};

/// `^HV`: sends back what a field number was filled with, once for the format or for every label.
class HostVerificationHandler : public HandlerFor<CommandId("HV")> {
public:
    bool HandleCommand(Context&, ZplCommand const& command, ContextProcessor& processor) override {
        constexpr unsigned DefaultBytes = 64;
        constexpr unsigned MostBytes = 256;
        constexpr std::size_t LongestFrame = 3072;
        constexpr unsigned LastFieldNumber = 9999;
        unsigned const number = Bounded(command, 0, ZplParse<unsigned>(command, 0).ValueOr(0), {0, LastFieldNumber});
        unsigned const bytes =
            Bounded(command, 1, ZplParse<unsigned>(command, 1).ValueOr(DefaultBytes), {1, MostBytes});
        auto const frame = [&](std::size_t index) {
            return ZplCore::FieldDataHelper::ExpandHex(command.Parameter(index), processor.at(FieldHexIndicator))
                .substr(0, LongestFrame);
        };
        ResponseCallback const answer = [number, bytes, header = frame(2), termination = frame(3)](
                                            ContextProcessor const& label) -> std::optional<std::string> {
            auto const& values = label.at(FieldNumberValues);
            auto const found = values.find(number);
            // Who frames the answer waits for it, also when the number has no data.
            std::string text = header + (found == values.end() ? "" : found->second.substr(0, bytes)) + termination;
            if (text.empty()) return std::nullopt;
            return text;
        };
        char const applies = ToAsciiUpper(ZplParse<char>(command, 4).ValueOr('F'));
        auto const& key = applies == 'L' ? HostVerificationLabelCallbacks : HostVerificationFormatCallbacks;
        ZplCore::AddHostQuestion(processor, key, answer);
        return true;
    }
};

/// `~WC`: prints the settings.
class PrintConfigurationLabelHandler : public HandlerFor<CommandId("WC"), Control, Immediate> {
public:
    bool HandleCommand(Context&, ZplCommand const&, ContextProcessor& processor) override {
        PrintReportLabel(processor, "PRINTER CONFIGURATION", ConfigurationLines(processor));
        return true;
    }
};

/// `~WL`: prints the network settings.
class PrintNetworkConfigurationHandler : public HandlerFor<CommandId("WL"), Control, Immediate> {
public:
    bool HandleCommand(Context&, ZplCommand const&, ContextProcessor& processor) override {
        PrintReportLabel(processor, "NETWORK CONFIGURATION", NetworkLines());
        return true;
    }
};

}  // namespace

void AddHostHandlers(CommandHandlerPool& pool) {
    pool.AddToCache<HostStatusHandler>();
    pool.AddToCache<HostVerificationHandler>();
    pool.AddToCache<PrintConfigurationLabelHandler>();
    pool.AddToCache<PrintNetworkConfigurationHandler>();
}
