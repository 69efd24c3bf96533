#pragma once

#include "frontend/handlers/CommandHandler.h"

class CommandHandlerPool;

/// `^A` with a font letter right behind it: font, orientation and size of this field. One handler for each letter.
class FontHandler : public CommandHandler {
public:
    explicit FontHandler(char letter) : letter_(letter) {}
    std::uint64_t GetCommandId() const override { return CommandId("A") << 8 | static_cast<std::uint8_t>(letter_); }
    bool HandleCommand(Context& current, ZplCommand const& command, ContextProcessor& processor) override;

private:
    char letter_;
};

/// `^A@`: as `^A`, with a font by its object name; without one, the font that was named last.
class UserFontHandler : public HandlerFor<CommandId("A@")> {
public:
    bool HandleCommand(Context& current, ZplCommand const& command, ContextProcessor& processor) override;
};

/// `^CF`: font and size of all fields that name none themselves.
class ChangeDefaultFontHandler : public HandlerFor<CommandId("CF")> {
public:
    bool HandleCommand(Context& current, ZplCommand const& command, ContextProcessor& processor) override;
};

/// `^CW`: puts a font by its object name behind a font letter.
class FontIdentifierHandler : public HandlerFor<CommandId("CW")> {
public:
    bool HandleCommand(Context& current, ZplCommand const& command, ContextProcessor& processor) override;
};

void AddFontHandlers(CommandHandlerPool& pool);
