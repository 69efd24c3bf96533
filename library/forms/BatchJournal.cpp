#include "library/forms/BatchJournal.h"

#include <rapidjson/document.h>

#include <stdexcept>
#include <system_error>

#include "foundation/Files.h"
#include "foundation/Json.h"

namespace {

std::string_view TextOf(rapidjson::Value const& object, char const* name) {
    auto const member = object.FindMember(name);
    if (member == object.MemberEnd() || !member->value.IsString()) return {};
    return {member->value.GetString(), member->value.GetStringLength()};
}

std::uint64_t NumberOf(rapidjson::Value const& object, char const* name) {
    auto const member = object.FindMember(name);
    return member != object.MemberEnd() && member->value.IsUint64() ? member->value.GetUint64() : 0;
}

}  // namespace

std::string BatchRecord::StateOf(std::filesystem::path const& list) {
    std::error_code error;
    auto const size = std::filesystem::file_size(list, error);
    auto const time = std::filesystem::last_write_time(list, error).time_since_epoch().count();
    return error ? "" : std::to_string(size) + '-' + std::to_string(time);
}

std::optional<BatchRecord> BatchJournal::Read() const {
    rapidjson::Document document;
    auto const text = ReadRegularFile(file_);
    if (!ReadJson(text, document) || !document.IsObject()) return std::nullopt;
    BatchRecord record;
    record.list = TextOf(document, "list");
    record.listState = TextOf(document, "listState");
    record.rows = NumberOf(document, "rows");
    record.labels = NumberOf(document, "labels");
    record.taken = NumberOf(document, "taken");
    record.underWay = NumberOf(document, "underWay");
    auto const formats = document.FindMember("formats");
    if (record.list.empty() || formats == document.MemberEnd() || !formats->value.IsArray()) return std::nullopt;
    for (auto const& entry : formats->value.GetArray()) {
        if (!entry.IsObject()) return std::nullopt;
        record.formats.push_back({std::string(TextOf(entry, "device")), std::string(TextOf(entry, "name"))});
    }
    return record;
}

void BatchJournal::Write(BatchRecord const& record) const {
    JsonWriter writer;
    writer.StartObject().Key("list").String(record.list).Key("listState").String(record.listState);
    writer.Key("rows").Int(static_cast<std::int64_t>(record.rows));
    writer.Key("labels").Int(static_cast<std::int64_t>(record.labels));
    writer.Key("taken").Int(static_cast<std::int64_t>(record.taken));
    writer.Key("underWay").Int(static_cast<std::int64_t>(record.underWay)).Key("formats").StartArray();
    for (auto const& format : record.formats)
        writer.StartObject().Key("device").String(format.device).Key("name").String(format.name).EndObject();
    auto const text = writer.EndArray().EndObject().Text();
    if (auto const error = WriteFileAtomically(file_, text, WholeAfter::PowerLoss))
        throw std::runtime_error("how far the batch has come cannot be kept: " + error.message());
}

void BatchJournal::Remove() const {
    std::error_code error;  // what is left is overwritten by the next batch
    std::filesystem::remove(file_, error);
}
