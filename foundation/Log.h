#pragma once

#include <cstdint>
#include <functional>
#include <optional>
#include <string>
#include <string_view>
#include <utility>

/// What a report is about, so that its receiver can count, filter and fail by it.
enum class LogTopic {
    UnknownCommand,     ///< a command that is not in the language's table
    BarcodeRefused,     ///< data that a symbology cannot carry
    BarcodeCut,         ///< a barcode that is not, or not whole, on its page
    BarcodeUnreadable,  ///< a barcode that no scanner reads as it is drawn
    BarcodeDoubtful,    ///< a barcode that is not as its symbology asks
    BarcodeNotRead,     ///< a barcode that was to be read back, which its reader cannot do
    OffPage,            ///< anything else that is not, or not whole, on its page
    NotDrawn,           ///< something that the stream asks for and the system does not draw
    Limit,              ///< something past a limit, refused as a whole
    Data,               ///< damaged data of a field or an object
    Font,               ///< a font that is missing or replaced
    File,               ///< a stored object that cannot be read or written
    Dropped,            ///< a format that is given up, or a command outside all formats
};

/// Reports about what streams contain. Nothing is changed by a report, and without a sink it is dropped. Each thread
/// has a receiver and a place of its own, so that streams may be interpreted on several threads at once.
namespace Log {

using Sink = std::function<void(LogTopic, std::string_view)>;

/// Sets the receiver of this thread, and gives the one before; an empty function drops reports. Called before streams
/// are interpreted, or between them.
Sink SetSink(Sink sink);

/// Receives the reports of the thread that makes it, and ends it, for its own lifetime, in place of the receiver
/// before.
class ScopedSink {
public:
    explicit ScopedSink(Sink sink) : before_(SetSink(std::move(sink))) {}
    ~ScopedSink() { SetSink(std::move(before_)); }
    ScopedSink(ScopedSink const&) = delete;
    ScopedSink& operator=(ScopedSink const&) = delete;

private:
    Sink before_;
};

/// Where in its stream the command that is under way begins, in bytes; nothing where no command is. Set by who runs
/// commands; a receiver may ask for it when a report comes.
void SetPlace(std::optional<std::uint64_t> offset);
std::optional<std::uint64_t> Place();

/// Hands one line, without a line end, to the receiver.
void Report(LogTopic topic, std::string const& message);

}  // namespace Log
