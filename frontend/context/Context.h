#pragma once

#include <algorithm>
#include <array>
#include <cstddef>
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
    /// One value of some type.
    class ContextValue {
    public:
        virtual ~ContextValue() = default;
        virtual std::unique_ptr<ContextValue> Clone() const = 0;
        virtual std::type_info const& GetType() const = 0;
        /// Gives up what it holds, with its memory.
        virtual void Reset() = 0;
    };

    template <typename T>
    class ConcreteContextValue : public ContextValue {
    public:
        explicit ConcreteContextValue(T initial) : value(std::move(initial)) {}
        std::unique_ptr<ContextValue> Clone() const override { return std::make_unique<ConcreteContextValue>(value); }
        std::type_info const& GetType() const override { return typeid(T); }
        void Reset() override {
            // A string that is assigned an empty one keeps its memory.
            T fresh{};
            std::swap(value, fresh);
        }

        T value;
    };

    /// Owns one value, or has none; a copy owns a clone. Field after field sets the same keys, so the place of a value
    /// that is taken away waits for the next.
    class ContextValueWrapper {
    public:
        ContextValueWrapper() = default;
        ContextValueWrapper(ContextValueWrapper const& other)
            : value_(other.isSet_ ? other.value_->Clone() : nullptr), isSet_(other.isSet_) {}
        ContextValueWrapper(ContextValueWrapper&& other) noexcept
            : value_(std::move(other.value_)), isSet_(std::exchange(other.isSet_, false)) {}
        ContextValueWrapper& operator=(ContextValueWrapper const& other) { return *this = ContextValueWrapper(other); }
        ContextValueWrapper& operator=(ContextValueWrapper&& other) noexcept {
            value_ = std::move(other.value_);
            isSet_ = std::exchange(other.isSet_, false);
            return *this;
        }
        ~ContextValueWrapper() = default;

        bool IsSet() const { return isSet_; }
        /// The value if it is of that type, otherwise null.
        ContextValue* OfType(std::type_info const& type) const {
            return isSet_ && value_->GetType() == type ? value_.get() : nullptr;
        }
        template <typename T>
        T* As() const {
            auto* const value = OfType(typeid(T));
            return value ? &static_cast<ConcreteContextValue<T>*>(value)->value : nullptr;
        }
        template <typename T>
        T& Set(T value) {
            if (value_ && value_->GetType() == typeid(T)) {
                static_cast<ConcreteContextValue<T>&>(*value_).value = std::move(value);
            } else {
                value_ = std::make_unique<ConcreteContextValue<T>>(std::move(value));
            }
            isSet_ = true;
            return static_cast<ConcreteContextValue<T>&>(*value_).value;
        }
        void Unset() {
            if (std::exchange(isSet_, false)) value_->Reset();
        }

    private:
        std::unique_ptr<ContextValue> value_;
        bool isSet_ = false;
    };

    Context() = default;
    explicit Context(std::string name) : name_(std::move(name)) {}
    Context(Context const& other) : name_(other.name_) {
        values_.reserve(other.Count());
        for (Entry const& entry : other.values_) {
            if (entry.value.IsSet()) Add(entry);
        }
    }
    Context(Context&& other) noexcept
        : name_(std::move(other.name_)), values_(std::move(other.values_)), places_(std::exchange(other.places_, {})) {}
    Context& operator=(Context const& other) { return *this = Context(other); }
    Context& operator=(Context&& other) noexcept {
        name_ = std::move(other.name_);
        values_ = std::move(other.values_);
        places_ = std::exchange(other.places_, {});
        return *this;
    }
    ~Context() = default;

    std::string const& GetContextName() const { return name_; }

    /// The value, made from the key's default if there is none of this type.
    template <typename T>
    T& operator[](ContextKey<T> const& key) {
        auto& entry = EntryOf(key.id);
        T* const held = entry.template As<T>();
        return held ? *held : entry.template Set<T>(key.defaultValue);
    }

    /// The value, or null if there is none of this type.
    template <typename T>
    T const* Find(ContextKey<T> const& key) const {
        Entry const* const entry = FindEntry(key.id);
        return entry ? entry->value.template As<T>() : nullptr;
    }
    /// The same for a type that is known while running.
    ContextValue const* FindValue(std::uint64_t keyId, std::type_info const& type) const {
        Entry const* const entry = FindEntry(keyId);
        return entry ? entry->value.OfType(type) : nullptr;
    }

    template <typename T>
    bool HasValue(ContextKey<T> const& key) const {
        return Find(key) != nullptr;
    }

    template <typename T>
    void Set(ContextKey<T> const& key, T value) {
        EntryOf(key.id).template Set<T>(std::move(value));
    }

    void Erase(std::uint64_t keyId) {
        if (Entry* const entry = FindEntry(keyId)) entry->value.Unset();
    }
    void Clear() {
        for (Entry& entry : values_) entry.value.Unset();
    }
    bool IsEmpty() const { return Count() == 0; }
    std::size_t Count() const {
        return static_cast<std::size_t>(
            std::count_if(values_.begin(), values_.end(), [](Entry const& entry) { return entry.value.IsSet(); }));
    }

private:
    struct Entry {
        std::uint64_t id;
        ContextValueWrapper value;
    };

    Entry const* FindEntry(std::uint64_t keyId) const {
        std::size_t place = places_[keyId % places_.size()];
        // Keys of the same last bits stand behind the first of them.
        while (place != 0 && values_[place - 1].id != keyId) place = place < values_.size() ? place + 1 : 0;
        return place == 0 ? nullptr : &values_[place - 1];
    }
    Entry* FindEntry(std::uint64_t keyId) { return const_cast<Entry*>(std::as_const(*this).FindEntry(keyId)); }

    ContextValueWrapper& EntryOf(std::uint64_t keyId) {
        Entry* const entry = FindEntry(keyId);
        return entry ? entry->value : Add({keyId, {}}).value;
    }
    Entry& Add(Entry entry) {
        values_.push_back(std::move(entry));
        auto& place = places_[values_.back().id % places_.size()];
        if (place == 0) place = static_cast<std::uint16_t>(values_.size());
        return values_.back();
    }

    std::string name_;
    /// Few values are set and many are looked for, so they lie side by side; a value itself never moves.
    std::vector<Entry> values_;
    /// By the last bits of a key: which of the values, counted from 1, is the first with these; 0 if none is. There are
    /// about as many keys as places.
    std::array<std::uint16_t, 128> places_{};
};
