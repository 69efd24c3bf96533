#include "foundation/Log.h"

#include <utility>

namespace Log {

namespace {
thread_local Sink currentSink;
thread_local constinit std::optional<std::uint64_t> currentPlace;
}  // namespace

void SetPlace(std::optional<std::uint64_t> offset) { currentPlace = offset; }

std::optional<std::uint64_t> Place() { return currentPlace; }

Sink SetSink(Sink sink) { return std::exchange(currentSink, std::move(sink)); }

void Report(LogTopic topic, std::string const& message) {
    if (currentSink) currentSink(topic, message);
}

}  // namespace Log
