#include "rfid/RfidHandlers.h"

#include "frontend/context/Setting.h"
#include "frontend/context/ZplContextKeys.h"
#include "frontend/handlers/CommandHandlerPool.h"
#include "frontend/stream/ZplParse.h"

namespace {

using enum SyntacticType;
using enum ProcessingType;

/// A tag command that is taken in; its operation is not recorded yet. What it says never shows on the page, so the data
/// of its field must not be drawn either.
template <std::uint64_t Id, SyntacticType Syntax = Format, ProcessingType Processing = Deferred>
class TagHandler : public HandlerFor<Id, Syntax, Processing> {
public:
    bool HandleCommand(Context& current, ZplCommand const&, ContextProcessor& processor) override {
        if constexpr (Processing == Deferred) {
            StoreSetting(current, processor, ZplContextKeys::FieldRenderFunction,
                         ZplContextKeys::RenderFunction([](ContextProcessor&) {}));
        }
        return true;
    }
};

class ReturnRfidDataLogHandler : public TagHandler<CommandId("HL"), Either, Immediate> {};
class ReadAfiHandler : public TagHandler<CommandId("RA")> {};
class ReadWriteRFIDHandler : public TagHandler<CommandId("RF")> {};
class GetRfidTidHandler : public TagHandler<CommandId("RI")> {};
class ReportRfidEncodingHandler : public TagHandler<CommandId("RV"), Control, Immediate> {};
class EncodeAfiByteHandler : public TagHandler<CommandId("WF")> {};

/// Tag commands that belong to no field: `^RB` layout of the tag, `^RL` lock, `^RS` set-up, `^RW` power, `^RZ`
/// password.
template <std::uint64_t Id>
class TagSetupHandler : public HandlerFor<Id> {
public:
    bool HandleCommand(Context&, ZplCommand const&, ContextProcessor&) override { return true; }
};

/// Keeps the sizes of the parts of a tag's number.
class DefineEpcHandler : public HandlerFor<CommandId("RB")> {
public:
    bool HandleCommand(Context&, ZplCommand const& command, ContextProcessor& processor) override {
        constexpr unsigned LargestPart = 64;  // bits
        std::vector<std::uint8_t> sizes;
        for (std::size_t i = 1; i < command.parameters.size(); ++i) {
            auto const bits = ZplParse<unsigned>(command, i);
            if (bits && *bits >= 1 && *bits <= LargestPart) sizes.push_back(static_cast<std::uint8_t>(*bits));
        }
        if (!sizes.empty()) processor.set(ContextProcessor::SystemContext, ZplContextKeys::EpcPartitionSizes, sizes);
        return true;
    }
};

class LockUnlockRfidHandler : public TagSetupHandler<CommandId("RL")> {};
class SetupRfidParametersHandler : public TagSetupHandler<CommandId("RS")> {};
class SetRfPowerHandler : public TagSetupHandler<CommandId("RW")> {};
class SetRfidPasswordHandler : public TagSetupHandler<CommandId("RZ")> {};

}  // namespace

void AddRfidHandlers(CommandHandlerPool& pool) {
    pool.AddToCache<ReadWriteRFIDHandler>();
    pool.AddToCache<LockUnlockRfidHandler>();
    pool.AddToCache<SetRfidPasswordHandler>();
    pool.AddToCache<ReturnRfidDataLogHandler>();
    pool.AddToCache<SetupRfidParametersHandler>();
    pool.AddToCache<EncodeAfiByteHandler>();
    pool.AddToCache<ReportRfidEncodingHandler>();
    pool.AddToCache<DefineEpcHandler>();
    pool.AddToCache<GetRfidTidHandler>();
    pool.AddToCache<ReadAfiHandler>();
    pool.AddToCache<SetRfPowerHandler>();
}
