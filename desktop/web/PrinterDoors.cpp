#include "desktop/web/PrinterDoors.h"

#include <rapidjson/document.h>

#include <algorithm>
#include <charconv>

#include "desktop/web/Refusal.h"
#include "desktop/web/RequestStream.h"
#include "foundation/Files.h"

namespace {

constexpr unsigned Threads = 2;
constexpr std::size_t MostWorks = 16;
constexpr char const* Json = "application/json";
constexpr char const* Bytes = "application/octet-stream";

/// What the printer tells from now on, or from an event that the client names.
class EventFeed final : public HttpFeed {
public:
    EventFeed(PrinterState const& state, std::uint64_t last) : state_(state), last_(last) {}

    std::string Next() override { return state_.EventsAfter(last_); }

private:
    PrinterState const& state_;
    std::uint64_t last_;
};

template <typename T>
std::optional<T> NumberIn(std::string_view text) {
    T number{};
    auto const [end, error] = std::from_chars(text.data(), text.data() + text.size(), number);
    return error == std::errc() && end == text.data() + text.size() ? std::optional(number) : std::nullopt;
}

/// A text member of the JSON object in a body. Throws Refusal if there is none.
std::string MemberOf(std::string const& body, char const* name) {
    rapidjson::Document document;
    document.Parse<rapidjson::kParseIterativeFlag>(body.data(), body.size());
    bool const isObject = !document.HasParseError() && document.IsObject();
    auto const found = isObject ? document.FindMember(name) : rapidjson::Value::MemberIterator();
    if (!isObject || found == document.MemberEnd() || !found->value.IsString())
        throw Refusal(400, "the body is a JSON object with the text \"" + std::string(name) + "\"");
    return {found->value.GetString(), found->value.GetStringLength()};
}

Refusal NotReady() { return {503, "the printer is not ready yet; try again"}; }

Refusal NoJob() { return {404, "there is no such job; the last 100 are kept"}; }

HttpAnswer JobAnswer(PrinterState const& state, Visit const& visit) {
    auto job = state.JobJson(visit.names[0]);
    if (!job) throw NoJob();
    return {200, Json, std::move(*job)};
}

HttpAnswer StreamAnswer(PrinterState const& state, Visit const& visit) {
    auto stream = state.StreamOf(visit.names[0]);
    if (!stream)
        throw Refusal(404, "the stream of this job is not kept; those of the last 100 jobs are, up to 1 MiB each");
    return {200, Bytes, std::move(*stream)};
}

HttpAnswer PageAnswer(PrinterState const& state, Visit const& visit) {
    auto const page = NumberIn<unsigned>(visit.names[1]);
    std::string const file = page ? state.PageFile(visit.names[0], *page) : std::string();
    HttpAnswer answer{200, "image/png", {}};
    if (file.empty() || ReadFile(file, answer.body)) throw Refusal(404, "there is no such page, or its file is gone");
    return answer;
}

}  // namespace

PrinterDoors::PrinterDoors(PrinterState* state, std::function<bool(std::string const&)> say)
    : state_(state), say_(std::move(say)), pool_(Threads, MostWorks) {}

PrinterState& PrinterDoors::State() const {
    if (!state_) throw Refusal(404, "there is no printer behind this; zpl serve has one");
    return *state_;
}

/// A door that answers at once.
Door PrinterDoors::Quick(char const* method, char const* path, Make make) {
    return {method, path, [this, make = std::move(make)](Visit visit) {
                auto const reply = visit.reply;
                reply(make(State(), visit));
            }};
}

/// A door that waits for the printer.
Door PrinterDoors::Slow(char const* method, char const* path, Make make) {
    return {method, path, [this, make = std::move(make)](Visit visit) {
                State();
                auto const shared = std::make_shared<Visit>(std::move(visit));
                bool const isTaken = pool_.Add([this, shared, make] {
                    shared->reply(AnswerOf(shared->request.path, [&] { return make(State(), *shared); }));
                });
                if (!isTaken) throw Refusal(429, "too much is being sent to the printer at once; try again");
            }};
}

std::shared_ptr<PrinterClient> PrinterDoors::Client() {
    std::lock_guard const lock(mutex_);
    auto const about = State().About();
    if (!about) throw NotReady();
    if (!client_) client_ = std::make_shared<PrinterClient>(about->address);
    return client_;
}

std::vector<Door> PrinterDoors::List() {
    using State = PrinterState;
    std::vector<Door> doors;
    doors.push_back(Quick("GET", "/printer", [](State& state, Visit&) {
        if (!state.About()) throw NotReady();
        return HttpAnswer{200, Json, state.StateJson()};
    }));
    doors.push_back(Quick("GET", "/printer/jobs", [](State& state, Visit&) {
        return HttpAnswer{200, Json, state.JobsJson()};
    }));
    doors.push_back(Quick("GET", "/printer/log", [](State& state, Visit&) {
        return HttpAnswer{200, Json, state.LogJson()};
    }));
    doors.push_back(Quick("GET", "/printer/jobs/{job}", JobAnswer));
    doors.push_back(Quick("GET", "/printer/jobs/{job}/stream", StreamAnswer));
    doors.push_back(Quick("GET", "/printer/jobs/{job}/pages/{page}", PageAnswer));
    doors.push_back({"GET", "/printer/events", [this](Visit visit) { Events(std::move(visit)); }});
    doors.push_back(Quick("POST", "/printer/command", [this](State&, Visit& visit) { return Command(visit); }));
    doors.push_back(Slow("POST", "/printer/print", [this](State&, Visit& visit) { return Print(visit); }));
    doors.push_back(Slow("POST", "/printer/reset", [this](State&, Visit&) {
        Client()->Print("~JR");
        return HttpAnswer{204, {}, {}};
    }));
    for (auto& door : HelperDoors()) doors.push_back(std::move(door));
    return doors;
}

HttpAnswer PrinterDoors::Print(Visit& visit) {
    Client()->Print(StreamOf(visit.request));
    return {204, {}, {}};
}

HttpAnswer PrinterDoors::Command(Visit const& visit) const {
    if (!visit.request.Field("content-type").starts_with(Json))
        throw Refusal(415, "a word is sent as application/json");
    std::string const word = MemberOf(visit.request.body, "word");
    constexpr char const* Letters = "abcdefghijklmnopqrstuvwxyz0123456789-. ";
    constexpr std::size_t Longest = 64;
    if (word.empty() || word.size() > Longest || word.find_first_not_of(Letters) != std::string::npos || word == "quit")
        throw Refusal(400, "the printer has no such word");
    if (!say_(word)) throw Refusal(503, "the printer does not listen");
    return {204, {}, {}};
}

void PrinterDoors::Events(Visit visit) const {
    auto& state = State();
    auto const last = NumberIn<std::uint64_t>(visit.request.Field("last-event-id"));
    HttpAnswer answer{200, "text/event-stream", {}};
    answer.feed = std::make_unique<EventFeed>(state, last.value_or(state.LastEvent()));
    visit.reply(std::move(answer));
}

// ---- What pages look for at a local helper

std::string PrinterDoors::DeviceJson() const {
    auto const about = State().About();
    JsonWriter writer;
    writer.StartObject().Key("deviceType").String("printer").Key("uid").String(about ? about->address : "");
    writer.Key("provider").String("zplhost").Key("name").String("ZplHost").Key("connection").String("network");
    writer.Key("version").Int(2).Key("manufacturer").String("ZplHost");
    return writer.EndObject().Text();
}

std::vector<Door> PrinterDoors::HelperDoors() {
    using State = PrinterState;
    std::vector<Door> doors;
    doors.push_back(Quick("GET", "/available", [this](State&, Visit&) {
        return HttpAnswer{200, Json, "{\"printer\":[" + DeviceJson() + "]}"};
    }));
    doors.push_back(Quick("GET", "/default", [this](State&, Visit& visit) {
        auto const* const type = visit.Parameter("type");
        return HttpAnswer{200, Json, type && *type != "printer" ? "{}" : DeviceJson()};
    }));
    doors.push_back(Slow("POST", "/write", [this](State&, Visit& visit) {
        Client()->Write(MemberOf(visit.request.body, "data"));
        return HttpAnswer{200, Json, "{}"};
    }));
    doors.push_back(Slow("POST", "/read", [this](State&, Visit&) {
        return HttpAnswer{200, "text/plain; charset=utf-8", Client()->Read()};
    }));
    return doors;
}
