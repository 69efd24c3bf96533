#pragma once

#include <string>
#include <utility>

#include "propertybus/Property.h"

/// How a property of another component is registered with the emulation of that component.
enum class ExternalAppRegistration {
    Plain = 0,
    /// Each write is an event of its own, also one of the value that is there already.
    EveryWrite = 2,
};

/// A property that another component owns. What is set here is written to the bus, and what the bus says is told to the
/// callbacks; until the server has answered it has its default.
template <typename T>
class ExternalAppProperty : public T {
public:
    template <typename... Args>
    ExternalAppProperty(PropertyName name, std::string component, Args&&... args)
        : T(std::move(name), std::forward<Args>(args)...), component_(std::move(component)) {}

    std::string const& Component() const { return component_; }

private:
    std::string const component_;
};
