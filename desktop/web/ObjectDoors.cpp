#include "desktop/web/ObjectDoors.h"

#include <algorithm>
#include <fstream>

#include "desktop/web/Refusal.h"
#include "fields/graphics/StoredGraphics.h"
#include "foundation/Files.h"
#include "library/RowsPage.h"

namespace {

struct StoredObject {
    std::string device;  ///< a letter
    std::string name;    ///< with its extension
    std::filesystem::path file;
};

PrinterState::Printer PrinterOf(PrinterState const* state) {
    if (!state) throw Refusal(404, "there is no printer behind this; zpl serve has one");
    auto const about = state->About();
    if (!about) throw Refusal(503, "the printer is not ready yet; try again");
    return *about;
}

/// What is there, so that a name that somebody asks for is looked for among these and becomes no path.
std::vector<StoredObject> ObjectsIn(std::filesystem::path const& folder) {
    std::vector<StoredObject> objects;
    std::error_code error;
    for (std::filesystem::recursive_directory_iterator entry(folder, error), end; !error && entry != end;
         entry.increment(error)) {
        auto const& path = entry->path();
        std::error_code ignored;
        if (path.extension() == ".tmp" || !entry->is_regular_file(ignored)) continue;
        objects.push_back({path.parent_path().filename().string(), path.filename().string(), path});
    }
    std::sort(objects.begin(), objects.end(),
              [](auto const& a, auto const& b) { return std::tie(a.device, a.name) < std::tie(b.device, b.name); });
    return objects;
}

bool IsPicture(StoredObject const& object) {
    std::ifstream file(object.file, std::ios::binary);
    std::string begin(ZplCore::GraphicSignature.size(), '\0');
    return file.read(begin.data(), static_cast<std::streamsize>(begin.size())) && begin == ZplCore::GraphicSignature;
}

HttpAnswer ListObjects(std::filesystem::path const& folder) {
    JsonWriter writer;
    writer.StartObject().Key("objects").StartArray();
    for (auto const& object : ObjectsIn(folder)) {
        std::error_code error;
        auto const size = std::filesystem::file_size(object.file, error);
        if (error) continue;
        writer.StartObject().Key("device").String(object.device).Key("name").String(object.name);
        writer.Key("kind").String(IsPicture(object) ? "picture" : "format");
        writer.Key("bytes").Int(static_cast<std::int64_t>(size)).EndObject();
    }
    return {200, "application/json", writer.EndArray().EndObject().Text()};
}

StoredObject Find(std::filesystem::path const& folder, Visit const& visit) {
    for (auto& object : ObjectsIn(folder)) {
        if (object.device == visit.names[0] && object.name == visit.names[1]) return std::move(object);
    }
    throw Refusal(404, "there is no such object");
}

HttpAnswer Bytes(StoredObject const& object) {
    HttpAnswer answer{200, "application/octet-stream", {}};
    if (ReadFile(object.file, answer.body)) throw Refusal(404, "there is no such object any more");
    return answer;
}

/// Dot for dot.
HttpAnswer PictureOf(std::filesystem::path const& folder, StoredObject const& object) {
    auto const name = ObjectName::Parse(object.device + ':' + object.name, 'R', "", "");
    auto const picture = name ? ZplCore::LoadGraphic(folder, *name) : std::nullopt;
    if (!picture) throw Refusal(404, "there is no such picture any more");
    std::string rows(picture->rows.begin(), picture->rows.end());
    rows.resize(static_cast<std::size_t>(picture->bytesPerRow) * picture->rowCount);
    RowsPage page({static_cast<int>(picture->Width()), static_cast<int>(picture->Height())}, 0, std::move(rows));
    return {200, "image/png", std::string(page.PngFile())};
}

void Open(PrinterState const* state, DrawingDoors& drawing, Visit visit) {
    visit.TakeOnly("format");
    auto const printer = PrinterOf(state);
    auto const object = Find(printer.objects, visit);
    auto const* const format = visit.Parameter("format");
    if (!format) return visit.reply(Bytes(object));
    if (*format != "png") throw Refusal(400, "format is png, or left out for the bytes");
    if (IsPicture(object))
        return drawing.Make(visit, [folder = printer.objects, object] { return PictureOf(folder, object); });
    std::string const stream = "^XA^XF" + object.device + ':' + object.name + "^FS^XZ";
    drawing.DrawStored(printer.objects, {printer.dpi, printer.size, stream}, std::move(visit));
}

}  // namespace

std::vector<Door> ObjectDoors(PrinterState const* state, DrawingDoors& drawing) {
    std::string const one = "/printer/objects/{device}/{name}";
    return {{"GET", "/printer/objects",
             [state](Visit const& visit) { visit.reply(ListObjects(PrinterOf(state).objects)); }},
            {"GET", one, [state, &drawing](Visit visit) { Open(state, drawing, std::move(visit)); }},
            {"DELETE", one, [state](Visit const& visit) {
                 std::error_code error;
                 std::filesystem::remove(Find(PrinterOf(state).objects, visit).file, error);
                 if (error) throw Refusal(503, "the object cannot be removed: " + error.message());
                 visit.reply({204, {}, {}});
             }}};
}
