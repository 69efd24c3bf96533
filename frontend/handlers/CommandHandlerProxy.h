#pragma once

#include "frontend/handlers/CommandHandler.h"

/// A second id for a handler.
template <std::uint64_t Id>
class CommandHandlerProxy : public CommandHandler {
public:
    explicit CommandHandlerProxy(CommandHandler* target) : target_(target) {}

    std::uint64_t GetCommandId() const override { return Id; }
    bool HandleCommand(Context& current, ZplCommand const& command, ContextProcessor& processor) override {
        return target_->HandleCommand(current, command, processor);
    }

private:
    CommandHandler* target_;
};
