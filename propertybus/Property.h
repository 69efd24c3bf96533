#pragma once

#include <cstddef>
#include <cstdint>
#include <deque>
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
///
/// On the bus a property has one value, which the property server holds. A write of this process counts here at once
/// and is on its way to the server until the server says that it is taken; values of other writers that arrive
/// meanwhile are older and are passed over. So all holders of a property end with the same value.
class Property : public std::enable_shared_from_this<Property> {
public:
    using Callback = std::function<void(std::shared_ptr<Property>)>;
    /// Carries a value of this process to the bus; must not call back into the property. False if there is no link.
    using Writer = std::function<bool(std::string const& value)>;

    explicit Property(PropertyName name) : name_(std::move(name)) {}
    virtual ~Property() = default;
    Property(Property const&) = delete;
    Property& operator=(Property const&) = delete;

    PropertyName const& Name() const { return name_; }
    void AddCallback(Callback callback);

    /// The value as it travels on the bus.
    std::string ValueText() const;
    /// Takes a value given as text; false, and nothing changed, if the text is none of the property's type.
    bool SetValueText(std::string const& text) { return Take(text, Origin::Process); }

    /// "string", "bool" or "uint32".
    virtual char const* Kind() const = 0;

    /// With it, a write of the value that is there already tells the callbacks and the bus too. What the bus says again
    /// counts only for the owner, who is told of writes and of nothing else.
    void SetEveryWriteCounts(bool isOwner) {
        std::lock_guard const lock(mutex_);
        everyWriteCounts_ = true;
        everyDeliveryCounts_ = isOwner;
    }
    bool EveryWriteCounts() const {
        std::lock_guard const lock(mutex_);
        return everyWriteCounts_;
    }
    void ConnectWriter(Writer writer);
    /// With it, each delivery from the bus is an event, also one of the value that is there; but not what only answers
    /// a subscription.
    void SetEveryDeliveryCounts() {
        std::lock_guard const lock(mutex_);
        everyDeliveryCounts_ = true;
    }
    /// Takes a value that the server sent.
    bool TakeFromBus(std::string const& text, bool answersSubscription = false) {
        return Take(text, answersSubscription ? Origin::BusAnswer : Origin::Bus);
    }
    /// The server has taken one write of this process.
    void NoteTaken();
    /// Whether the server has taken all writes of this process.
    bool IsTaken() const;
    /// Is called when that becomes so, on the thread of the bus.
    void SetTakenCallback(std::function<void()> callback);
    /// The place of this process's last write of the property among its writes of all properties; 0 for none.
    std::uint64_t LastWrite() const;
    /// A new link, counted from 1: what is written waits for Resend.
    void HoldWrites(unsigned link);
    /// Sends again what may be lost: the value, or each write if every one counts. Nothing if what is written waits for
    /// another link.
    void Resend(unsigned link);
    /// While it is held, this process writes no property.
    static std::unique_lock<std::mutex> TakeTurn();
    /// What a new link publishes: the value, but the one before what Resend sends if every write counts.
    std::string TextToPublish() const;

protected:
    enum class Origin { Process, Bus, BusAnswer };

    virtual bool Take(std::string const& text, Origin origin) = 0;
    /// ValueText, to be called under the lock.
    virtual std::string HeldText() const = 0;
    /// To be called under the lock before a value is stored; says whether it is stored, and tells the bus.
    bool Admit(bool differs, Origin origin, std::string const& text);
    void NotifyChanged();

    mutable std::mutex mutex_;

private:
    void NoteWrite(std::string const& text);
    void DropRepeat();

    PropertyName const name_;
    std::vector<Callback> callbacks_;
    Writer writer_;
    std::function<void()> onTaken_;
    std::size_t writesUnderWay_ = 0;
    std::deque<std::string> repeats_;  // what Resend sends of them
    std::string textBeforeRepeats_;    // if every write counts
    unsigned heldFor_ = 0;             // the link that writes wait for; 0 for none
    std::uint64_t lastWrite_ = 0;
    bool everyWriteCounts_ = false;
    bool everyDeliveryCounts_ = false;
};

std::string PropertyText(std::string const& value);
std::string PropertyText(bool value);
std::string PropertyText(std::uint32_t value);

/// A property of one type. Set tells the callbacks only when the value changes.
template <typename T>
class TypedProperty : public Property {
public:
    TypedProperty(PropertyName name, T value) : Property(std::move(name)), value_(std::move(value)) {}

    T Get() const {
        std::lock_guard const lock(mutex_);
        return value_;
    }

    void Set(T value) { Store(std::move(value), Origin::Process); }

protected:
    std::string HeldText() const override { return PropertyText(value_); }

    void Store(T value, Origin origin) {
        {
            auto const turn = origin == Origin::Process ? TakeTurn() : std::unique_lock<std::mutex>();
            std::lock_guard const lock(mutex_);
            if (!Admit(value_ != value, origin, PropertyText(value))) return;
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
    char const* Kind() const override { return "string"; }

protected:
    bool Take(std::string const& text, Origin origin) override;
};

/// Text "true" or "false" on the bus.
class BoolProperty : public TypedProperty<bool> {
public:
    using TypedProperty::TypedProperty;
    char const* Kind() const override { return "bool"; }

protected:
    bool Take(std::string const& text, Origin origin) override;
};

/// Decimal text on the bus. A value outside the limits is brought to the nearer one.
class UInt32Property : public TypedProperty<std::uint32_t> {
public:
    UInt32Property(PropertyName name, std::uint32_t value, std::uint32_t low = 0,
                   std::uint32_t high = std::numeric_limits<std::uint32_t>::max())
        : TypedProperty(std::move(name), value), low_(low), high_(high) {}

    void Set(std::uint32_t value);
    char const* Kind() const override { return "uint32"; }

protected:
    bool Take(std::string const& text, Origin origin) override;

private:
    std::uint32_t const low_;
    std::uint32_t const high_;
};

/// "true" or "false".
std::string TarvoBoolToString(bool value);
