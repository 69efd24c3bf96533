#pragma once

#include <cstdint>
#include <functional>
#include <optional>
#include <string>
#include <string_view>
#include <utility>

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
    std::size_t rest;      ///< of the bytes at hand that stand behind it
};

/// Runs a stream through the interpreter, piece by piece. A format with a number beyond the range of the language, or
/// that needs more memory than there is, is dropped with a finding; what was finished stays, and the stream goes on
/// behind it.
class StreamReader {
public:
    /// Takes what is to be told, in the order of the stream.
    using Tell = std::function<void(Telling)>;
    using Detail = ZplCore::FieldMap::Detail;

    /// `detail`: of what labels tell of their fields.
    StreamReader(Desk& desk, Tell tell, Detail detail) : desk_(desk), tell_(std::move(tell)), detail_(detail) {}

    /// Reads on, up to the end of the next label, and takes what it has read off `bytes`; nothing if no label ends in
    /// them. With `isLast` the stream ends behind them.
    std::optional<FinishedLabel> Read(std::string_view& bytes, bool isLast);
    /// The stream has ended, and all of it has been read.
    void End();

    /// Takes the reports of its thread about a stream for as long as it lives.
    class Hearing {
    public:
        explicit Hearing(StreamReader& reader);
        ~Hearing();
        Hearing(Hearing const&) = delete;
        Hearing& operator=(Hearing const&) = delete;

    private:
        StreamReader& reader_;
        Log::ScopedSink sink_;
    };

    /// What is reported from now on belongs to the label of this format, which is being drawn; nothing stands for the
    /// format under way in the stream, and behind its end for none.
    void SetDrawnFormat(std::optional<std::uint64_t> format) { drawnFormat_ = format; }

    /// What the labels of the stream are drawn on. Not before it is read.
    Scripting::ScriptGraphicContext& Target() { return stream_->Current().Target(); }
    /// See Session. Not before the stream is read.
    ZplCore::FieldMap const* Fields() const { return stream_->Current().Fields(); }

private:
    void Open();
    void TakeReport(LogTopic topic, std::string_view text, std::string_view subject);

    Desk& desk_;
    Tell tell_;
    Detail detail_;
    unsigned labels_ = 0;
    std::optional<std::uint64_t> drawnFormat_;
    bool hasEnded_ = false;
    std::optional<Zpl::Host::PrintStream> stream_;  ///< nothing until a byte is read
};
