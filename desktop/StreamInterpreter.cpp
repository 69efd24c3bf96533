#include "desktop/StreamInterpreter.h"

std::unique_ptr<Zpl::Host::Session> StreamInterpreter::MakeSession() {
    auto session = desk_.MakeSession();
    session->MapFields(detail_);
    session->SetUnknownCommandObserver([this](ZplCommand const& command, std::uint64_t offset) {
        findings_.AddUnknownCommand(command, offset, Format());
    });
    return session;
}

void StreamInterpreter::Run(TakeLabel const& take) {
    stream_.emplace([this] { return MakeSession(); });
    for (std::string_view rest = input_; !rest.empty();) {
        auto result = stream_->Consume(rest, false, true);
        rest = result.remaining;
        if (!result.label) continue;
        auto& [text, label] = *result.label;
        FinishedLabel finished{std::move(label), std::move(text),      result.hasRfidOperations,
                               ++labels_,        Format().value_or(0), stream_->Current().LastCommandOffset()};
        findings_.NumberLabel(finished.format, finished.number);
        bool const goesOn = take(finished);
        if (!goesOn) return;
    }
    hasEnded_ = true;
    if (stream_->Current().IsInFormat()) {
        findings_.AddNotice("the stream ends inside a format: ^XZ is missing", {}, input_.size());
    } else if (labels_ == 0) {
        findings_.AddNotice("the stream holds no printable label", {});
    }
}
