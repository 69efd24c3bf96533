#pragma once

#include <cstdint>
#include <exception>
#include <functional>
#include <memory>
#include <optional>
#include <string>
#include <string_view>

#include "jobhost/model/Findings.h"
#include "jobhost/model/Session.h"

namespace Zpl::Host {

/// What an exception thrown by a stream's content means to its sender.
std::string Explain(std::exception const& error);

/// One print stream that nothing in it can end. A command with a number that cannot be read, or one that needs more
/// memory than there is, costs the format it stands in, or itself outside a format, and is reported; the stream goes on
/// at the prefix that ended it, on a fresh session. Labels that are finished stay.
class PrintStream {
public:
    using MakeSession = std::function<std::unique_ptr<Session>()>;

    /// Who is told of the stream: of its labels what `detail` says, and of unknown commands.
    struct Watch {
        ZplCore::FieldMap::Detail detail = ZplCore::FieldMap::Detail::Ink;
        std::function<void(Finding, Findings::Format)> tell;
    };

    /// Without a watch no fields are noted, and unknown commands are told to nobody.
    explicit PrintStream(MakeSession makeSession) : makeSession_(std::move(makeSession)), session_(OpenSession()) {}
    PrintStream(MakeSession makeSession, Watch watch)
        : makeSession_(std::move(makeSession)), watch_(std::move(watch)), session_(OpenSession()) {}
    PrintStream(PrintStream const&) = delete;
    PrintStream& operator=(PrintStream const&) = delete;

    /// As Session::Consume, but throws only if there is not even memory for a fresh session.
    ZplCommandProcessor::ProcessResult Consume(std::string_view input, bool controlCommandsOnly, bool flushAtEnd);
    /// The same with Session::ConsumeOpenCommand.
    ZplCommandProcessor::ProcessResult ConsumeOpenCommand();

    /// The session under way.
    Session& Current() { return *session_; }
    Session const& Current() const { return *session_; }
    /// Where the format under way begins, see ZplCommandProcessor.
    Findings::Format Format() const { return session_->FormatOffset(); }

private:
    std::unique_ptr<Session> OpenSession();
    ZplCommandProcessor::ProcessResult GoOnBehind(std::exception const& error, std::string_view input,
                                                  std::uint64_t before);

    MakeSession makeSession_;
    std::optional<Watch> watch_;
    std::unique_ptr<Session> session_;
};

}  // namespace Zpl::Host
