#pragma once

#include <atomic>

/// Set, on any thread, when the process has been told to end: long work leaves at its next good point, and no new work
/// is begun. Never cleared.
inline std::atomic<bool> processIsEnding{false};
