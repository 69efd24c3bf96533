#pragma once

#include <cstdint>
#include <functional>
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <tuple>

#include "frontend/context/ContextProcessor.h"
#include "frontend/stream/ZplTokenizer.h"
#include "labels/Label.h"

class BoolProperty;
class CommandHandler;
class CommandHandlerPool;
class StringProperty;
class UInt32Property;

/// The centre of the front end: drives the tokenizer over a stream, runs or records each command, and turns a finished
/// format into a label. One thread at a time.
///
/// A number beyond the range of the language, or memory that cannot be had, leaves ProcessString as a standard
/// exception; the processor is of no further use then, and another goes on with TakeRest.
class ZplCommandProcessor {
public:
    struct ProcessResult {
        /// The part of the input that is not consumed yet.
        std::string_view remaining;
        /// A printable label, and what it says.
        std::optional<std::tuple<std::string, Zpl::Label>> label;
        /// Whether every command of the call was known and had the right prefix.
        bool allCommandsKnown = true;
        /// Whether the last label finished in the call has tag operations.
        bool hasRfidOperations = false;
    };

    /// What of a stream goes on when the processor that it was read with has thrown.
    struct StreamRest {
        ZplTokenizer tokenizer;  ///< with the prefix that ended the last command, and the count of bytes
        Encoding encoding;
        bool lostFormat;                         ///< whether the exception has cost a format
        bool isInFormat;                         ///< whether more of that format follows,
        bool isDrawn;                            ///< and its end would have drawn it
        std::optional<ZplCommand> characterSet;  ///< that its commands so far have named
    };

    /// Called for each command that is unknown or has the wrong prefix, with the byte offset of its prefix since the
    /// processor was made.
    using UnknownCommandObserver = std::function<void(ZplCommand const& command, std::uint64_t offset)>;

    /// `formatsFolder`: where formats and graphics that streams store are kept.
    ZplCommandProcessor(CommandHandlerPool const& handlerPool, std::filesystem::path formatsFolder);

    void SetPrinterContext(std::shared_ptr<Scripting::PrinterContextInterface> context);
    void SetGraphicContext(std::shared_ptr<Scripting::GraphicContext> context);
    void SetFieldMap(std::shared_ptr<ZplCore::FieldMap> map) { contextProcessor_.SetFieldMap(std::move(map)); }
    void SetSystemContext(std::shared_ptr<Context> context);
    void SetMissingZplCommands(std::shared_ptr<StringProperty> property) { missingZplCommands_ = std::move(property); }
    void SetLifetimeZPLScriptCount(std::shared_ptr<UInt32Property> property) {
        lifetimeZplScriptCount_ = std::move(property);
    }
    void SetLowMemoryError(std::shared_ptr<BoolProperty> property) { lowMemoryError_ = std::move(property); }
    void SetZPLFormatCharacter(std::shared_ptr<StringProperty> property) { zplFormatCharacter_ = std::move(property); }
    void SetZPLDelimiterCharacter(std::shared_ptr<StringProperty> property) {
        zplDelimiterCharacter_ = std::move(property);
    }
    void SetZPLControlCharacter(std::shared_ptr<StringProperty> property) {
        zplControlCharacter_ = std::move(property);
    }
    void SetUnknownCommandObserver(UnknownCommandObserver observer) { unknownCommandObserver_ = std::move(observer); }

    /// Reads `input` up to the end of the next printable label, or to its end. The caller goes on with `remaining`
    /// until that is empty. With `controlCommandsOnly` nothing is recorded; with `flushAtEnd` the end of `input`
    /// completes a command that is still open. An empty `input` does nothing, whatever the flags.
    ProcessResult ProcessString(std::string_view input, bool controlCommandsOnly, bool flushAtEnd);
    /// Completes a command that is still open where the stream turns out to have ended with the input before.
    ProcessResult ProcessOpenCommand();

    /// Whether a format has begun and not ended.
    bool IsInFormat() const { return contextProcessor_.GetContext(ContextProcessor::LabelContext) != nullptr; }

    /// Where the format under way begins, in bytes since the processor was made. It holds behind the format's end until
    /// the stream goes on, and is nothing between formats.
    std::optional<std::uint64_t> FormatOffset() const { return formatOffset_; }

    /// Where the command run last begins, and how far the stream is read, in bytes since the processor was made. They
    /// hold also when an exception has ended ProcessString.
    std::uint64_t LastCommandOffset() const { return tokenizer_.CommandOffset(); }
    std::uint64_t ConsumedBytes() const { return tokenizer_.ConsumedBytes(); }

    /// After an exception; nothing more can be done with the processor then.
    StreamRest TakeRest();
    /// Reads on what another processor has left. The rest of a lost format is thrown away at its end.
    void GoOnWith(StreamRest rest);
    /// A byte order mark counts for its own stream: the next one begins in the encoding of its character set.
    void ForgetByteOrderMark();

    void ProcessControlCommands();
    Zpl::Label ProcessLabelCommands();
    /// Writes the recorded commands as the stored format `path`, which is relative to the formats folder.
    void SaveFormatCommands(std::string const& path);
    /// Asks the drawing target which fonts a label can name.
    void LoadTrueTypeFonts();
    /// Notes an unknown command once, as `^XY` or `~XY`.
    void UpdateMissingCommands(std::string const& command, bool isControl);
    void IncrementLifetimeScriptCount(unsigned count) const;

private:
    ProcessResult ReadOn(std::string_view input, bool controlCommandsOnly, bool flushAtEnd);
    std::unique_ptr<ZplCommand> NextCommand(std::string_view input, std::size_t& position, bool flushAtEnd);
    void RunOrRecord(CommandHandler& handler, ZplCommand const& command, bool controlCommandsOnly);
    void FinishFormat(ProcessResult& result);
    bool DrawsFormat() const;
    void DropFormat();
    void KeepCharacterSet();

    CommandHandlerPool const& handlerPool_;
    ZplTokenizer tokenizer_;
    ContextProcessor contextProcessor_;
    std::shared_ptr<StringProperty> missingZplCommands_;
    std::shared_ptr<StringProperty> zplFormatCharacter_;
    std::shared_ptr<StringProperty> zplDelimiterCharacter_;
    std::shared_ptr<StringProperty> zplControlCharacter_;
    std::shared_ptr<UInt32Property> lifetimeZplScriptCount_;
    std::shared_ptr<BoolProperty> lowMemoryError_;
    UnknownCommandObserver unknownCommandObserver_;
    bool isFinishing_ = false;                // a format
    bool isLost_ = false;                     // the format under way: its rest is dropped
    std::optional<ZplCommand> characterSet_;  // the last `^CI` of the format that names a set
    /// Of the label that was given last, which as a rule is drawn at once; a label that has to wait keeps no copy of
    /// it.
    std::shared_ptr<Zpl::Label::Replay> replay_;
    std::optional<std::uint64_t> formatOffset_;
};
