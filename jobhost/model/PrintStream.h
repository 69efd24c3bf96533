#pragma once

#include <exception>
#include <functional>
#include <memory>
#include <string>
#include <string_view>

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

    explicit PrintStream(MakeSession makeSession) : makeSession_(std::move(makeSession)), session_(makeSession_()) {}

    /// As Session::Consume, but throws only if there is not even memory for a fresh session.
    ZplCommandProcessor::ProcessResult Consume(std::string_view input, bool controlCommandsOnly, bool flushAtEnd);

    /// The session under way.
    Session& Current() { return *session_; }
    Session const& Current() const { return *session_; }

private:
    MakeSession makeSession_;
    std::unique_ptr<Session> session_;
};

}  // namespace Zpl::Host
