#pragma once

#include "frontend/handlers/CommandHandler.h"

class CommandHandlerPool;

/// `^GB`: a box whose border grows inwards, or a line.
class GraphicBoxHandler : public HandlerFor<CommandId("GB")> {
public:
    bool HandleCommand(Context& current, ZplCommand const& command, ContextProcessor& processor) override;
};

/// `^GC`: a circle.
class GraphicCircleHandler : public HandlerFor<CommandId("GC")> {
public:
    bool HandleCommand(Context& current, ZplCommand const& command, ContextProcessor& processor) override;
};

/// `^GD`: a line between two corners of a box.
class GraphicDiagonalLineHandler : public HandlerFor<CommandId("GD")> {
public:
    bool HandleCommand(Context& current, ZplCommand const& command, ContextProcessor& processor) override;
};

/// `^GE`: an ellipse.
class GraphicEllipseHandler : public HandlerFor<CommandId("GE")> {
public:
    bool HandleCommand(Context& current, ZplCommand const& command, ContextProcessor& processor) override;
};

/// `^GS`: registered, copyright, trade and approval marks, one for each letter of the data.
class GraphicSymbolHandler : public HandlerFor<CommandId("GS")> {
public:
    bool HandleCommand(Context& current, ZplCommand const& command, ContextProcessor& processor) override;
};

/// With the picture handlers of GraphicFieldHandler.h.
void AddGraphicHandlers(CommandHandlerPool& pool);
