#include <algorithm>

#include "Scripting/PrinterContextInterface.h"
#include "frontend/context/ObjectStore.h"
#include "frontend/context/ZplContextKeys.h"
#include "frontend/handlers/CommandHandlerPool.h"
#include "frontend/stream/ParameterRange.h"
#include "frontend/stream/ZplParse.h"
#include "labels/LabelHandlers.h"

namespace {

using namespace ZplContextKeys;
using enum SyntacticType;
using enum ProcessingType;
using Scripting::PrinterContextInterface;

constexpr unsigned MostLabels = 99'999'999;

/// `^CC`, `^CD`, `^CT`: one of the stream's three characters. It must be printable (the blank is) and differ from the
/// other two.
template <std::uint64_t Id, char (PrinterContextInterface::*First)() const,
          char (PrinterContextInterface::*Second)() const, void (PrinterContextInterface::*Set)(char)>
class ChangeCharacterHandler : public HandlerFor<Id, Either, Immediate> {
public:
    bool HandleCommand(Context&, ZplCommand const& command, ContextProcessor& processor) override {
        auto& printer = *processor.GetPrinterContext();
        auto const character = ZplParse<char>(command, 0);
        bool const printable = character && *character >= ' ' && *character <= '~';
        if (printable && *character != (printer.*First)() && *character != (printer.*Second)())
            (printer.*Set)(*character);
        return true;
    }
};

class ChangeCaretHandler
    : public ChangeCharacterHandler<CommandId("CC"), &PrinterContextInterface::ControlPrefix,
                                    &PrinterContextInterface::Delimiter, &PrinterContextInterface::SetFormatPrefix> {};
class ChangeDelimiterHandler
    : public ChangeCharacterHandler<CommandId("CD"), &PrinterContextInterface::FormatPrefix,
                                    &PrinterContextInterface::ControlPrefix, &PrinterContextInterface::SetDelimiter> {};
class ChangeTildeHandler
    : public ChangeCharacterHandler<CommandId("CT"), &PrinterContextInterface::FormatPrefix,
                                    &PrinterContextInterface::Delimiter, &PrinterContextInterface::SetControlPrefix> {};

/// `~JA`: cancels what is being printed and what waits for it.
class CancelAllHandler : public HandlerFor<CommandId("JA"), Control, Immediate> {
public:
    bool HandleCommand(Context&, ZplCommand const&, ContextProcessor& processor) override {
        processor.GetPrinterContext()->CancelAll();
        return true;
    }
};

/// `~JR`: the state after power-on. What streams have set up is at its defaults, the memory device is empty, and the
/// picture that a label has kept and the format being received are lost.
class PowerOnResetHandler : public HandlerFor<CommandId("JR"), Control, Immediate> {
public:
    bool HandleCommand(Context&, ZplCommand const&, ContextProcessor& processor) override {
        Context& system = *processor.GetSystemContext();
        auto const fonts = system[TrueTypeFonts];
        unsigned const before = system[PowerOnCount];
        system.Clear();
        system.Set(TrueTypeFonts, fonts);
        system.Set(PowerOnCount, before + 1);
        auto& printer = *processor.GetPrinterContext();
        printer.SetFormatPrefix('^');
        printer.SetControlPrefix('~');
        printer.SetDelimiter(',');
        ClearMemoryDevice(processor.FormatsFolder());
        processor.set(ContextProcessor::FormatContext, CancelCurrentFormat, true);
        return true;
    }
};

/// `~JX`: the format that is being received is thrown away; outside a format it has no effect.
class CancelPartialFormatHandler : public HandlerFor<CommandId("JX"), Control, Immediate> {
public:
    bool HandleCommand(Context&, ZplCommand const&, ContextProcessor& processor) override {
        processor.set(ContextProcessor::FormatContext, CancelCurrentFormat, true);
        return true;
    }
};

/// `^JZ` and `^SP`: accepted, and without effect.
class ReprintAfterErrorHandler : public HandlerFor<CommandId("JZ")> {
public:
    bool HandleCommand(Context&, ZplCommand const&, ContextProcessor&) override { return false; }
};
class StartPrintHandler : public HandlerFor<CommandId("SP")> {
public:
    bool HandleCommand(Context&, ZplCommand const&, ContextProcessor&) override { return false; }
};

/// `~PP` pauses at once, `^PP` after the format it stands in.
class ProgrammablePauseHandler : public HandlerFor<CommandId("PP"), Either, Immediate> {
public:
    bool HandleCommand(Context&, ZplCommand const& command, ContextProcessor& processor) override {
        if (command.isControl) {
            processor.GetPrinterContext()->Pause();
        } else {
            processor.set(ContextProcessor::FormatContext, PauseAfterJob, true);
        }
        return true;
    }
};

/// `^PQ`: copies, copies per group, copies that share a serial number, and whether a group only cuts. Counts for its
/// own format, so it is kept there: a field's end must not take it away. Sent outside a format it counts for all.
class PrintQuantityHandler : public HandlerFor<CommandId("PQ"), Format, Immediate, true> {
public:
    bool HandleCommand(Context& current, ZplCommand const& command, ContextProcessor& processor) override {
        Context* const format = processor.GetContext(ContextProcessor::FormatContext);
        auto const keep = [&](auto const& key, auto value) { processor.set(format ? *format : current, key, value); };
        if (auto const labels = ZplParse<unsigned>(command, 0))
            keep(PrintQuantity, Bounded(command, 0, *labels, {1, MostLabels}));
        if (auto const group = ZplParse<unsigned>(command, 1))
            keep(GroupCount, Bounded(command, 1, *group, {0, MostLabels}));
        if (auto const same = ZplParse<unsigned>(command, 2))
            keep(SerialNumberReplications, Bounded(command, 2, *same, {0, MostLabels}));
        if (auto const cutOnly = ZplParse<bool>(command, 3)) keep(PauseOnCut, !*cutOnly);
        return true;
    }
};

/// `^PQ` of a machine that never pauses: a group only cuts.
class PrintQuantityNoPausingHandler : public PrintQuantityHandler {
public:
    bool HandleCommand(Context& current, ZplCommand const& command, ContextProcessor& processor) override {
        PrintQuantityHandler::HandleCommand(current, command, processor);
        Context* const format = processor.GetContext(ContextProcessor::FormatContext);
        processor.set(format ? *format : current, PauseOnCut, false);
        return true;
    }
};

/// `~PS`: goes on after a pause.
class PrintStartHandler : public HandlerFor<CommandId("PS"), Control, Immediate> {
public:
    bool HandleCommand(Context&, ZplCommand const&, ContextProcessor& processor) override {
        processor.GetPrinterContext()->Start();
        return true;
    }
};

}  // namespace

void AddPrintControlHandlers(CommandHandlerPool& pool, bool disablePausing) {
    pool.AddToCache<ChangeCaretHandler>();
    pool.AddToCache<ChangeDelimiterHandler>();
    pool.AddToCache<ChangeTildeHandler>();
    pool.AddToCache<CancelAllHandler>();
    pool.AddToCache<PowerOnResetHandler>();
    pool.AddToCache<CancelPartialFormatHandler>();
    pool.AddToCache<ReprintAfterErrorHandler>();
    pool.AddToCache<StartPrintHandler>();
    pool.AddToCache<ProgrammablePauseHandler>();
    pool.AddToCache<PrintStartHandler>();
    if (disablePausing) {
        pool.AddToCache<PrintQuantityNoPausingHandler>();
    } else {
        pool.AddToCache<PrintQuantityHandler>();
    }
}
