#include "library/EmbeddedDesk.h"

#include <limits>
#include <utility>

struct EmbeddedDesk::Core {
    explicit Core(DeskSettings const& settings) : desk(settings), tag(settings.tag) {
        desk.SetHostReceiver([this](std::string_view bytes) {
            if (takeAnswer) takeAnswer(bytes);
        });
    }

    void RefuseIfBusy() const {
        if (isBusy) throw Misuse("the desk is at work; call it when the receiver of answers has returned");
    }

    Desk desk;
    std::optional<VirtualTag> tag;
    TakeAnswer takeAnswer;
    bool isBusy = false;
};

/// A stream with what was found in it; its labels hold it.
struct EmbeddedStream {
    EmbeddedStream(std::shared_ptr<EmbeddedDesk::Core> desk, EmbeddedDesk::Detail detail)
        : core(std::move(desk)),
          mapsFields(detail == EmbeddedDesk::Detail::Everything),
          reader(
              core->desk, [this](Telling const& telling) { telling(findings); }, detail) {}

    static constexpr std::size_t MostLines = 1'000'000;  // the last ones; of findings before them no line is told

    std::shared_ptr<EmbeddedDesk::Core> core;
    bool mapsFields;
    Findings findings;
    FieldsJson fields{LineIndex(MostLines)};
    StreamReader reader;
};

namespace {

/// A call that reads or draws, and hears what is reported about its stream. A receiver of answers cannot make another.
class Turn {
public:
    explicit Turn(EmbeddedStream& stream)
        : hearing_((stream.core->RefuseIfBusy(), stream.reader)), core_(*stream.core) {
        core_.isBusy = true;
    }
    ~Turn() { core_.isBusy = false; }
    Turn(Turn const&) = delete;
    Turn& operator=(Turn const&) = delete;

private:
    StreamReader::Hearing hearing_;
    EmbeddedDesk::Core& core_;
};

/// Sets the characters of commands as a label has found them, for as long as it is drawn.
class CharactersOfLabel {
public:
    CharactersOfLabel(Scripting::PrinterContextInterface& printer, CommandCharacters const& characters)
        : printer_(printer), before_(CommandCharacters::Of(printer)), differs_(before_ != characters) {
        if (differs_) Set(characters);
    }
    ~CharactersOfLabel() {
        if (differs_) Set(before_);
    }
    CharactersOfLabel(CharactersOfLabel const&) = delete;
    CharactersOfLabel& operator=(CharactersOfLabel const&) = delete;

private:
    void Set(CommandCharacters const& characters) {
        printer_.SetFormatPrefix(characters.format);
        printer_.SetControlPrefix(characters.control);
        printer_.SetDelimiter(characters.delimiter);
    }

    Scripting::PrinterContextInterface& printer_;
    CommandCharacters before_;
    bool differs_;
};

}  // namespace

EmbeddedLabel::EmbeddedLabel(std::shared_ptr<EmbeddedStream> stream, FinishedLabel finished)
    : stream_(std::move(stream)),
      text_(std::move(finished.text)),
      task_(TaskOf(std::move(finished.label), finished.number, finished.format, stream_->core->desk.Printer(),
                   std::numeric_limits<unsigned>::max(), stream_->mapsFields ? &stream_->fields : nullptr)) {}

std::unique_ptr<EmbeddedPage> EmbeddedLabel::Draw(unsigned copy) {
    if (copy >= task_.quantity)
        throw Misuse("a label of " + std::to_string(task_.quantity) + " copies has no copy " + std::to_string(copy) +
                     "; they are counted from 0");
    Turn const turn(*stream_);
    CharactersOfLabel const characters(stream_->core->desk.Printer(), task_.characters);
    auto& reader = stream_->reader;
    auto& target = *Scripting::PageKeeper::Of(&reader.Target());
    target.KeepPages();
    reader.SetDrawnFormat(task_.format);
    if (copy < next_) next_ = 0;
    DrawnCopy drawn;
    try {
        while (next_ <= copy) {
            drawn = DrawCopy(task_, next_, {}, stream_->core->tag);
            ++next_;
            Answer();
        }
    } catch (...) {
        next_ = 0;
        reader.SetDrawnFormat({});
        throw;
    }
    reader.SetDrawnFormat({});
    auto page = target.TakePage();
    auto const size = page->PageSize();
    return std::make_unique<EmbeddedPage>(std::move(page), ReportOf(task_, size, std::move(drawn)));
}

/// As when the copy has been printed, once.
void EmbeddedLabel::Answer() {
    if (next_ <= answered_) return;
    answered_ = next_;
    task_.label.LogTagOperations();
    task_.label.SendEndOfPageNetworkResponses();
    if (answered_ == task_.quantity) task_.label.SendEndOfFormatNetworkResponses();
}

EmbeddedDesk::EmbeddedDesk(DeskSettings const& settings, Detail detail)
    : core_(std::make_shared<Core>(settings)), detail_(detail) {}

void EmbeddedDesk::StartStream() {
    core_->desk.StartStream();
    stream_ = std::make_shared<EmbeddedStream>(core_, detail_);
    isFinished_ = isEnded_ = false;
}

void EmbeddedDesk::Feed(std::string_view bytes) {
    core_->RefuseIfBusy();
    if (isFinished_) {
        ReadAll();
        StartStream();
    }
    stream_->fields.Append(bytes);
    Turn const turn(*stream_);
    if (!HasLabel() && waiting_.empty()) {
        if (auto label = stream_->reader.Read(bytes, false))
            labels_.push_back(std::make_unique<EmbeddedLabel>(stream_, *std::move(label)));
    }
    if (read_ > waiting_.size() / 2) waiting_.erase(0, std::exchange(read_, 0));
    waiting_ += bytes;
}

void EmbeddedDesk::Finish() {
    if (isFinished_) return;
    core_->RefuseIfBusy();
    isFinished_ = true;
    if (!HasLabel()) ReadOn();
}

std::unique_ptr<EmbeddedLabel> EmbeddedDesk::NextLabel() {
    if (!HasLabel()) ReadOn();
    if (!HasLabel()) return nullptr;
    auto label = std::move(labels_.front());
    labels_.pop_front();
    return label;
}

/// Reads what waits, up to the end of the next label; and behind the last byte what the end of the stream completes.
void EmbeddedDesk::ReadOn() {
    if (isEnded_ || (waiting_.empty() && !isFinished_)) return;
    Turn const turn(*stream_);
    auto bytes = std::string_view(waiting_).substr(read_);
    auto label = stream_->reader.Read(bytes, isFinished_);
    read_ = waiting_.size() - bytes.size();
    if (bytes.empty()) {
        waiting_.clear();
        read_ = 0;
    }
    bool const goesOn = label || !isFinished_;
    if (label) labels_.push_back(std::make_unique<EmbeddedLabel>(stream_, *std::move(label)));
    if (goesOn) return;
    isEnded_ = true;
    stream_->reader.End();
}

void EmbeddedDesk::ReadAll() {
    while (!isEnded_) ReadOn();
}

std::string EmbeddedDesk::Findings() const {
    JsonWriter writer;
    WriteFindings(writer, stream_ ? stream_->findings.List(stream_->fields.Lines()) : std::vector<Finding>());
    return writer.Text();
}

void EmbeddedDesk::SetAnswerReceiver(TakeAnswer take) { core_->takeAnswer = std::move(take); }
