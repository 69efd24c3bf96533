#include <algorithm>

#include "frontend/context/ZplContextKeys.h"
#include "frontend/handlers/CommandHandlerPool.h"
#include "frontend/stream/ZplParse.h"
#include "labels/LabelHandlers.h"
#include "labels/PrintDensity.h"

namespace {

using namespace ZplContextKeys;
using enum SyntacticType;
using enum ProcessingType;

constexpr int LargestDarkness = 30;

/// `^MD`: darkness relative to the printer's own.
class MediaDarknessHandler : public HandlerFor<CommandId("MD")> {
public:
    bool HandleCommand(Context&, ZplCommand const& command, ContextProcessor& processor) override {
        if (auto const offset = ZplParse<int>(command, 0)) {
            processor.set(ContextProcessor::SystemContext, MediaDarknessOffset,
                          std::clamp(*offset, -LargestDarkness, LargestDarkness));
        }
        return true;
    }
};

/// `^MM`: what the printer does with a finished label.
class PrintModeHandler : public HandlerFor<CommandId("MM")> {
public:
    bool HandleCommand(Context&, ZplCommand const& command, ContextProcessor& processor) override {
        if (auto const mode = ZplParse<ZplPrintMode>(command, 0))
            processor.set(ContextProcessor::SystemContext, PrintMode, *mode);
        return true;
    }
};

/// Commands that set up the printer and leave no mark on the page: `^MT` media type, `^PR` print rate and `~PR`
/// applicator reprint, `~SD` darkness, `~TA` tear-off position.
template <std::uint64_t Id, SyntacticType Syntax, ProcessingType Processing>
class PrinterSetupHandler : public HandlerFor<Id, Syntax, Processing> {
public:
    bool HandleCommand(Context&, ZplCommand const&, ContextProcessor&) override { return true; }
};

class MediaTypeHandler : public PrinterSetupHandler<CommandId("MT"), Format, Deferred> {};
class PrintRateApplicatorReprintHandler : public PrinterSetupHandler<CommandId("PR"), Either, ImmediateIfControl> {};
/// Reaches this point more than once for one command, so whatever it does has to bear repetition.
class SetDarknessHandler : public PrinterSetupHandler<CommandId("SD"), Control, Immediate> {};
/// Needs the control prefix, and yet waits for the replay.
class TearOffAdjustPositionHandler : public PrinterSetupHandler<CommandId("TA"), Control, Deferred> {};

/// `^XB`: the media is not drawn back before this format prints.
class SuppressBackfeedHandler : public HandlerFor<CommandId("XB")> {
public:
    bool HandleCommand(Context&, ZplCommand const&, ContextProcessor& processor) override {
        processor.set(ContextProcessor::FormatContext, SuppressBackfeed, true);
        return true;
    }
};

}  // namespace

std::optional<int> ZplCore::GetPrintDensityOverride(ContextProcessor const& processor) {
    int const offset = processor.at(MediaDarknessOffset);
    return offset != 0 ? std::optional(offset) : std::nullopt;
}

void AddMediaHandlers(CommandHandlerPool& pool) {
    pool.AddToCache<MediaDarknessHandler>();
    pool.AddToCache<PrintModeHandler>();
    pool.AddToCache<MediaTypeHandler>();
    pool.AddToCache<PrintRateApplicatorReprintHandler>();
    pool.AddToCache<SetDarknessHandler>();
    pool.AddToCache<TearOffAdjustPositionHandler>();
    pool.AddToCache<SuppressBackfeedHandler>();
}
