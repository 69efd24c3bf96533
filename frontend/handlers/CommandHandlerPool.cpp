#include "frontend/handlers/CommandHandlerPool.h"

CommandHandler* CommandHandlerPool::GetCommandHandler(std::uint64_t id) const {
    auto const found = handlers_.find(id);
    return found == handlers_.end() ? nullptr : found->second.get();
}
