#pragma once

#include <cstdint>
#include <functional>
#include <optional>
#include <string>
#include <string_view>
#include <utility>

/// What a report is about, so that its receiver can count, filter and fail by it.
enum class LogTopic {
    UnknownCommand,  ///< a command that is not in the language's table
    BarcodeRefused,  ///< data that a symbology cannot carry
    BarcodeCut,      ///< a barcode that is not, or not whole, on its page
    OffPage,         ///< anything else that is not, or not whole, on its page
    NotDrawn,        ///< something that the stream asks for and the system does not draw
    Limit,           ///< something past a limit, refused as a whole
    Data,            ///< damaged data of a field or an object
    Font,            ///< a font that is missing or replaced
    File,            ///< a stored object that cannot be read or written
    Dropped,         ///< a format that is given up, or a command outside all formats
};

/// Reports about what streams contain. Nothing is changed by a report, and without a sink it is dropped.
namespace Log {

using Sink = std::function<void(LogTopic, std::string_view)>;

/// Sets the receiver of the process; an empty function drops reports. Called before streams are interpreted, or between
/// them, on the thread that interprets them.
void SetSink(Sink sink);

/// Receives reports for its own lifetime.
class ScopedSink {
public:
    explicit ScopedSink(Sink sink) { SetSink(std::move(sink)); }
    ~ScopedSink() { SetSink(nullptr); }
    ScopedSink(ScopedSink const&) = delete;
    ScopedSink& operator=(ScopedSink const&) = delete;
};

/// Where in its stream the command that is under way begins, in bytes; nothing where no command is. Set by who runs
/// commands; a receiver may ask for it when a report comes.
void SetPlace(std::optional<std::uint64_t> offset);
std::optional<std::uint64_t> Place();

/// Hands one line, without a line end, to the receiver.
void Report(LogTopic topic, std::string const& message);

}  // namespace Log
