#include "frontend/handlers/CommandHandlerPool.h"
#include "labels/LabelHandlers.h"

namespace {

using enum SyntacticType;
using enum ProcessingType;

/// Questions of the host and the printer's own labels: `~HS` status, `^HV` verification of fields, `~WC` and `~WL`
/// configuration labels. They are taken in and have no answer yet.
template <std::uint64_t Id, SyntacticType Syntax, ProcessingType Processing>
class UnansweredHostHandler : public HandlerFor<Id, Syntax, Processing> {
public:
    bool HandleCommand(Context&, ZplCommand const&, ContextProcessor&) override { return true; }
};

class HostStatusHandler : public UnansweredHostHandler<CommandId("HS"), Control, Immediate> {};
class HostVerificationHandler : public UnansweredHostHandler<CommandId("HV"), Format, Deferred> {};
class PrintConfigurationLabelHandler : public UnansweredHostHandler<CommandId("WC"), Control, Immediate> {};
class PrintNetworkConfigurationHandler : public UnansweredHostHandler<CommandId("WL"), Control, Immediate> {};

}  // namespace

void AddHostHandlers(CommandHandlerPool& pool) {
    pool.AddToCache<HostStatusHandler>();
    pool.AddToCache<HostVerificationHandler>();
    pool.AddToCache<PrintConfigurationLabelHandler>();
    pool.AddToCache<PrintNetworkConfigurationHandler>();
}
