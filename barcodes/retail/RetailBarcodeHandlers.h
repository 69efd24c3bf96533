#pragma once

#include "frontend/handlers/CommandHandler.h"

class CommandHandlerPool;

// EAN and UPC symbols, and what goes with them at the till. h is the height of the bars above the notches, f whether
// the digits are printed, g whether they stand above the bars, e whether the check digit is among them.

/// `^B8`: EAN-8. h, f, g.
class Ean8BarcodeHandler : public HandlerFor<CommandId("B8")> {
public:
    bool HandleCommand(Context& current, ZplCommand const& command, ContextProcessor& processor) override;
};

/// `^B9`: UPC-E. h, f, g, e.
class UpcEBarcodeHandler : public HandlerFor<CommandId("B9")> {
public:
    bool HandleCommand(Context& current, ZplCommand const& command, ContextProcessor& processor) override;
};

/// `^BE`: EAN-13. h, f, g.
class Ean13BarcodeHandler : public HandlerFor<CommandId("BE")> {
public:
    bool HandleCommand(Context& current, ZplCommand const& command, ContextProcessor& processor) override;
};

/// `^BS`: the supplements of two and of five digits. h, f, g, both flags on unless switched off.
class UpcEanExtensionsBarcodeHandler : public HandlerFor<CommandId("BS")> {
public:
    bool HandleCommand(Context& current, ZplCommand const& command, ContextProcessor& processor) override;
};

/// `^BU`: UPC-A. h, f, g, e.
class UpcABarcodeHandler : public HandlerFor<CommandId("BU")> {
public:
    bool HandleCommand(Context& current, ZplCommand const& command, ContextProcessor& processor) override;
};

void AddRetailBarcodeHandlers(CommandHandlerPool& pool);
