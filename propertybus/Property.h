#pragma once

#include <cstdint>
#include <functional>
#include <limits>
#include <memory>
#include <mutex>
#include <string>
#include <utility>
#include <vector>

/// What a property is called on the bus. Identifiers are GUID text.
struct PropertyName {
    std::string identifier;
    std::string label;  ///< for people
    std::string group;

    friend bool operator==(PropertyName const&, PropertyName const&) = default;
};

/// A named value with callbacks for its changes. Made and shared by a property manager. Any thread may read, write and
/// add callbacks; callbacks run on the thread that writes, after the lock is released.
class Property : public std::enable_shared_from_this<Property> {
public:
    using Callback = std::function<void(std::shared_ptr<Property>)>;

    explicit Property(PropertyName name) : name_(std::move(name)) {}
    virtual ~Property() = default;
    Property(Property const&) = delete;
    Property& operator=(Property const&) = delete;

    PropertyName const& Name() const { return name_; }
    void AddCallback(Callback callback);

    /// The value as it travels on the bus.
    virtual std::string ValueText() const = 0;
    /// Takes a value from the bus; false, and nothing changed, if the text is none of the property's type.
    virtual bool SetValueText(std::string const& text) = 0;

protected:
    void NotifyChanged();

    mutable std::mutex mutex_;

private:
    PropertyName const name_;
    std::vector<Callback> callbacks_;
};

/// A property of one type. Set tells the callbacks only when the value changes.
template <typename T>
class TypedProperty : public Property {
public:
    TypedProperty(PropertyName name, T value) : Property(std::move(name)), value_(std::move(value)) {}

    T Get() const {
        std::lock_guard const lock(mutex_);
        return value_;
    }

    void Set(T value) {
        {
            std::lock_guard const lock(mutex_);
            if (value_ == value) return;
            value_ = std::move(value);
        }
        NotifyChanged();
    }

private:
    T value_;
};

class StringProperty : public TypedProperty<std::string> {
public:
    using TypedProperty::TypedProperty;
    std::string ValueText() const override { return Get(); }
    bool SetValueText(std::string const& text) override;
};

/// Text "true" or "false" on the bus.
class BoolProperty : public TypedProperty<bool> {
public:
    using TypedProperty::TypedProperty;
    std::string ValueText() const override;
    bool SetValueText(std::string const& text) override;
};

/// Decimal text on the bus. A value outside the limits is brought to the nearer one.
class UInt32Property : public TypedProperty<std::uint32_t> {
public:
    UInt32Property(PropertyName name, std::uint32_t value, std::uint32_t low = 0,
                   std::uint32_t high = std::numeric_limits<std::uint32_t>::max())
        : TypedProperty(std::move(name), value), low_(low), high_(high) {}

    void Set(std::uint32_t value);
    std::string ValueText() const override;
    bool SetValueText(std::string const& text) override;

private:
    std::uint32_t const low_;
    std::uint32_t const high_;
};

/// "true" or "false".
std::string TarvoBoolToString(bool value);
