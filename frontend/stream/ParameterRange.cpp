#include "frontend/stream/ParameterRange.h"

#include "foundation/Log.h"

void ReportOutOfRange(ZplCommand const& command, std::size_t index, Range<std::int64_t> range,
                      std::optional<std::int64_t> taken) {
    constexpr std::size_t Longest = 20;  // bytes
    std::string const name = (command.isControl ? '~' : '^') + command.command;
    std::string const unit(range.unit);
    std::string const end =
        taken ? "; " + std::to_string(*taken) + unit + (unit.empty() ? " stands for it" : " stand for it")
              : "; it is left out";
    Log::Report(LogTopic::Data, "parameter " + std::to_string(index + 1) + " of " + name + " is " +
                                    command.Parameter(index).substr(0, Longest) + ", beyond its range of " +
                                    std::to_string(range.low) + " to " + std::to_string(range.high) + unit + end);
}
