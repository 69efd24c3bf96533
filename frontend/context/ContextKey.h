#pragma once

#include <cstdint>
#include <utility>

/// Names a value in a context and carries its default. Ids are unique within a run and never stored.
template <typename T>
class ContextKey {
public:
    explicit ContextKey(T defaultValue = {});

    ContextKey(ContextKey const&) = delete;
    ContextKey& operator=(ContextKey const&) = delete;

    std::uint64_t const id;
    T const defaultValue;
};

/// The next id of the one counter of the process.
std::uint64_t NextContextKeyId();

template <typename T>
ContextKey<T>::ContextKey(T value) : id(NextContextKeyId()), defaultValue(std::move(value)) {}
