#pragma once

#include <algorithm>
#include <cstdint>
#include <limits>
#include <string>
#include <utility>

#include "propertybus/Property.h"

/// A property with a value of type T.
template <typename T>
class TypedProperty : public Property {
public:
    using Value = T;

    TypedProperty(std::string name, std::string groupId, std::string componentId, T initial = {})
        : Property(std::move(name), std::move(groupId), std::move(componentId)), value_(std::move(initial)) {}

    T Get() const {
        std::lock_guard const lock(mutex_);
        return value_;
    }

    /// Callbacks run only if the value changes.
    void Set(T value) {
        value = Admit(std::move(value));
        {
            std::lock_guard const lock(mutex_);
            if (value_ == value) return;
            value_ = std::move(value);
        }
        NotifyChanged();
    }

private:
    /// The value to keep for one that is set.
    virtual T Admit(T value) const { return value; }

    T value_;
};

class StringProperty : public TypedProperty<std::string> {
public:
    using TypedProperty::TypedProperty;
};

class BoolProperty : public TypedProperty<bool> {
public:
    using TypedProperty::TypedProperty;
};

/// A number within limits, by default all 32 bits: a value beyond a limit becomes the limit.
class UInt32Property : public TypedProperty<std::uint32_t> {
public:
    UInt32Property(std::string name, std::string groupId, std::string componentId, std::uint32_t initial = 0,
                   std::uint32_t lowest = 0, std::uint32_t highest = std::numeric_limits<std::uint32_t>::max())
        : TypedProperty(std::move(name), std::move(groupId), std::move(componentId),
                        std::clamp(initial, lowest, highest)),
          lowest_(lowest),
          highest_(highest) {}

private:
    std::uint32_t Admit(std::uint32_t value) const override { return std::clamp(value, lowest_, highest_); }

    std::uint32_t const lowest_;
    std::uint32_t const highest_;
};
