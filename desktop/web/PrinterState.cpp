#include "desktop/web/PrinterState.h"

#include <rapidjson/document.h>

#include <algorithm>
#include <chrono>
#include <cstdio>
#include <ctime>

#include "foundation/Base64.h"

namespace {

constexpr std::size_t MostJobs = 100;
constexpr std::size_t MostStreams = 200;
constexpr std::size_t MostStreamBytes = 64 << 20;
constexpr std::size_t MostEvents = 1000;
constexpr std::size_t MostEventBytes = 4 << 20;
constexpr std::size_t MostOfStream = 200;  // findings, and answers, that are kept of one
constexpr std::size_t MostPages = 10'000;  // of a job, of which the files are known

std::string Now() {
    std::time_t const now = std::chrono::system_clock::to_time_t(std::chrono::system_clock::now());
    std::tm local{};
    ::localtime_r(&now, &local);
    char text[32];
    std::strftime(text, sizeof text, "%Y-%m-%dT%H:%M:%S", &local);
    return text;
}

template <typename T>
void KeepSome(std::vector<T>& list, T value) {
    if (list.size() < MostOfStream) list.push_back(std::move(value));
}

std::size_t SizeOf(std::optional<std::string> const& bytes) { return bytes ? bytes->size() : 0; }

void WriteTexts(JsonWriter& writer, char const* name, std::vector<std::string> const& texts) {
    writer.Key(name).StartArray();
    for (auto const& text : texts) writer.String(text);
    writer.EndArray();
}

}  // namespace

/// The members of one line.
struct PrinterState::Fields {
    rapidjson::Document document;

    explicit Fields(std::string_view line) { document.Parse<rapidjson::kParseIterativeFlag>(line.data(), line.size()); }
    bool IsObject() const { return !document.HasParseError() && document.IsObject(); }
    std::string Text(char const* name) const {
        auto const found = document.FindMember(name);
        if (found == document.MemberEnd() || !found->value.IsString()) return {};
        return {found->value.GetString(), found->value.GetStringLength()};
    }
    std::int64_t Number(char const* name, std::int64_t otherwise = 0) const {
        auto const found = document.FindMember(name);
        return found == document.MemberEnd() || !found->value.IsInt64() ? otherwise : found->value.GetInt64();
    }
    bool Flag(char const* name) const {
        auto const found = document.FindMember(name);
        return found != document.MemberEnd() && found->value.IsTrue();
    }
    std::vector<std::string> Texts(char const* name) const {
        std::vector<std::string> texts;
        auto const found = document.FindMember(name);
        if (found == document.MemberEnd() || !found->value.IsArray()) return texts;
        for (auto const& each : found->value.GetArray()) {
            if (each.IsString()) texts.emplace_back(each.GetString(), each.GetStringLength());
        }
        return texts;
    }
};

void PrinterState::Take(std::string_view line) {
    Fields const fields(line);
    if (!fields.IsObject()) return;
    std::lock_guard const lock(mutex_);
    auto const event = fields.Text("event");
    // What only this program is told of is no event of the printer.
    if (event == "printer") return TakePrinter(fields);
    if (event == "state") return TakeState(fields);
    if (event == "stream") return TakeStream(fields);
    if (event == "finding") TakeFinding(fields, line);
    if (event == "answer") TakeAnswer(fields);
    if (event == "job") TakeJob(fields);
    if (event == "page") TakePage(fields);
    if (event == "done") TakeDone(fields);
    Keep(line);
}

void PrinterState::Keep(std::string_view line) {
    ++lastEvent_;
    events_.push_back({std::string(line.substr(0, line.rfind('}'))), Now()});
    eventBytes_ += events_.back().json.size();
    while (events_.size() > MostEvents || eventBytes_ > MostEventBytes) {
        eventBytes_ -= events_.front().json.size();
        events_.pop_front();
    }
}

void PrinterState::TakePrinter(Fields const& fields) {
    printer_ = Printer{fields.Text("address"), fields.Text("out"), fields.Text("objects"), fields.Text("size"),
                       static_cast<unsigned>(fields.Number("dpi"))};
    tag_ = fields.Text("tag");
    words_ = fields.Texts("words");
}

void PrinterState::TakeState(Fields const& fields) {
    isPaused_ = fields.Flag("paused");
    printing_ = fields.Text("printing");
    speed_ = fields.Text("speed");
}

void PrinterState::TakeFinding(Fields const& fields, std::string_view line) {
    auto const stream = StreamWith(static_cast<std::uint32_t>(fields.Number("packet")));
    if (stream) KeepSome(stream->findings, std::string(line));
}

void PrinterState::TakeAnswer(Fields const& fields) {
    auto const session = static_cast<int>(fields.Number("session", -1));
    auto const found = std::find_if(streams_.rbegin(), streams_.rend(),
                                    [session](auto const& each) { return each->session == session; });
    if (found != streams_.rend()) KeepSome((*found)->answers, fields.Text("text"));
}

/// A stream comes in as many lines as it has packets, each with the number of the first; the bytes with the last one.
void PrinterState::TakeStream(Fields const& fields) {
    auto const first = static_cast<std::uint32_t>(fields.Number("first"));
    if (streams_.empty() || streams_.back()->first != first) {
        streams_.push_back(std::make_shared<Stream>());
        streams_.back()->first = first;
        streams_.back()->session = static_cast<int>(fields.Number("session", -1));
    }
    Stream& stream = *streams_.back();
    stream.last = static_cast<std::uint32_t>(fields.Number("packet"));
    if (fields.document.HasMember("data")) {
        stream.bytes = Base64::Decode(fields.Text("data"));
        streamBytes_ += SizeOf(stream.bytes);
    }
    // Those that have become jobs stay with them.
    while (streams_.size() > MostStreams || (streamBytes_ > MostStreamBytes && streams_.size() > 1)) {
        streamBytes_ -= SizeOf(streams_.front()->bytes);
        streams_.pop_front();
    }
}

std::shared_ptr<PrinterState::Stream> PrinterState::StreamWith(std::uint32_t packet) {
    auto const found = std::find_if(streams_.rbegin(), streams_.rend(), [packet](auto const& each) {
        return packet >= each->first && packet <= each->last;
    });
    return packet == 0 || found == streams_.rend() ? nullptr : *found;
}

PrinterState::Job* PrinterState::Find(std::string const& id) {
    auto const found = std::find_if(jobs_.rbegin(), jobs_.rend(), [&id](Job const& job) { return job.id == id; });
    return found == jobs_.rend() ? nullptr : &*found;
}

void PrinterState::TakeJob(Fields const& fields) {
    Job job{fields.Text("job"),
            fields.Text("name"),
            Now(),
            "printing",
            static_cast<unsigned>(fields.Number("pages")),
            0,
            {},
            {}};
    Join(job, static_cast<std::uint32_t>(fields.Number("packet")));
    jobs_.push_back(std::move(job));
    if (jobs_.size() > MostJobs) jobs_.pop_front();
}

void PrinterState::Join(Job& job, std::uint32_t packet) {
    if (!job.stream) job.stream = StreamWith(packet);
}

void PrinterState::TakePage(Fields const& fields) {
    auto* const job = Find(fields.Text("job"));
    if (!job) return;
    auto const page = static_cast<unsigned>(fields.Number("page"));
    Join(*job, static_cast<std::uint32_t>(fields.Number("packet")));
    job->printed = std::max(job->printed, page);
    if (job->files.size() < MostPages) job->files[page] = fields.Text("path");
}

void PrinterState::TakeDone(Fields const& fields) {
    auto* const job = Find(fields.Text("job"));
    if (!job) return;
    Join(*job, static_cast<std::uint32_t>(fields.Number("packet")));
    job->printed = static_cast<unsigned>(fields.Number("printed"));
    job->state = job->printed < job->pages ? "given up" : "done";
}

std::optional<PrinterState::Printer> PrinterState::About() const {
    std::lock_guard const lock(mutex_);
    return printer_;
}

std::string PrinterState::StateJson() const {
    std::lock_guard const lock(mutex_);
    Printer const about = printer_.value_or(Printer());
    JsonWriter writer;
    writer.StartObject().Key("address").String(about.address).Key("dpi").Int(about.dpi).Key("size").String(about.size);
    writer.Key("out").String(about.out).Key("paused").Bool(isPaused_).Key("printing").String(printing_);
    writer.Key("speed").String(speed_).Key("tag").String(tag_);
    WriteTexts(writer, "words", words_);
    return writer.EndObject().Text();
}

void PrinterState::WriteJob(JsonWriter& writer, Job const& job) {
    static Stream const none;
    Stream const& stream = job.stream ? *job.stream : none;
    writer.StartObject().Key("id").String(job.id).Key("name").String(job.name).Key("state").String(job.state);
    writer.Key("time").String(job.time).Key("pages").Int(job.pages).Key("printed").Int(job.printed);
    writer.Key("stream").Bool(stream.bytes.has_value()).Key("findings").StartArray();
    for (auto const& finding : stream.findings) writer.Json(finding);
    writer.EndArray();
    WriteTexts(writer, "answers", stream.answers);
    writer.EndObject();
}

std::string PrinterState::JobsJson() const {
    std::lock_guard const lock(mutex_);
    JsonWriter writer;
    writer.StartObject().Key("jobs").StartArray();
    std::for_each(jobs_.rbegin(), jobs_.rend(), [&writer](Job const& job) { WriteJob(writer, job); });
    return writer.EndArray().EndObject().Text();
}

std::optional<std::string> PrinterState::JobJson(std::string const& id) const {
    std::lock_guard const lock(mutex_);
    auto const* const job = Find(id);
    if (!job) return std::nullopt;
    JsonWriter writer;
    WriteJob(writer, *job);
    return writer.Text();
}

std::optional<std::string> PrinterState::StreamOf(std::string const& id) const {
    std::lock_guard const lock(mutex_);
    auto const* const job = Find(id);
    return job && job->stream ? job->stream->bytes : std::nullopt;
}

std::string PrinterState::PageFile(std::string const& id, unsigned page) const {
    std::lock_guard const lock(mutex_);
    auto const* const job = Find(id);
    auto const found = job ? job->files.find(page) : decltype(job->files.end())();
    return job && found != job->files.end() ? found->second : std::string();
}

std::string PrinterState::LogJson() const {
    std::lock_guard const lock(mutex_);
    std::string text = R"({"events":[)";
    std::uint64_t number = lastEvent_ - events_.size();
    for (auto const& event : events_) {
        text += (&event == &events_.front() ? "" : ",") + event.json;
        text += ",\"id\":" + std::to_string(++number) + ",\"time\":\"" + event.time + "\"}";
    }
    return text + "]}";
}

std::uint64_t PrinterState::LastEvent() const {
    std::lock_guard const lock(mutex_);
    return lastEvent_;
}

std::string PrinterState::EventsAfter(std::uint64_t& last) const {
    constexpr std::size_t MostAtOnce = 256 << 10;
    std::lock_guard const lock(mutex_);
    std::string text;
    std::uint64_t const before = lastEvent_ - events_.size();
    if (last < before || last > lastEvent_) {
        last = last > lastEvent_ ? lastEvent_ : before;
        text = "event: lost\ndata: {}\n\n";
    }
    while (last < lastEvent_ && text.size() < MostAtOnce) {
        auto const& event = events_[static_cast<std::size_t>(last - before)];
        auto const number = std::to_string(++last);
        text +=
            "id: " + number + "\ndata: " + event.json + ",\"id\":" + number + ",\"time\":\"" + event.time + "\"}\n\n";
    }
    return text;
}
