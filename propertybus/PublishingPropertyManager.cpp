#include "propertybus/PublishingPropertyManager.h"

#include <stdexcept>

std::shared_ptr<Property> PublishingPropertyManager::Publish(std::shared_ptr<Property> property) {
    std::lock_guard const lock(mutex_);
    return properties_.try_emplace(property->Name(), property).first->second;
}

std::shared_ptr<Property> PublishingPropertyManager::FindAny(std::string const& name) const {
    std::lock_guard const lock(mutex_);
    auto const found = properties_.find(name);
    return found == properties_.end() ? nullptr : found->second;
}

void PublishingPropertyManager::ThrowOtherType(std::string const& name) {
    throw std::logic_error("property " + name + " exists with another type");
}
