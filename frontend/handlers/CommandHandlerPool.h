#pragma once

#include <cstdint>
#include <map>
#include <memory>
#include <string_view>

#include "frontend/handlers/CommandHandler.h"
#include "frontend/handlers/CommandHandlerProxy.h"

/// Commands of the language, each once, under its id. Built once, by `CreateHandlers` with all of them; not changed
/// afterwards.
class CommandHandlerPool {
public:
    /// Null if there is no such command.
    CommandHandler* GetCommandHandler(std::uint64_t id) const;
    CommandHandler* GetCommandHandler(std::string_view letters) const { return GetCommandHandler(CommandId(letters)); }

    /// Adds a handler; an id already present keeps its first.
    template <typename T, typename... Args>
    CommandHandler& AddToCache(Args&&... args) {
        auto handler = std::make_unique<T>(std::forward<Args>(args)...);
        auto const id = handler->GetCommandId();
        return *handlers_.try_emplace(id, std::move(handler)).first->second;
    }

    /// Adds a handler and a second id for it.
    template <typename T, std::uint64_t Id>
    void AddProxyToCache() {
        AddToCache<CommandHandlerProxy<Id>>(&AddToCache<T>());
    }

    auto begin() const { return handlers_.begin(); }
    auto end() const { return handlers_.end(); }

private:
    std::map<std::uint64_t, std::unique_ptr<CommandHandler>> handlers_;
};
