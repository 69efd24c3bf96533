#include "propertybus/PublishingPropertyManager.h"

std::shared_ptr<Property> PublishingPropertyManager::Find(std::string const& identifier) const {
    std::lock_guard const lock(mutex_);
    auto const found = properties_.find(identifier);
    return found == properties_.end() ? nullptr : found->second;
}
