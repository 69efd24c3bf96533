#pragma once

#include <cstdint>
#include <map>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "frontend/context/ContextProcessor.h"
#include "frontend/stream/ZplCommand.h"

namespace ZplCore {

/// A run of bytes of a stream or of a stored format.
struct ByteRange {
    std::uint64_t offset = 0;
    std::uint64_t length = 0;

    std::uint64_t End() const { return offset + length; }
    friend bool operator==(ByteRange const&, ByteRange const&) = default;
};

/// Where the commands of a field stand: in the stream, in a stored format, or some here and some there.
struct FieldPlace {
    std::optional<ByteRange> inStream;
    std::optional<ByteRange> inFormat;
    std::string format;               ///< path of the stored format below the folder of formats
    std::optional<ByteRange> recall;  ///< the command of the stream that recalls it

    bool IsEmpty() const { return !inStream && !inFormat; }
    /// Grows until it holds that command too.
    void Add(ZplCommand const& command);
};

/// Follows the commands of a label from field to field. A field begins with the first command that says something of
/// it, or with the barcode defaults right before that, and ends with its end; one without an end, with the last command
/// that says something of it.
class FieldPlaces {
public:
    /// A command is about to run, or has run.
    void StartCommand(ZplCommand const& command, ContextProcessor const& processor);
    void EndCommand(ZplCommand const& command, ContextProcessor const& processor);

    /// The place of the field under way; empty if there is none.
    FieldPlace const& Field() const { return field_; }
    /// The field under way is over.
    void EndField() { field_ = {}; }
    /// All is over.
    void Reset();

private:
    FieldPlace field_;
    FieldPlace defaults_;  ///< barcode defaults behind what belongs to the field before
    std::size_t valuesBefore_ = 0;
};

/// Where in the stream the commands stand that were stored as a format: for each its offset in the stored format, and
/// its place in the stream.
struct StoredCommand {
    std::uint64_t offset = 0;
    ByteRange source;
};

/// What the stream has stored itself, by the path of the format.
class StoredSources {
public:
    void Note(std::string const& format, std::vector<StoredCommand> commands) {
        commands_[format] = std::move(commands);
    }
    /// The place in the stream of a run of commands of a stored format; nothing if it was not stored by this stream.
    std::optional<ByteRange> Find(std::string const& format, ByteRange const& range) const;

private:
    std::map<std::string, std::vector<StoredCommand>> commands_;
};

}  // namespace ZplCore
