#pragma once

#include "frontend/handlers/CommandHandler.h"

class CommandHandlerPool;

/// `^GF`: a picture in the stream.
class GraphicFieldHandler : public HandlerFor<CommandId("GF")> {
public:
    bool HandleCommand(Context& current, ZplCommand const& command, ContextProcessor& processor) override;
};
