#pragma once

#include <functional>
#include <optional>
#include <string_view>

#include "desktop/Desk.h"
#include "foundation/Log.h"
#include "jobhost/model/Findings.h"
#include "jobhost/model/PrintStream.h"

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

    /// `detail`: of what labels tell of their fields.
    StreamInterpreter(Desk& desk, std::string_view stream, Findings& findings,
                      ZplCore::FieldMap::Detail detail = ZplCore::FieldMap::Detail::Ink)
        : desk_(desk),
          input_(stream),
          findings_(findings),
          detail_(detail),
          sink_([this](LogTopic topic, std::string_view text) {
              // Who draws looks at a file that cannot be written, and says which one it is.
              if (stream_ && !stream_->Current().Target().FileError().empty()) return;
              findings_.AddReport(topic, std::string(text), drawnFormat_ ? drawnFormat_ : Format(), Log::Place());
          }) {}

    void Run(TakeLabel const& take);

    /// What is reported from now on belongs to the label of this format, which is being drawn; nothing stands for the
    /// format under way in the stream, and behind its end for none.
    void SetDrawnFormat(std::optional<std::uint64_t> format) { drawnFormat_ = format; }

    /// What the labels of the stream are drawn on.
    Scripting::ScriptGraphicContext& Target() { return stream_->Current().Target(); }

private:
    std::unique_ptr<Zpl::Host::Session> MakeSession();
    std::optional<std::uint64_t> Format() const {
        return stream_ && !hasEnded_ ? stream_->Current().FormatOffset() : std::nullopt;
    }

    Desk& desk_;
    std::string_view input_;
    Findings& findings_;
    ZplCore::FieldMap::Detail detail_;
    std::optional<Zpl::Host::PrintStream> stream_;
    unsigned labels_ = 0;
    std::optional<std::uint64_t> drawnFormat_;
    bool hasEnded_ = false;
    Log::ScopedSink sink_;
};
