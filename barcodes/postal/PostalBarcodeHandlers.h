#pragma once

#include "frontend/handlers/CommandHandler.h"

class CommandHandlerPool;

// Symbologies of postal services. h is the height, f whether the line is printed, g whether it stands above the bars.

/// `^B5`: PLANET. h, f, g.
class PlanetCodeBarcodeHandler : public HandlerFor<CommandId("B5")> {
public:
    bool HandleCommand(Context& current, ZplCommand const& command, ContextProcessor& processor) override;
};

/// `^BZ`: h, f, g, type: 0 POSTNET, 1 PLANET, 3 Intelligent Mail.
class PostalBarcodeHandler : public HandlerFor<CommandId("BZ")> {
public:
    bool HandleCommand(Context& current, ZplCommand const& command, ContextProcessor& processor) override;
};

void AddPostalBarcodeHandlers(CommandHandlerPool& pool);
