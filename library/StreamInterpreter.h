#pragma once

#include <functional>
#include <optional>
#include <string_view>

#include "library/StreamReader.h"

/// Runs one whole stream through the interpreter, see StreamReader, and takes the reports about it for as long as it
/// lives.
class StreamInterpreter {
public:
    /// Takes a label; false ends the stream.
    using TakeLabel = std::function<bool(FinishedLabel&)>;
    using Tell = StreamReader::Tell;
    using Detail = StreamReader::Detail;

    StreamInterpreter(Desk& desk, std::string_view stream, Tell tell, Detail detail = Detail::Symbols)
        : input_(stream), reader_(desk, std::move(tell), detail), hearing_(reader_) {}
    /// Tells it at once.
    StreamInterpreter(Desk& desk, std::string_view stream, Findings& findings, Detail detail = Detail::Symbols)
        : StreamInterpreter(
              desk, stream, [&findings](Telling const& telling) { telling(findings); }, detail) {}

    void Run(TakeLabel const& take) {
        for (std::string_view rest = input_; !rest.empty();) {
            auto finished = reader_.Read(rest, true);
            if (finished && !take(*finished)) return;
        }
        reader_.End();
    }

    void SetDrawnFormat(std::optional<std::uint64_t> format) { reader_.SetDrawnFormat(format); }

    /// What the labels of the stream are drawn on.
    Scripting::ScriptGraphicContext& Target() { return reader_.Target(); }

private:
    std::string_view input_;
    StreamReader reader_;
    StreamReader::Hearing hearing_;
};
