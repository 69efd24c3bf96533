#include "jobhost/model/PrintStream.h"

#include <algorithm>
#include <new>
#include <stdexcept>

#include "foundation/Log.h"
#include "foundation/Quoted.h"
#include "frontend/stream/BadNumber.h"

namespace Zpl::Host {

std::string Explain(std::exception const& error) {
    bool const isRange = dynamic_cast<std::out_of_range const*>(&error) != nullptr;
    if (auto const* bad = dynamic_cast<BadNumber const*>(&error)) {
        std::string const command = bad->command.empty() ? "" : bad->command + ": ";
        return isRange ? command + "the number " + Quoted(bad->text) + " is out of range"
                       : command + Quoted(bad->text) + " is no number";
    }
    if (isRange) return "a number is out of range";
    if (dynamic_cast<std::invalid_argument const*>(&error)) return "a number cannot be read";
    if (dynamic_cast<std::bad_alloc const*>(&error) || dynamic_cast<std::length_error const*>(&error))
        return "it needs more memory than there is";
    return error.what();
}

std::unique_ptr<Session> PrintStream::OpenSession() {
    auto session = makeSession_();
    if (!watch_) return session;
    session->MapFields(watch_->detail);
    session->SetUnknownCommandObserver([this](ZplCommand const& command, std::uint64_t offset) {
        watch_->tell(Findings::OfUnknownCommand(command, offset), Format());
    });
    return session;
}

ZplCommandProcessor::ProcessResult PrintStream::Consume(std::string_view input, bool controlCommandsOnly,
                                                        bool flushAtEnd) {
    auto const before = session_->ConsumedBytes();
    try {
        return session_->Consume(input, controlCommandsOnly, flushAtEnd);
    } catch (std::exception const& error) {
        return GoOnBehind(error, input, before);
    }
}

ZplCommandProcessor::ProcessResult PrintStream::ConsumeOpenCommand() {
    auto const before = session_->ConsumedBytes();
    try {
        return session_->ConsumeOpenCommand();
    } catch (std::exception const& error) {
        return GoOnBehind(error, {}, before);
    }
}

/// `input` is what threw, and began `before` bytes into the stream.
ZplCommandProcessor::ProcessResult PrintStream::GoOnBehind(std::exception const& error, std::string_view input,
                                                           std::uint64_t before) {
    auto rest = session_->TakeRest();
    if (!Log::Place()) Log::SetPlace(session_->LastCommandOffset());
    Log::Report(LogTopic::Dropped,
                Explain(error) + (rest.lostFormat ? "; this format is dropped" : "; this command is dropped"));
    // At least the byte that the memory ran out at, so that the run comes to an end.
    auto const read = std::max<std::uint64_t>(rest.tokenizer.ConsumedBytes() - before, 1);
    rest.tokenizer.StartAt(before + read);
    auto fresh = OpenSession();
    fresh->GoOnFrom(*session_, std::move(rest));
    session_ = std::move(fresh);
    ZplCommandProcessor::ProcessResult result;
    result.remaining = input.substr(std::min<std::uint64_t>(read, input.size()));
    return result;
}

}  // namespace Zpl::Host
