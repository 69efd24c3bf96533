#include "library/StreamInterpreter.h"

StreamInterpreter::StreamInterpreter(Desk& desk, std::string_view stream, Tell tell, Detail detail)
    : desk_(desk),
      input_(stream),
      tell_(std::move(tell)),
      detail_(detail),
      sink_([this](LogTopic topic, std::string_view text) { TakeReport(topic, text, {}); }) {
    desk_.SetFontReceiver(
        [this](std::string_view line, std::string_view subject) { TakeReport(LogTopic::Font, line, subject); });
}

StreamInterpreter::~StreamInterpreter() { desk_.SetFontReceiver({}); }

void StreamInterpreter::TakeReport(LogTopic topic, std::string_view text, std::string_view subject) {
    // Who draws looks at a file that cannot be written, and says which one it is.
    if (stream_ && !stream_->Current().Target().FileError().empty()) return;
    tell_(desk_.Report(topic, text, subject, drawnFormat_ ? drawnFormat_ : Format()));
}

std::unique_ptr<Zpl::Host::Session> StreamInterpreter::MakeSession() {
    auto session = desk_.MakeSession();
    session->MapFields(detail_);
    session->SetUnknownCommandObserver([this](ZplCommand const& command, std::uint64_t offset) {
        tell_([finding = Findings::OfUnknownCommand(command, offset), format = Format()](Findings& findings) {
            findings.Add(finding, format);
        });
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
                               ++labels_,        Format().value_or(0), stream_->Current().LastCommandOffset(),
                               rest.size()};
        tell_([format = finished.format, number = finished.number](Findings& findings) {
            findings.NumberLabel(format, number);
        });
        bool const goesOn = take(finished);
        if (!goesOn) return;
    }
    hasEnded_ = true;
    if (stream_->Current().IsInFormat()) {
        tell_([end = input_.size()](Findings& findings) {
            findings.AddNotice("the stream ends inside a format: ^XZ is missing", {}, end);
        });
    } else if (labels_ == 0) {
        tell_([](Findings& findings) { findings.AddNotice("the stream holds no printable label", {}); });
    }
}
