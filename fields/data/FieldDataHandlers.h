#pragma once

#include "frontend/handlers/CommandHandler.h"

class CommandHandlerPool;

/// `^FC`: the characters that announce clock codes in the data of this field.
class FieldClockHandler : public HandlerFor<CommandId("FC")> {
public:
    bool HandleCommand(Context& current, ZplCommand const& command, ContextProcessor& processor) override;
};

/// `^FD`: the data of the field.
class FieldDataHandler : public HandlerFor<CommandId("FD")> {
public:
    bool HandleCommand(Context& current, ZplCommand const& command, ContextProcessor& processor) override;
};

/// `^FH`: the character that announces two hexadecimal digits in the data of this field.
class FieldHexadecimalIndicatorHandler : public HandlerFor<CommandId("FH")> {
public:
    bool HandleCommand(Context& current, ZplCommand const& command, ContextProcessor& processor) override;
};

/// `^FN`: a field that is kept as a template under a number, or filled with data if there is a template of that number.
class FieldNumberHandler : public HandlerFor<CommandId("FN")> {
public:
    bool HandleCommand(Context& current, ZplCommand const& command, ContextProcessor& processor) override;
};

/// `^FS`: the end of a field.
class FieldSeparatorHandler : public HandlerFor<CommandId("FS")> {
public:
    bool HandleCommand(Context& current, ZplCommand const& command, ContextProcessor& processor) override;
};

/// `^FV`: the data of a field in the variable part of the label.
class FieldVariableHandler : public HandlerFor<CommandId("FV")> {
public:
    bool HandleCommand(Context& current, ZplCommand const& command, ContextProcessor& processor) override;
};

/// `^FX`: a comment.
class FieldCommentHandler : public HandlerFor<CommandId("FX")> {
public:
    bool HandleCommand(Context&, ZplCommand const&, ContextProcessor&) override { return true; }
};

/// `^SF`: the mask and the step by which the data of the field counts.
class SerializationFieldHandler : public HandlerFor<CommandId("SF")> {
public:
    bool HandleCommand(Context& current, ZplCommand const& command, ContextProcessor& processor) override;
};

/// `^SN`: data that counts, from a start value.
class SerializationDataHandler : public HandlerFor<CommandId("SN")> {
public:
    bool HandleCommand(Context& current, ZplCommand const& command, ContextProcessor& processor) override;
};

void AddFieldDataHandlers(CommandHandlerPool& pool);
