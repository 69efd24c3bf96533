#pragma once

#include <algorithm>
#include <cstdint>
#include <memory>
#include <string>
#include <typeinfo>
#include <utility>
#include <vector>

#include "frontend/context/ContextKey.h"

/// A named store of typed values. Copying copies every value.
class Context {
public:
    class ContextValue {
    public:
        virtual ~ContextValue() = default;
        virtual std::unique_ptr<ContextValue> Clone() const = 0;
        virtual std::type_info const& GetType() const = 0;
    };

    template <typename T>
    class ConcreteContextValue : public ContextValue {
    public:
        explicit ConcreteContextValue(T initial) : value(std::move(initial)) {}
        std::unique_ptr<ContextValue> Clone() const override { return std::make_unique<ConcreteContextValue>(value); }
        std::type_info const& GetType() const override { return typeid(T); }

        T value;
    };

    /// Owns one value; a copy owns a clone.
    class ContextValueWrapper {
    public:
        ContextValueWrapper() = default;
        explicit ContextValueWrapper(std::unique_ptr<ContextValue> value) : value_(std::move(value)) {}
        ContextValueWrapper(ContextValueWrapper const& other)
            : value_(other.value_ ? other.value_->Clone() : nullptr) {}
        ContextValueWrapper(ContextValueWrapper&&) noexcept = default;
        ContextValueWrapper& operator=(ContextValueWrapper const& other) {
            if (this != &other) value_ = other.value_ ? other.value_->Clone() : nullptr;
            return *this;
        }
        ContextValueWrapper& operator=(ContextValueWrapper&&) noexcept = default;

        /// The value if it is a T, otherwise null.
        template <typename T>
        T* As() const {
            if (!value_ || value_->GetType() != typeid(T)) return nullptr;
            return &static_cast<ConcreteContextValue<T>*>(value_.get())->value;
        }

    private:
        std::unique_ptr<ContextValue> value_;
    };

    Context() = default;
    explicit Context(std::string name) : name_(std::move(name)) {}

    std::string const& GetContextName() const { return name_; }

    /// The value, made from the key's default if there is none of this type.
    template <typename T>
    T& operator[](ContextKey<T> const& key) {
        auto& entry = EntryOf(key.id);
        if (T* held = entry.template As<T>()) return *held;
        entry = ContextValueWrapper(std::make_unique<ConcreteContextValue<T>>(key.defaultValue));
        return *entry.template As<T>();
    }

    /// The value, or null if there is none of this type.
    template <typename T>
    T const* Find(ContextKey<T> const& key) const {
        if (IsSurelyWithout(key.id)) return nullptr;
        std::size_t const place = PlaceOf(key.id);
        return IsAt(place, key.id) ? values_[place].value.template As<T>() : nullptr;
    }

    template <typename T>
    bool HasValue(ContextKey<T> const& key) const {
        return Find(key) != nullptr;
    }

    template <typename T>
    void Set(ContextKey<T> const& key, T value) {
        auto& entry = EntryOf(key.id);
        if (T* held = entry.template As<T>()) {
            *held = std::move(value);
        } else {
            entry = ContextValueWrapper(std::make_unique<ConcreteContextValue<T>>(std::move(value)));
        }
    }

    void Erase(std::uint64_t keyId) {
        if (IsSurelyWithout(keyId)) return;
        std::size_t const place = PlaceOf(keyId);
        if (IsAt(place, keyId)) values_.erase(values_.begin() + static_cast<std::ptrdiff_t>(place));
    }
    void Clear() {
        values_.clear();
        everHeld_ = 0;
    }
    bool IsEmpty() const { return values_.empty(); }
    std::size_t Count() const { return values_.size(); }

private:
    struct Entry {
        std::uint64_t id;
        ContextValueWrapper value;
    };

    static std::uint64_t BitOf(std::uint64_t keyId) { return std::uint64_t{1} << keyId % 64; }
    /// Most looks for a value go through contexts that have never had it.
    bool IsSurelyWithout(std::uint64_t keyId) const { return (everHeld_ & BitOf(keyId)) == 0; }

    /// Where the entry of a key is, or belongs.
    std::size_t PlaceOf(std::uint64_t keyId) const {
        auto const place = std::lower_bound(values_.begin(), values_.end(), keyId,
                                            [](Entry const& entry, std::uint64_t id) { return entry.id < id; });
        return static_cast<std::size_t>(place - values_.begin());
    }
    bool IsAt(std::size_t place, std::uint64_t keyId) const {
        return place < values_.size() && values_[place].id == keyId;
    }

    ContextValueWrapper& EntryOf(std::uint64_t keyId) {
        std::size_t const place = PlaceOf(keyId);
        everHeld_ |= BitOf(keyId);
        if (!IsAt(place, keyId)) values_.insert(values_.begin() + static_cast<std::ptrdiff_t>(place), Entry{keyId, {}});
        return values_[place].value;
    }

    std::string name_;
    /// By key. Few values are set and many are looked for, so they lie side by side; a value itself never moves.
    std::vector<Entry> values_;
    std::uint64_t everHeld_ = 0;  ///< bits of the keys that there were since the context was last empty
};
