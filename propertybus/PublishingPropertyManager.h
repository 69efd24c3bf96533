#pragma once

#include <map>
#include <memory>
#include <mutex>
#include <stdexcept>
#include <string>

#include "propertybus/Property.h"

/// Owns the properties of this process. Embedded: nothing is published to a server.
class PublishingPropertyManager {
public:
    /// Makes the property, or gives the one that has this identifier already. T is a property class; std::logic_error if the
    /// existing one is of another.
    template <typename T, typename... Args>
    std::shared_ptr<T> Create(PropertyName name, Args&&... args) {
        std::lock_guard const lock(mutex_);
        auto& entry = properties_[name.identifier];
        if (entry) {
            auto existing = std::dynamic_pointer_cast<T>(entry);
            if (!existing) throw std::logic_error("property " + name.identifier + " exists with another type");
            return existing;
        }
        auto made = std::make_shared<T>(std::move(name), std::forward<Args>(args)...);
        entry = made;
        return made;
    }

    /// Null if there is no property of that identifier.
    std::shared_ptr<Property> Find(std::string const& identifier) const;

private:
    mutable std::mutex mutex_;
    std::map<std::string, std::shared_ptr<Property>> properties_;
};
