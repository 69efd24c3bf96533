#include "foundation/Log.h"

#include <utility>

namespace Log {

namespace {
Sink& CurrentSink() {
    static Sink sink;
    return sink;
}
}  // namespace

void SetSink(Sink sink) { CurrentSink() = std::move(sink); }

void Report(LogTopic topic, std::string const& message) {
    if (CurrentSink()) CurrentSink()(topic, message);
}

}  // namespace Log
