#include "library/FieldsJson.h"

#include <algorithm>

#include "frontend/stream/Ascii.h"

namespace {

using Scripting::PixelBox;
using ZplCore::ByteRange;
using ZplCore::FieldDetails;
using ZplCore::FieldPlace;

std::string_view NameOf(ZplOrientation orientation) {
    switch (orientation) {
        case ZplOrientation::Rotated: return "R";
        case ZplOrientation::Inverted: return "I";
        case ZplOrientation::BottomUp: return "B";
        case ZplOrientation::Normal: break;
    }
    return "N";
}

/// "row height" as "rowHeight".
std::string KeyOf(std::string_view name) {
    std::string key;
    for (std::size_t i = 0; i < name.size(); ++i) {
        if (name[i] == ' ') continue;
        key += i > 0 && name[i - 1] == ' ' ? ToAsciiUpper(name[i]) : name[i];
    }
    return key;
}

std::string ObjectNameOf(std::string path) {
    std::replace(path.begin(), path.end(), '/', ':');
    return path;
}

void WriteRange(JsonWriter& writer, ByteRange const& range) {
    writer.Key("offset").Int(static_cast<std::int64_t>(range.offset));
    writer.Key("length").Int(static_cast<std::int64_t>(range.length));
}

void WriteBox(JsonWriter& writer, std::string_view key, PixelBox const& box) {
    writer.Key(key).StartObject().Key("left").Int(box.left).Key("top").Int(box.top);
    writer.Key("width").Int(box.Width()).Key("height").Int(box.Height()).EndObject();
}

/// One field of a map.
class FieldWriter {
public:
    FieldWriter(JsonWriter& writer, LineIndex const& lines, ZplCore::FieldMap const& map)
        : writer_(writer), lines_(lines), map_(map) {}

    void Write(ZplCore::MappedField const& field, FieldDetails const& details) {
        writer_.StartObject().Key("kind").String(ZplCore::NameOf(details.notes.kind));
        writer_.Key("description").String(ZplCore::Describe(details));
        if (!details.text.empty()) writer_.Key("text").String(details.text);
        WritePlaces(details);
        if (details.number) writer_.Key("number").Int(*details.number);
        if (!details.prompt.empty()) writer_.Key("prompt").String(details.prompt);
        WriteOrigin(details);
        if (field.isReversed) writer_.Key("reversed").Bool(true);
        WriteFont(details);
        WriteSettings(details);
        WriteInk(field, details);
        if (auto const& verdict = field.verdict) {
            writer_.Key("scan").StartObject().Key("unreadable").Bool(verdict->isFault);
            writer_.Key("text").String(verdict->text).EndObject();
        }
        writer_.EndObject();
    }

private:
    void WriteInStream(std::string_view key, std::optional<ByteRange> const& range) {
        if (!range) return;
        writer_.Key(key).StartObject();
        WriteRange(writer_, *range);
        auto const [line, column] = lines_.PlaceOf(range->offset);
        writer_.Key("line").Int(static_cast<std::int64_t>(line));
        writer_.Key("column").Int(static_cast<std::int64_t>(column)).EndObject();
    }

    void WritePlaces(FieldDetails const& details) {
        bool const isFilled = !details.definition.IsEmpty();
        FieldPlace const& definition = isFilled ? details.definition : details.place;
        WriteInStream("commands", details.place.inStream);
        if (!isFilled && !definition.inFormat) return;
        writer_.Key("definition").StartObject();
        if (definition.inFormat) {
            writer_.Key("format").String(ObjectNameOf(definition.format));
            WriteRange(writer_, *definition.inFormat);
            WriteInStream("commands", map_.Sources().Find(definition.format, *definition.inFormat));
            WriteInStream("recall", definition.recall);
        } else {
            WriteInStream("commands", definition.inStream);
        }
        writer_.EndObject();
    }

    void WriteOrigin(FieldDetails const& details) {
        if (auto const& origin = details.origin) {
            writer_.Key("origin").StartObject();
            writer_.Key("command").String(origin->baseline == Baseline::Bottom ? "FT" : "FO");
            writer_.Key("x").Int(origin->x).Key("y").Int(origin->y).EndObject();
        }
        writer_.Key("orientation").String(NameOf(details.orientation));
    }

    void WriteFont(FieldDetails const& details) {
        if (!details.font) return;
        auto const& font = *details.font;
        writer_.Key("font").StartObject().Key("name").String(font.name);
        writer_.Key("height").Int(font.height).Key("width").Int(font.width);
        if (font.magnificationX != 0) {
            writer_.Key("magnificationX").Int(font.magnificationX);
            writer_.Key("magnificationY").Int(font.magnificationY);
        }
        writer_.EndObject();
    }

    void WriteSettings(FieldDetails const& details) {
        if (!details.notes.symbology.empty()) writer_.Key("symbology").String(details.notes.symbology);
        if (details.notes.settings.empty()) return;
        writer_.Key("settings").StartObject();
        for (auto const& setting : details.notes.settings) {
            writer_.Key(KeyOf(setting.name));
            if (auto const* number = std::get_if<std::int64_t>(&setting.value)) writer_.Int(*number);
            if (auto const* fraction = std::get_if<double>(&setting.value)) writer_.Double(*fraction);
            if (auto const* flag = std::get_if<bool>(&setting.value)) writer_.Bool(*flag);
            if (auto const* text = std::get_if<std::string>(&setting.value)) writer_.String(*text);
        }
        writer_.EndObject();
    }

    void WriteInk(ZplCore::MappedField const& field, FieldDetails const& details) {
        auto const& gauge = map_.Gauge();
        bool const isWhite = field.IsEmpty() && !field.ink.white.IsEmpty();
        if (field.IsEmpty() && !isWhite) return;
        if (isWhite) writer_.Key("white").Bool(true);
        PixelBox const drawn = gauge.OnPage(isWhite ? field.ink.white : field.ink.All());
        PixelBox const shown = drawn.Within(gauge.PrintArea());
        if (!shown.IsEmpty()) WriteBox(writer_, "box", shown);
        WriteBox(writer_, "drawn", drawn);
        if (field.isBarcode && !field.ink.image.IsEmpty()) WriteBox(writer_, "symbol", gauge.OnPage(field.ink.image));
        if (!details.font || !field.ink.baseline) return;
        auto const line = gauge.LineOnPage(*field.ink.baseline);
        writer_.Key("baseline").StartObject().Key("x1").Int(line.x1).Key("y1").Int(line.y1);
        writer_.Key("x2").Int(line.x2).Key("y2").Int(line.y2).EndObject();
    }

    JsonWriter& writer_;
    LineIndex const& lines_;
    ZplCore::FieldMap const& map_;
};

}  // namespace

PageFields FieldsJson::Of(ZplCore::FieldMap const& map) const {
    JsonWriter writer;
    writer.StartArray();
    FieldWriter fields(writer, lines_, map);
    for (auto const& field : map.Fields()) {
        if (field.details) fields.Write(field, *field.details);
    }
    writer.EndArray();
    return {map.Gauge().PixelsPerDot(), !map.Page().upright, map.Page().mirror, writer.Text()};
}

void PageFields::WriteMembers(JsonWriter& writer) const {
    writer.Key("pixelsPerDot").Double(pixelsPerDot).Key("turned").Bool(turned).Key("mirrored").Bool(mirrored);
    writer.Key("fields").Json(list);
}
