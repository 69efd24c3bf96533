#pragma once

#include <functional>
#include <optional>
#include <string_view>

#include "desktop/Desk.h"
#include "desktop/Findings.h"
#include "foundation/Log.h"

/// What an exception thrown by a stream's content means to its sender.
std::string Explain(std::exception const& error);

/// A printable label as the stream gave it.
struct FinishedLabel {
    Zpl::Label label;
    std::string text;  ///< what it says, for naming a job
    bool hasTagOperations;
    unsigned number;       ///< from 1
    std::uint64_t format;  ///< where its format begins, in bytes
    std::uint64_t offset;  ///< where its last command begins, in bytes
};

/// Runs one whole stream through the interpreter, and takes the reports about it for as long as it lives. A format with
/// a number beyond the range of the language, or that needs more memory than there is, is dropped with a finding; what
/// was finished stays, and the stream goes on behind it.
class StreamInterpreter {
public:
    /// Takes a label; false ends the stream.
    using TakeLabel = std::function<bool(FinishedLabel&)>;

    StreamInterpreter(Desk& desk, std::string_view stream, Findings& findings)
        : desk_(desk), stream_(stream), findings_(findings), sink_([this](LogTopic topic, std::string_view text) {
              // Who draws looks at a file that cannot be written, and says which one it is.
              if (session_ && !session_->Target().FileError().empty()) return;
              findings_.AddReport(topic, std::string(text), drawnFormat_ ? drawnFormat_ : Format(), Log::Place());
          }) {}

    void Run(TakeLabel const& take);

    /// What is reported from now on belongs to the label of this format, which is being drawn; nothing stands for the
    /// format under way in the stream.
    void SetDrawnFormat(std::optional<std::uint64_t> format) { drawnFormat_ = format; }

    /// The drawing target of the session under way.
    Scripting::ScriptGraphicContext& Target() { return session_->Target(); }

private:
    void OpenSession(std::uint64_t base);
    std::optional<std::uint64_t> Format() const { return session_ ? session_->FormatOffset() : std::nullopt; }

    Desk& desk_;
    std::string_view stream_;
    Findings& findings_;
    std::unique_ptr<Zpl::Host::Session> session_;
    unsigned labels_ = 0;
    std::optional<std::uint64_t> drawnFormat_;
    Log::ScopedSink sink_;
};
