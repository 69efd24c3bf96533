#include "frontend/stream/ParameterRange.h"

#include "foundation/Log.h"

void ReportOutOfRange(ZplCommand const& command, std::size_t index, std::int64_t low, std::int64_t high,
                      std::optional<std::int64_t> taken) {
    constexpr std::size_t Longest = 20;  // bytes
    std::string const name = (command.isControl ? '~' : '^') + command.command;
    Log::Report(LogTopic::Data, "parameter " + std::to_string(index + 1) + " of " + name + " is " +
                                    command.Parameter(index).substr(0, Longest) + ", beyond its range of " +
                                    std::to_string(low) + " to " + std::to_string(high) +
                                    (taken ? "; " + std::to_string(*taken) + " stands for it" : "; it is left out"));
}
