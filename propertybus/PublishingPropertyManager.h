#pragma once

#include <map>
#include <memory>
#include <mutex>
#include <string>
#include <utility>

#include "propertybus/TypedProperties.h"

/// Creates the properties of a process and finds them again by name. Any thread may use it.
class PublishingPropertyManager {
public:
    /// The property of that name, made from the arguments of P's constructor if there is none yet. Throws
    /// std::logic_error if there is one of another type.
    template <typename P, typename... Arguments>
    std::shared_ptr<P> Create(std::string const& name, std::string groupId, std::string componentId,
                              Arguments&&... arguments) {
        auto made = std::make_shared<P>(name, std::move(groupId), std::move(componentId),
                                        std::forward<Arguments>(arguments)...);
        auto held = std::dynamic_pointer_cast<P>(Publish(std::move(made)));
        if (!held) ThrowOtherType(name);
        return held;
    }

    /// The property of that name, or null if there is none of type P.
    template <typename P = Property>
    std::shared_ptr<P> Find(std::string const& name) const {
        return std::dynamic_pointer_cast<P>(FindAny(name));
    }

private:
    /// Keeps `property` unless there is one of its name; gives the one kept.
    std::shared_ptr<Property> Publish(std::shared_ptr<Property> property);
    std::shared_ptr<Property> FindAny(std::string const& name) const;
    [[noreturn]] static void ThrowOtherType(std::string const& name);

    mutable std::mutex mutex_;
    std::map<std::string, std::shared_ptr<Property>> properties_;
};
