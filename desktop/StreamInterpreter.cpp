#include "desktop/StreamInterpreter.h"

#include <algorithm>
#include <new>
#include <stdexcept>

#include "foundation/Log.h"

std::string Explain(std::exception const& error) {
    if (dynamic_cast<std::out_of_range const*>(&error)) return "a number is out of range";
    if (dynamic_cast<std::invalid_argument const*>(&error)) return "a number cannot be read";
    if (dynamic_cast<std::bad_alloc const*>(&error) || dynamic_cast<std::length_error const*>(&error)) {
        return "it needs more memory than there is";
    }
    return error.what();
}

void StreamInterpreter::OpenSession(std::uint64_t base) {
    session_ = desk_.MakeSession();
    session_->StartAt(base);
    session_->MapFields();
    session_->SetUnknownCommandObserver([this](ZplCommand const& command, std::uint64_t offset) {
        findings_.AddUnknownCommand(command, offset, Format());
    });
}

void StreamInterpreter::Run(TakeLabel const& take) {
    std::uint64_t base = 0;
    OpenSession(base);
    for (std::string_view rest = stream_; !rest.empty();) {
        ZplCommandProcessor::ProcessResult result;
        try {
            result = session_->Consume(rest, false, true);
        } catch (std::exception const& error) {
            findings_.AddNotice(Explain(error) + "; this format is dropped", {},
                                Log::Place().value_or(session_->LastCommandOffset()));
            // At least the byte that the memory ran out at, so that the run comes to an end.
            base = std::max(base + 1, session_->ConsumedBytes());
            rest = stream_.substr(std::min(stream_.size(), static_cast<std::size_t>(base)));
            OpenSession(base);
            continue;
        }
        rest = result.remaining;
        if (!result.label) continue;
        auto& [text, label] = *result.label;
        FinishedLabel finished{std::move(label), std::move(text),      result.hasRfidOperations,
                               ++labels_,        Format().value_or(0), session_->LastCommandOffset()};
        findings_.NumberLabel(finished.format, finished.number);
        bool const goesOn = take(finished);
        if (!goesOn) return;
    }
    if (session_->IsInFormat()) {
        findings_.AddNotice("the stream ends inside a format: ^XZ is missing", {}, stream_.size());
    } else if (labels_ == 0) {
        findings_.AddNotice("the stream holds no printable label", {});
    }
}
