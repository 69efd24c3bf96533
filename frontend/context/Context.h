#pragma once

#include <algorithm>
#include <array>
#include <cstddef>
#include <cstdint>
#include <memory>
#include <string>
#include <utility>
#include <vector>

#include "frontend/context/ContextKey.h"

/// A named store of typed values. Copying copies every value.
class Context {
public:
    /// One value, of the type of its key.
    class ContextValue {
    public:
        virtual ~ContextValue() = default;
        virtual std::unique_ptr<ContextValue> Clone() const = 0;
        /// Gives up what it holds.
        virtual void Reset() = 0;
    };

    template <typename T>
    class ConcreteContextValue : public ContextValue {
    public:
        explicit ConcreteContextValue(T initial) : value(std::move(initial)) {}
        std::unique_ptr<ContextValue> Clone() const override { return std::make_unique<ConcreteContextValue>(value); }
        void Reset() override { value = T(); }

        T value;
    };

    Context() = default;
    explicit Context(std::string name) : name_(std::move(name)) {}
    Context(Context const& other) : name_(other.name_) {
        values_.reserve(other.Count());
        for (Entry const& entry : other.values_) {
            if (entry.isSet) Add({entry.id, entry.value->Clone(), true});
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

    /// The value, made from the key's default if there is none.
    template <typename T>
    T& operator[](ContextKey<T> const& key) {
        auto& entry = EntryOf(key.id);
        return entry.isSet ? ValueOf<T>(*entry.value) : Assign<T>(entry, key.defaultValue);
    }

    /// The value, or null if there is none.
    template <typename T>
    T const* Find(ContextKey<T> const& key) const {
        ContextValue const* const value = FindValue(key.id);
        return value ? &ValueOf<T>(*value) : nullptr;
    }
    /// The same of any type: the value of the key with that id.
    ContextValue const* FindValue(std::uint64_t keyId) const {
        Entry const* const entry = FindEntry(keyId);
        return entry && entry->isSet ? entry->value.get() : nullptr;
    }
    /// `value` as what it is: each key has values of one type.
    template <typename T>
    static T const& ValueOf(ContextValue const& value) {
        return static_cast<ConcreteContextValue<T> const&>(value).value;
    }

    template <typename T>
    bool HasValue(ContextKey<T> const& key) const {
        return Find(key) != nullptr;
    }

    template <typename T>
    void Set(ContextKey<T> const& key, T value) {
        Assign<T>(EntryOf(key.id), std::move(value));
    }

    void Erase(std::uint64_t keyId) {
        if (Entry* const entry = FindEntry(keyId)) entry->Unset();
    }
    void Clear() {
        for (Entry& entry : values_) entry.Unset();
    }
    bool IsEmpty() const { return Count() == 0; }
    std::size_t Count() const {
        return static_cast<std::size_t>(
            std::count_if(values_.begin(), values_.end(), [](Entry const& entry) { return entry.isSet; }));
    }

private:
    /// Field after field sets the same keys, so the memory of a value that is taken away waits for the next.
    struct Entry {
        std::uint64_t id;
        std::unique_ptr<ContextValue> value;
        bool isSet;

        void Unset() {
            if (std::exchange(isSet, false)) value->Reset();
        }
    };

    template <typename T>
    static T& ValueOf(ContextValue& value) {
        return static_cast<ConcreteContextValue<T>&>(value).value;
    }
    template <typename T>
    static T& Assign(Entry& entry, T value) {
        if (entry.value) {
            ValueOf<T>(*entry.value) = std::move(value);
        } else {
            entry.value = std::make_unique<ConcreteContextValue<T>>(std::move(value));
        }
        entry.isSet = true;
        return ValueOf<T>(*entry.value);
    }

    Entry const* FindEntry(std::uint64_t keyId) const {
        std::size_t place = places_[keyId % places_.size()];
        // Keys of the same last bits stand behind the first of them.
        while (place != 0 && values_[place - 1].id != keyId) place = place < values_.size() ? place + 1 : 0;
        return place == 0 ? nullptr : &values_[place - 1];
    }
    Entry* FindEntry(std::uint64_t keyId) { return const_cast<Entry*>(std::as_const(*this).FindEntry(keyId)); }

    Entry& EntryOf(std::uint64_t keyId) {
        Entry* const entry = FindEntry(keyId);
        return entry ? *entry : Add({keyId, nullptr, false});
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
