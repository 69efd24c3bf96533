#pragma once

#include <functional>
#include <string>
#include <string_view>

#include "foundation/Json.h"

/// Something that happens in the printer, as it is told: a line to people, one JSON object in a line to programs.
class PrinterEvent {
public:
    /// Words for people, which programs get as a notice; they may stand where an event is told.
    PrinterEvent(std::string line);                                      // NOLINT(google-explicit-constructor)
    PrinterEvent(char const* line) : PrinterEvent(std::string(line)) {}  // NOLINT(google-explicit-constructor)
    /// With what `write` adds to the object. Without a line people are not told. `sentence` is what the line says,
    /// without where; the line itself if it is empty.
    PrinterEvent(std::string line, std::string_view event, std::function<void(JsonWriter&)> const& write,
                 std::string sentence = {});

    std::string const& Line() const { return line_; }
    std::string const& Json() const { return json_; }
    std::string const& Sentence() const { return sentence_.empty() ? line_ : sentence_; }

private:
    std::string line_;
    std::string json_;
    std::string sentence_;
};

using TellEvent = std::function<void(PrinterEvent const&)>;
