#include "frontend/handlers/CommandHandlerPool.h"

CommandHandler* CommandHandlerPool::GetCommandHandler(std::uint64_t id) const {
    auto const found = PlaceOf(id);
    return found == handlers_.end() || found->first != id ? nullptr : found->second.get();
}
