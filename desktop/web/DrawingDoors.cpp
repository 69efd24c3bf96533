#include "desktop/web/DrawingDoors.h"

#include <algorithm>

#include "desktop/OptionValues.h"
#include "desktop/web/FormData.h"
#include "desktop/web/Refusal.h"
#include "desktop/web/RequestStream.h"
#include "desktop/web/UrlText.h"

namespace {

constexpr std::size_t MostDrawings = 64;
constexpr std::chrono::seconds LongestDrawing{10};

struct MediaType {
    std::string_view format;
    std::string_view type;
};

constexpr MediaType MediaTypes[] = {
    {"png", "image/png"}, {"pdf", "application/pdf"}, {"pbm", "image/x-portable-bitmap"}, {"json", "application/json"}};

PageFormat const* FormatNamed(std::string_view name) {
    auto const found = std::find_if(std::begin(PageFormats), std::end(PageFormats),
                                    [name](PageFormat const& format) { return format.name == name; });
    return found == std::end(PageFormats) ? nullptr : found;
}

std::string TypeOf(PageFormat const* format) {
    auto const found = std::find_if(std::begin(MediaTypes), std::end(MediaTypes), [format](MediaType const& each) {
        return each.format == (format ? format->name : "json");
    });
    return std::string(found->type);
}

/// Reads a value in the words of the command line's option of the same name.
template <typename Read>
auto ValueOf(Read const& read) {
    try {
        return read();
    } catch (UsageError const& error) {
        std::string_view const text = error.what();
        throw Refusal(400, std::string(text.starts_with("--") ? text.substr(2) : text));
    }
}

unsigned NumberOf(std::string_view name, std::string const& text, unsigned low, unsigned high) {
    return ValueOf([&] { return OptionValues::Number(name, text, low, high); });
}

unsigned Resolution(std::string_view name, std::string const& text) {
    if (text == "203" || text == "300" || text == "600") return NumberOf(name, text, 203, 600);
    throw Refusal(400, std::string(name) + " is 203, 300 or 600");
}

unsigned Rotation(std::string_view name, std::string const& text) {
    if (text == "0" || text == "90" || text == "180" || text == "270") return NumberOf(name, text, 0, 270);
    throw Refusal(400, std::string(name) + " is 0, 90, 180 or 270");
}

void SetSize(std::string const& text, DeskSettings& desk) {
    std::tie(desk.widthInches, desk.heightInches) =
        ValueOf([&] { return OptionValues::Inches(OptionValues::Size(text), desk.designDpi); });
}

/// One of the formats that the client takes, the one that it names first, as browsers and programs put them.
std::string_view FormatAccepted(std::string_view accept) {
    if (accept.empty()) return "png";
    while (!accept.empty()) {
        auto range = TakeUpTo(accept, ',');
        auto type = TakeUpTo(range, ';');
        type.remove_prefix(std::min(type.find_first_not_of(" \t"), type.size()));
        type = type.substr(0, type.find_last_not_of(" \t") + 1);
        if (type == "*/*" || type == "image/*") return "png";
        for (auto const& each : MediaTypes) {
            if (each.type == type) return each.format;
        }
    }
    throw Refusal(406, "labels come as image/png, application/pdf or application/json");
}

void AskForFormat(std::string_view name, StreamOrder& order) {
    order.format = FormatNamed(name);
    if (!order.format && name != "json") throw Refusal(400, "format is png, pbm, pdf or json");
    if (!order.format && order.rotation != 0)
        throw Refusal(400, "a report is not turned, since its boxes are those of the page as it is drawn");
}

void RequireOnePage(StreamOrder const& order) {
    if (order.page || !order.format || order.format->isDocument) return;
    throw Refusal(400, "a picture holds one page; for all of them ask for a PDF");
}

/// The resolution that is meant by a number of dots for a millimetre.
unsigned DpiOf(std::string_view density) {
    if (density == "8dpmm") return 203;
    if (density == "12dpmm") return 300;
    if (density == "24dpmm") return 600;
    throw Refusal(400, "printers have 8dpmm, 12dpmm or 24dpmm here, not " + std::string(density));
}

/// Which label is asked for, from 0; nothing for all of them.
std::optional<unsigned> IndexOf(std::string_view text) {
    if (text.empty()) return std::nullopt;
    constexpr unsigned MostLabels = 1'000'000;
    return NumberOf("the index of the label", std::string(text), 0, MostLabels);
}

HttpAnswer AnswerTo(StreamOrder const& order) {
    auto drawn = Fulfil(order);
    HttpAnswer answer{200, TypeOf(order.format), std::move(drawn.content)};
    answer.fields = {{"X-Total-Count", std::to_string(drawn.labels)}};
    return answer;
}

}  // namespace

DrawingDoors::DrawingDoors(MachineSettings machine, unsigned threads)
    : machine_(std::move(machine)),
      sessions_([this](std::function<void()> work) { return pool_.Add(std::move(work)); }),
      pool_(threads, MostDrawings) {}

std::vector<Door> DrawingDoors::List() {
    std::string const labels = "/v1/printers/{density}/labels/{size}/{rest...}";
    return {{"POST", "/render", [this](Visit visit) { Render(std::move(visit)); }},
            {"POST", "/check", [this](Visit visit) { Check(std::move(visit)); }},
            {"POST", labels, [this](Visit visit) { Labels(std::move(visit)); }},
            {"GET", labels, [this](Visit visit) { LabelsByAddress(std::move(visit)); }}};
}

/// What `/render` and `/check` have in common.
StreamOrder DrawingDoors::OrderOf(Visit const& visit) const {
    StreamOrder order;
    order.desk.machine = machine_;
    order.deadline = StreamOrder::Clock::now() + LongestDrawing;
    if (auto const* const dpi = visit.Parameter("dpi")) order.desk.designDpi = Resolution("dpi", *dpi);
    order.desk.printerDpi = order.desk.designDpi;
    if (auto const* const dpi = visit.Parameter("printer-dpi")) order.desk.printerDpi = Resolution("printer-dpi", *dpi);
    if (auto const* const size = visit.Parameter("size")) SetSize(*size, order.desk);
    if (auto const* const time = visit.Parameter("time"))
        order.desk.time = ValueOf([&] { return OptionValues::Time(*time); });
    try {
        if (auto const* const tag = visit.Parameter("tag")) order.desk.tag = VirtualTag::Parse(*tag);
    } catch (std::invalid_argument const& error) {
        throw Refusal(400, "tag " + std::string(error.what()));
    }
    return order;
}

void DrawingDoors::Render(Visit visit) {
    visit.TakeOnly("dpi printer-dpi size format page copies rotate session picture time tag");
    StreamOrder order = OrderOf(visit);
    if (auto const* const rotation = visit.Parameter("rotate")) order.rotation = Rotation("rotate", *rotation);
    auto const* const format = visit.Parameter("format");
    AskForFormat(format ? *format : "png", order);
    if (!order.format || order.format->isDocument) order.page.reset();
    constexpr unsigned Most = 99'999'999;
    if (auto const* const page = visit.Parameter("page"))
        order.page = *page == "all" ? std::nullopt : std::optional(NumberOf("page", *page, 1, Most));
    if (auto const* const copies = visit.Parameter("copies")) order.copies = NumberOf("copies", *copies, 1, Most);
    if (auto const* const picture = visit.Parameter("picture"))
        order.hasPictures = NumberOf("picture", *picture, 0, 1) == 1;
    RequireOnePage(order);
    order.stream = StreamOf(visit.request);
    Draw(std::move(order), std::move(visit));
}

void DrawingDoors::Check(Visit visit) {
    visit.TakeOnly("dpi printer-dpi size session time tag");
    StreamOrder order = OrderOf(visit);
    order.format = nullptr;
    order.draws = false;
    order.stream = StreamOf(visit.request);
    Draw(std::move(order), std::move(visit));
}

void DrawingDoors::Labels(Visit visit) {
    std::string_view rest = visit.names.back();
    std::string const index(TakeUpTo(rest, '/'));
    if (!rest.empty()) throw Refusal(404, "behind the index of the label stands nothing; the stream is the body");
    auto stream = StreamOf(visit.request);
    DrawLabel(std::move(visit), index, std::move(stream));
}

void DrawingDoors::LabelsByAddress(Visit visit) {
    std::string_view rest = visit.names.back();
    std::string const index(TakeUpTo(rest, '/'));
    // A question mark of the stream, if it was not encoded, has parted it.
    std::string const encoded = std::string(rest) + (visit.request.query.empty() ? "" : "?" + visit.request.query);
    auto stream = DecodePercent(encoded);
    if (!stream) throw Refusal(400, "the stream in the address holds a percent sign that is not encoded as %25");
    if (stream->empty()) throw Refusal(400, "the stream stands in the address behind the index, or is sent by POST");
    DrawLabel(std::move(visit), index, std::move(*stream));
}

void DrawingDoors::DrawLabel(Visit visit, std::string_view place, std::string stream) {
    StreamOrder order;
    order.desk.machine = machine_;
    order.deadline = StreamOrder::Clock::now() + LongestDrawing;
    order.desk.designDpi = order.desk.printerDpi = DpiOf(visit.names[0]);
    SetSize(visit.names[1], order.desk);
    if (auto const rotation = visit.request.Field("x-rotation"); !rotation.empty())
        order.rotation = Rotation("X-Rotation", std::string(rotation));
    AskForFormat(FormatAccepted(visit.request.Field("accept")), order);
    auto const index = IndexOf(place);
    order.page = index ? std::optional(*index + 1) : std::nullopt;
    RequireOnePage(order);
    order.stream = std::move(stream);
    visit.query.clear();
    Draw(std::move(order), std::move(visit));
}

void DrawingDoors::Draw(StreamOrder order, Visit visit) {
    auto const* const named = visit.Parameter("session");
    auto draw = [order = std::make_shared<StreamOrder>(std::move(order)), path = visit.request.path,
                 reply = visit.reply](std::filesystem::path const& folder) {
        order->desk.machine.formatsFolder = folder;
        reply(AnswerOf(path, [&] { return AnswerTo(*order); }));
    };
    if (named) return sessions_.Run(*named, std::move(draw));
    sessions_.EndIdle();
    Start([draw = std::move(draw)] { draw({}); });
}

void DrawingDoors::Start(std::function<void()> work) {
    if (!pool_.Add(std::move(work))) throw Refusal(429, "too much is being drawn at once; try again");
}

void DrawingDoors::DrawStored(std::filesystem::path const& objects, Label label, Visit visit) {
    auto const order = std::make_shared<StreamOrder>();
    order->desk.machine = machine_;
    order->desk.designDpi = order->desk.printerDpi = label.dpi;
    SetSize(label.size, order->desk);
    order->stream = std::move(label.stream);
    order->deadline = StreamOrder::Clock::now() + LongestDrawing;
    Make(visit, [order, objects] {
        TemporaryFolder const copy(std::filesystem::temp_directory_path(), "zpl-objects-");
        // Second names of the files suffice: nobody writes in a stored object, another one takes its place.
        using enum std::filesystem::copy_options;
        std::error_code error;
        std::filesystem::copy(objects, copy.Make(), recursive | create_hard_links, error);
        if (error) std::filesystem::copy(objects, copy.Path(), recursive | overwrite_existing);
        order->desk.machine.formatsFolder = copy.Path();
        return AnswerTo(*order);
    });
}

void DrawingDoors::Make(Visit const& visit, std::function<HttpAnswer()> make) {
    Start([make = std::move(make), path = visit.request.path, reply = visit.reply] { reply(AnswerOf(path, make)); });
}
