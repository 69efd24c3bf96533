#pragma once

#include "frontend/handlers/CommandHandler.h"

class CommandHandlerPool;

/// `^FO`: the origin is the top corner of the field.
class FieldOriginHandler : public HandlerFor<CommandId("FO")> {
public:
    bool HandleCommand(Context& current, ZplCommand const& command, ContextProcessor& processor) override;
};

/// `^FP`: direction of the text, and the space between its characters in dots.
class FieldParameterHandler : public HandlerFor<CommandId("FP")> {
public:
    bool HandleCommand(Context& current, ZplCommand const& command, ContextProcessor& processor) override;
};

/// `^FR`: this field is exclusive-ored with what lies beneath.
class FieldReversePrintHandler : public HandlerFor<CommandId("FR")> {
public:
    bool HandleCommand(Context& current, ZplCommand const& command, ContextProcessor& processor) override;
};

/// `^FT`: the origin lies on the base of the field; what is left out continues where the last field ended.
class FieldTypesetHandler : public HandlerFor<CommandId("FT")> {
public:
    bool HandleCommand(Context& current, ZplCommand const& command, ContextProcessor& processor) override;
};

/// `^FW`: orientation and justification of this field and of all that name none themselves.
class FieldOrientationHandler : public HandlerFor<CommandId("FW")> {
public:
    bool HandleCommand(Context& current, ZplCommand const& command, ContextProcessor& processor) override;
};

void AddFieldOriginHandlers(CommandHandlerPool& pool);
