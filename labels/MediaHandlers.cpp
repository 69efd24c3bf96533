#include <algorithm>

#include "frontend/context/ZplContextKeys.h"
#include "frontend/handlers/CommandHandlerPool.h"
#include "frontend/stream/ParameterRange.h"
#include "frontend/stream/ZplParse.h"
#include "labels/LabelHandlers.h"
#include "labels/PrintDensity.h"

namespace {

using namespace ZplContextKeys;
using enum SyntacticType;
using enum ProcessingType;

using ZplCore::LargestDarkness;

/// `^MD`: darkness relative to that of `~SD`, or to the printer's own. Tenths are dropped.
class MediaDarknessHandler : public HandlerFor<CommandId("MD")> {
public:
    bool HandleCommand(Context&, ZplCommand const& command, ContextProcessor& processor) override {
        if (auto const offset = ZplParse<int>(command, 0)) {
            processor.set(ContextProcessor::SystemContext, MediaDarknessOffset,
                          Bounded(command, 0, *offset, {-LargestDarkness, LargestDarkness}));
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

/// `~SD`: darkness in place of the printer's own. One command reaches this point more than once, with more digits each
/// time.
class SetDarknessHandler : public HandlerFor<CommandId("SD"), Control, Immediate> {
public:
    bool HandleCommand(Context&, ZplCommand const& command, ContextProcessor& processor) override {
        if (auto const darkness = ZplParse<unsigned>(command, 0)) {
            int const value = static_cast<int>(Bounded(command, 0, *darkness, {0, LargestDarkness}));
            processor.set(ContextProcessor::SystemContext, MediaDarkness, std::optional(value));
        }
        return true;
    }
};

/// Commands that set up the machine, which keeps these settings itself: `^MT` media type, `^PR` print rate and `~PR`
/// applicator reprint, `~TA` tear-off position.
template <std::uint64_t Id, SyntacticType Syntax, ProcessingType Processing>
class PrinterSetupHandler : public HandlerFor<Id, Syntax, Processing> {
public:
    bool HandleCommand(Context&, ZplCommand const&, ContextProcessor&) override { return true; }
};

class MediaTypeHandler : public PrinterSetupHandler<CommandId("MT"), Format, Deferred> {};
class PrintRateApplicatorReprintHandler : public PrinterSetupHandler<CommandId("PR"), Either, ImmediateIfControl> {};
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
    auto const darkness = processor.at(MediaDarkness);
    int const offset = processor.at(MediaDarknessOffset);
    if (!darkness && offset == 0) return std::nullopt;
    return std::clamp(darkness.value_or(StandardDarkness) + offset, 0, LargestDarkness);
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
