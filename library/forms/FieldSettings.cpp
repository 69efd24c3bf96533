#include "library/forms/FieldSettings.h"

#include <rapidjson/document.h>

#include <algorithm>
#include <optional>
#include <stdexcept>

#include "foundation/Files.h"
#include "foundation/Json.h"
#include "foundation/Quoted.h"

namespace {

constexpr int Version = 1;

std::string TextOf(rapidjson::Value const& object, char const* name) {
    auto const member = object.FindMember(name);
    bool const isText = member != object.MemberEnd() && member->value.IsString();
    return isText ? std::string(member->value.GetString(), member->value.GetStringLength()) : std::string();
}

unsigned NumberOf(rapidjson::Value const& object, char const* name) {
    auto const member = object.FindMember(name);
    return member != object.MemberEnd() && member->value.IsUint() ? member->value.GetUint() : 0;
}

bool FlagOf(rapidjson::Value const& object, char const* name) {
    auto const member = object.FindMember(name);
    return member != object.MemberEnd() && member->value.IsBool() && member->value.GetBool();
}

TemplateField FieldOf(rapidjson::Value const& object) {
    return {.number = NumberOf(object, "number"),
            .prompt = TextOf(object, "prompt"),
            .name = TextOf(object, "name"),
            .value = TextOf(object, "value"),
            .checks = {.isRequired = FlagOf(object, "required"),
                       .digitsOnly = FlagOf(object, "digits"),
                       .least = NumberOf(object, "least"),
                       .most = NumberOf(object, "most")}};
}

/// Nothing if the text is none of this version.
std::optional<std::vector<TemplateField>> Read(std::string const& text) {
    rapidjson::Document document;
    if (!ReadJson(text, document) || !document.IsObject()) return std::nullopt;
    auto const list = document.FindMember("fields");
    if (NumberOf(document, "version") != Version || list == document.MemberEnd() || !list->value.IsArray())
        return std::nullopt;
    std::vector<TemplateField> fields;
    for (auto const& entry : list->value.GetArray()) {
        if (!entry.IsObject()) return std::nullopt;
        fields.push_back(FieldOf(entry));
    }
    return fields;
}

std::string Write(std::vector<TemplateField> const& fields) {
    JsonWriter writer;
    writer.StartObject().Key("version").Int(Version).Key("fields").StartArray();
    for (auto const& field : fields) {
        auto const& checks = field.checks;
        writer.StartObject().Key("number").Int(field.number).Key("prompt").String(field.prompt);
        writer.Key("name").String(field.name).Key("value").String(field.value);
        writer.Key("required").Bool(checks.isRequired).Key("digits").Bool(checks.digitsOnly);
        writer.Key("least").Int(static_cast<std::int64_t>(checks.least));
        writer.Key("most").Int(static_cast<std::int64_t>(checks.most)).EndObject();
    }
    return writer.EndArray().EndObject().Text();
}

}  // namespace

FieldSettings::FieldSettings(std::filesystem::path const& formatsFolder)
    : folder_(formatsFolder.parent_path() / "TemplateFields") {}

std::filesystem::path FieldSettings::FileOf(StoredFormat const& format) const {
    return folder_ / format.device / (format.name + ".json");
}

FieldSettings::Settled FieldSettings::Of(StoredFormat const& format, std::vector<TemplateField> fields) const {
    Settled settled;
    auto const text = ReadRegularFile(FileOf(format));
    if (text.empty()) return {std::move(fields), {}};
    auto const read = Read(text);
    if (!read) return {std::move(fields), {"the settings of the fields cannot be read and are left out"}};
    for (auto const& setting : *read) {
        auto const place = std::find_if(fields.begin(), fields.end(),
                                        [&](auto const& field) { return field.number == setting.number; });
        if (place == fields.end() || place->prompt != setting.prompt) {
            settled.remarks.push_back("the settings of " + Quoted(setting.name) +
                                      " are for another version of this format and are left out");
            continue;
        }
        settled.fields.push_back(setting);
        if (setting.name.empty()) settled.fields.back().name = place->name;
        fields.erase(place);
    }
    std::move(fields.begin(), fields.end(), std::back_inserter(settled.fields));
    return settled;
}

void FieldSettings::Save(StoredFormat const& format, std::vector<TemplateField> const& fields) const {
    auto const file = FileOf(format);
    std::error_code error;
    std::filesystem::create_directories(file.parent_path(), error);
    if (!error) error = WriteFileAtomically(file, Write(fields), WholeAfter::PowerLoss);
    if (error) throw std::runtime_error("the settings of the fields are not saved: " + error.message());
}
