#include "propertybus/Property.h"

#include <utility>

Property::Property(std::string name, std::string groupId, std::string componentId)
    : name_(std::move(name)), groupId_(std::move(groupId)), componentId_(std::move(componentId)) {}

void Property::AddCallback(Callback callback) {
    std::lock_guard const lock(mutex_);
    callbacks_.push_back(std::move(callback));
}

void Property::NotifyChanged() {
    std::vector<Callback> callbacks;
    {
        std::lock_guard const lock(mutex_);
        callbacks = callbacks_;
    }
    for (auto const& callback : callbacks) callback(shared_from_this());
}
