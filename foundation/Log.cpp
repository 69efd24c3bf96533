#include "foundation/Log.h"

#include <utility>

namespace Log {

namespace {
Sink& CurrentSink() {
    static Sink sink;
    return sink;
}

std::optional<std::uint64_t>& CurrentPlace() {
    static std::optional<std::uint64_t> place;
    return place;
}
}  // namespace

void SetPlace(std::optional<std::uint64_t> offset) { CurrentPlace() = offset; }

std::optional<std::uint64_t> Place() { return CurrentPlace(); }

Sink SetSink(Sink sink) { return std::exchange(CurrentSink(), std::move(sink)); }

void Report(LogTopic topic, std::string const& message) {
    if (CurrentSink()) CurrentSink()(topic, message);
}

}  // namespace Log
