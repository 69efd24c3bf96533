#pragma once

#include "frontend/handlers/CommandHandler.h"

class CommandHandlerPool;

/// `^FB`: breaks the text of this field into lines.
class FieldBlockHandler : public HandlerFor<CommandId("FB")> {
public:
    bool HandleCommand(Context& current, ZplCommand const& command, ContextProcessor& processor) override;
};

/// `^TB`: breaks the text of this field into the lines that fit a box.
class TextBlocksHandler : public HandlerFor<CommandId("TB")> {
public:
    bool HandleCommand(Context& current, ZplCommand const& command, ContextProcessor& processor) override;
};

void AddTextBlockHandlers(CommandHandlerPool& pool);
