#pragma once

#include <algorithm>
#include <cstdint>
#include <memory>
#include <string_view>
#include <utility>
#include <vector>

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
        auto const place = PlaceOf(id);
        if (place != handlers_.end() && place->first == id) return *place->second;
        return *handlers_.emplace(place, id, std::move(handler))->second;
    }

    /// Adds a handler and a second id for it.
    template <typename T, std::uint64_t Id>
    void AddProxyToCache() {
        AddToCache<CommandHandlerProxy<Id>>(&AddToCache<T>());
    }

    auto begin() const { return handlers_.begin(); }
    auto end() const { return handlers_.end(); }

private:
    using Handlers = std::vector<std::pair<std::uint64_t, std::unique_ptr<CommandHandler>>>;

    Handlers::const_iterator PlaceOf(std::uint64_t id) const {
        return std::lower_bound(handlers_.begin(), handlers_.end(), id,
                                [](auto const& entry, std::uint64_t wanted) { return entry.first < wanted; });
    }

    Handlers handlers_;  ///< by id, side by side, as each command is looked for several times
};
