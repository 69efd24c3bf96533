#pragma once

#include <utility>

#include "frontend/context/ContextProcessor.h"

/// Writes a setting into the context that a handler was given, so that the value set last is the one that is seen.
/// A context that is none of the processor's own is written directly.
template <typename T>
void StoreSetting(Context& context, ContextProcessor& processor, ContextKey<T> const& key, T value) {
    processor.set(context, key, std::move(value));
}
