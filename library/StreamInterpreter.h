#pragma once

#include <functional>
#include <optional>
#include <string_view>

#include "foundation/Log.h"
#include "jobhost/model/Findings.h"
#include "jobhost/model/PrintStream.h"
#include "library/Desk.h"

/// A printable label as the stream gave it.
struct FinishedLabel {
    Zpl::Label label;
    std::string text;  ///< what it says, for naming a job
    bool hasTagOperations;
    unsigned number;       ///< from 1
    std::uint64_t format;  ///< where its format begins, in bytes
    std::uint64_t offset;  ///< where its last command begins, in bytes
    std::size_t rest;      ///< of the stream behind it, in bytes
};

/// Runs one whole stream through the interpreter, and takes the reports about it for as long as it lives. A format with
/// a number beyond the range of the language, or that needs more memory than there is, is dropped with a finding; what
/// was finished stays, and the stream goes on behind it.
class StreamInterpreter {
public:
    /// Takes a label; false ends the stream.
    using TakeLabel = std::function<bool(FinishedLabel&)>;

    /// Takes what is to be told, in the order of the stream.
    using Tell = std::function<void(Telling)>;
    using Detail = ZplCore::FieldMap::Detail;

    /// `detail`: of what labels tell of their fields.
    StreamInterpreter(Desk& desk, std::string_view stream, Tell tell, Detail detail = Detail::Ink);
    /// Tells it at once.
    StreamInterpreter(Desk& desk, std::string_view stream, Findings& findings, Detail detail = Detail::Ink)
        : StreamInterpreter(
              desk, stream, [&findings](Telling const& telling) { telling(findings); }, detail) {}
    ~StreamInterpreter();
    StreamInterpreter(StreamInterpreter const&) = delete;
    StreamInterpreter& operator=(StreamInterpreter const&) = delete;

    void Run(TakeLabel const& take);

    /// What is reported from now on belongs to the label of this format, which is being drawn; nothing stands for the
    /// format under way in the stream, and behind its end for none.
    void SetDrawnFormat(std::optional<std::uint64_t> format) { drawnFormat_ = format; }

    /// What the labels of the stream are drawn on.
    Scripting::ScriptGraphicContext& Target() { return stream_->Current().Target(); }

private:
    std::unique_ptr<Zpl::Host::Session> MakeSession();
    void TakeReport(LogTopic topic, std::string_view text, std::string_view subject);
    std::optional<std::uint64_t> Format() const {
        return stream_ && !hasEnded_ ? stream_->Current().FormatOffset() : std::nullopt;
    }

    Desk& desk_;
    std::string_view input_;
    Tell tell_;
    Detail detail_;
    std::optional<Zpl::Host::PrintStream> stream_;
    unsigned labels_ = 0;
    std::optional<std::uint64_t> drawnFormat_;
    bool hasEnded_ = false;
    Log::ScopedSink sink_;
};
