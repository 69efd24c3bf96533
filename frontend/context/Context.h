#pragma once

#include <cstdint>
#include <map>
#include <memory>
#include <string>
#include <typeinfo>
#include <utility>

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
        auto& entry = values_[key.id];
        if (T* held = entry.template As<T>()) return *held;
        entry = ContextValueWrapper(std::make_unique<ConcreteContextValue<T>>(key.defaultValue));
        return *entry.template As<T>();
    }

    /// The value, or null if there is none of this type.
    template <typename T>
    T const* Find(ContextKey<T> const& key) const {
        auto const found = values_.find(key.id);
        return found == values_.end() ? nullptr : found->second.template As<T>();
    }

    template <typename T>
    bool HasValue(ContextKey<T> const& key) const {
        return Find(key) != nullptr;
    }

    template <typename T>
    void Set(ContextKey<T> const& key, T value) {
        auto& entry = values_[key.id];
        if (T* held = entry.template As<T>()) {
            *held = std::move(value);
        } else {
            entry = ContextValueWrapper(std::make_unique<ConcreteContextValue<T>>(std::move(value)));
        }
    }

    void Erase(std::uint64_t keyId) { values_.erase(keyId); }
    void Clear() { values_.clear(); }
    bool IsEmpty() const { return values_.empty(); }

private:
    std::string name_;
    std::map<std::uint64_t, ContextValueWrapper> values_;
};
