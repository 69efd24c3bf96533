#pragma once

#include "frontend/handlers/CommandHandler.h"

class CommandHandlerPool;

// Symbologies of one row of bars. h is the height, f whether the interpretation line is printed, g whether it stands
// above the bars, e a check digit.

/// `^B1`: Code 11. Y for one check digit or N for two, h, f, g.
class Code11BarcodeHandler : public HandlerFor<CommandId("B1")> {
public:
    bool HandleCommand(Context& current, ZplCommand const& command, ContextProcessor& processor) override;
};

/// `^B2`: Interleaved 2 of 5. h, f, g, e.
class Interleaved2of5BarcodeHandler : public HandlerFor<CommandId("B2")> {
public:
    bool HandleCommand(Context& current, ZplCommand const& command, ContextProcessor& processor) override;
};

/// `^B3`: Code 39. e, h, f, g.
class Code39BarcodeHandler : public HandlerFor<CommandId("B3")> {
public:
    bool HandleCommand(Context& current, ZplCommand const& command, ContextProcessor& processor) override;
};

/// `^BA`: Code 93. h, f, g, whether the check digits are printed.
class Code93BarcodeHandler : public HandlerFor<CommandId("BA")> {
public:
    bool HandleCommand(Context& current, ZplCommand const& command, ContextProcessor& processor) override;
};

/// `^BI`: Industrial 2 of 5. h, f, g.
class Industrial2of5BarcodeHandler : public HandlerFor<CommandId("BI")> {
public:
    bool HandleCommand(Context& current, ZplCommand const& command, ContextProcessor& processor) override;
};

/// `^BJ`: Standard 2 of 5. h, f, g.
class Standard2of5BarcodeHandler : public HandlerFor<CommandId("BJ")> {
public:
    bool HandleCommand(Context& current, ZplCommand const& command, ContextProcessor& processor) override;
};

/// `^BK`: Codabar. A check digit that is never made, h, f, g, start letter, stop letter.
class AnsiCodabarBarcodeHandler : public HandlerFor<CommandId("BK")> {
public:
    bool HandleCommand(Context& current, ZplCommand const& command, ContextProcessor& processor) override;
};

/// `^BL`: LOGMARS, a Code 39 that always has its check digit. h, g.
class LogmarsBarcodeHandler : public HandlerFor<CommandId("BL")> {
public:
    bool HandleCommand(Context& current, ZplCommand const& command, ContextProcessor& processor) override;
};

/// `^BM`: MSI. Check digits A to D, h, f, g, whether the check digits are printed.
class MsiBarcodeHandler : public HandlerFor<CommandId("BM")> {
public:
    bool HandleCommand(Context& current, ZplCommand const& command, ContextProcessor& processor) override;
};

/// `^BP`: Plessey. Whether the check digits are printed, h, f, g.
class PlesseyBarcodeHandler : public HandlerFor<CommandId("BP")> {
public:
    bool HandleCommand(Context& current, ZplCommand const& command, ContextProcessor& processor) override;
};

void AddLinearBarcodeHandlers(CommandHandlerPool& pool);
