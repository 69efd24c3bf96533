#include "library/StreamReader.h"

#include <utility>

void StreamReader::Open() {
    auto const tell = [this](Finding finding, Findings::Format format) {
        tell_([finding = std::move(finding), format](Findings& findings) { findings.Add(finding, format); });
    };
    stream_.emplace([this] { return desk_.MakeSession(); }, Zpl::Host::PrintStream::Watch{detail_, tell});
}

StreamReader::Hearing::Hearing(StreamReader& reader)
    : reader_(reader), sink_([&reader](LogTopic topic, std::string_view text) { reader.TakeReport(topic, text, {}); }) {
    reader_.desk_.SetFontReceiver([&reader](std::string_view line, std::string_view subject) {
        reader.TakeReport(LogTopic::Font, line, subject);
    });
}

StreamReader::Hearing::~Hearing() { reader_.desk_.SetFontReceiver({}); }

void StreamReader::TakeReport(LogTopic topic, std::string_view text, std::string_view subject) {
    // Who draws looks at a file that cannot be written, and says which one it is.
    if (stream_ && !Target().FileError().empty()) return;
    auto const format = stream_ && !hasEnded_ ? stream_->Format() : std::nullopt;
    tell_(desk_.Report(topic, text, subject, drawnFormat_ ? drawnFormat_ : format));
}

std::optional<FinishedLabel> StreamReader::Read(std::string_view& bytes, bool isLast) {
    if (!stream_) Open();
    do {
        auto result = isLast && bytes.empty() ? stream_->ConsumeOpenCommand() : stream_->Consume(bytes, false, isLast);
        bytes = result.remaining;
        if (!result.label) continue;
        auto& [text, label] = *result.label;
        FinishedLabel finished{std::move(label),
                               std::move(text),
                               result.hasRfidOperations,
                               ++labels_,
                               stream_->Format().value_or(0),
                               stream_->Current().LastCommandOffset(),
                               bytes.size()};
        tell_([format = finished.format, number = finished.number](Findings& findings) {
            findings.NumberLabel(format, number);
        });
        return finished;
    } while (!bytes.empty());
    return std::nullopt;
}

void StreamReader::End() {
    hasEnded_ = true;
    if (stream_ && stream_->Current().IsInFormat()) {
        tell_([end = stream_->Current().ConsumedBytes()](Findings& findings) {
            findings.AddNotice("the stream ends inside a format: ^XZ is missing", {}, end);
        });
    } else if (labels_ == 0) {
        tell_([](Findings& findings) { findings.AddNotice("the stream holds no printable label", {}); });
    }
}
