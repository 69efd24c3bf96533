#include "propertybus/PiclMessage.h"

#include <rapidjson/document.h>

#include <algorithm>
#include <iterator>

#include "foundation/Json.h"

namespace {

using Type = PiclMessage::Type;

struct TypeRow {
    Type type;
    std::string_view name;
    bool hasAddress;
    bool hasValue;
};

constexpr TypeRow Types[] = {
    {Type::Hello, "hello", false, true},         {Type::Publish, "publish", true, true},
    {Type::Subscribe, "subscribe", true, false}, {Type::Set, "set", true, true},
    {Type::Changed, "changed", true, true},      {Type::Absent, "absent", true, false},
    {Type::Taken, "taken", true, false},         {Type::Refused, "refused", false, true},
};

/// A member that is a text; false if it is missing or something else.
bool ReadText(rapidjson::Value const& object, char const* name, std::string& text) {
    auto const member = object.FindMember(name);
    if (member == object.MemberEnd() || !member->value.IsString()) return false;
    text.assign(member->value.GetString(), member->value.GetStringLength());
    return true;
}

}  // namespace

std::string PiclMessage::Text() const {
    auto const& row = *std::find_if(std::begin(Types), std::end(Types), [&](auto const& r) { return r.type == type; });
    JsonWriter writer;
    writer.StartObject().Key("type").String(row.name);
    if (row.hasAddress) {
        writer.Key("component").String(address.component).Key("group").String(address.group);
        writer.Key("property").String(address.property);
    }
    if (row.hasValue) writer.Key("value").String(value);
    if (type == Type::Publish)
        writer.Key("label").String(label).Key("kind").String(kind).Key("archived").Bool(archived);
    return writer.EndObject().Text();
}

std::optional<PiclMessage> PiclMessage::Parse(std::string_view line) {
    rapidjson::Document document;
    if (!ReadJson(line, document) || !document.IsObject()) return std::nullopt;
    std::string name;
    if (!ReadText(document, "type", name)) return std::nullopt;
    auto const row = std::find_if(std::begin(Types), std::end(Types), [&](auto const& r) { return r.name == name; });
    if (row == std::end(Types)) return std::nullopt;

    PiclMessage message;
    message.type = row->type;
    auto& [component, group, property] = message.address;
    if (row->hasAddress && (!ReadText(document, "component", component) || !ReadText(document, "group", group) ||
                            !ReadText(document, "property", property))) {
        return std::nullopt;
    }
    if (row->hasValue && !ReadText(document, "value", message.value)) return std::nullopt;
    if (row->type == Type::Publish) {
        auto const archived = document.FindMember("archived");
        if (!ReadText(document, "label", message.label) || !ReadText(document, "kind", message.kind) ||
            archived == document.MemberEnd() || !archived->value.IsBool()) {
            return std::nullopt;
        }
        message.archived = archived->value.GetBool();
    }
    return message;
}

unsigned PiclLines::Append(std::string_view bytes, std::function<void(std::string_view)> const& take) {
    unsigned skipped = 0;
    while (!bytes.empty()) {
        auto const end = bytes.find('\n');
        std::string_view const piece = bytes.substr(0, end);
        if (!skipping_ && open_.size() + piece.size() > longest_) {
            skipping_ = true;
            ++skipped;
            std::string().swap(open_);
        }
        bool const ends = end != std::string_view::npos;
        bytes.remove_prefix(ends ? end + 1 : bytes.size());
        if (skipping_) {
            skipping_ = !ends;
        } else if (!ends) {
            open_ += piece;
        } else if (open_.empty()) {
            take(piece);
        } else {
            open_ += piece;
            std::string line;
            line.swap(open_);
            take(line);
        }
    }
    return skipped;
}
