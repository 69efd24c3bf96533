#include "PrintEngine/Printing/JobMetaData.h"

#include <rapidjson/document.h>

#include "PrintEngine/Printing/JobFileSystemStrings.h"
#include "foundation/Files.h"
#include "foundation/Json.h"

namespace PrintEngine::Printing {

namespace {

void WriteTagOperations(JsonWriter& writer, std::vector<PageRangeRfidOperations> const& ranges) {
    writer.Key("TagOperations").StartArray();
    for (auto const& range : ranges) {
        writer.StartObject().Key("FirstPage").Int(range.firstPage).Key("LastPage").Int(range.lastPage);
        writer.Key("Operations").StartArray();
        for (auto const& operation : range.operations) {
            writer.StartObject().Key("Type").Int(operation.type).Key("Arguments").StartObject();
            for (auto const& [name, value] : operation.arguments) writer.Key(name).String(value);
            writer.EndObject().EndObject();
        }
        writer.EndArray().EndObject();
    }
    writer.EndArray();
}

std::string TextOf(rapidjson::Value const& value) { return {value.GetString(), value.GetStringLength()}; }

unsigned UintOf(rapidjson::Value const& object, char const* name) {
    auto const found = object.FindMember(name);
    return found != object.MemberEnd() && found->value.IsUint() ? found->value.GetUint() : 0;
}

/// The entries of an array member that are objects.
template <typename Take>
void ForObjects(rapidjson::Value const& object, char const* name, Take take) {
    auto const found = object.FindMember(name);
    if (found == object.MemberEnd() || !found->value.IsArray()) return;
    for (auto const& entry : found->value.GetArray()) {
        if (entry.IsObject()) take(entry);
    }
}

std::vector<PageRangeRfidOperations> ReadTagOperations(rapidjson::Value const& document) {
    std::vector<PageRangeRfidOperations> ranges;
    ForObjects(document, "TagOperations", [&](auto const& entry) {
        auto& range =
            ranges.emplace_back(PageRangeRfidOperations{UintOf(entry, "FirstPage"), UintOf(entry, "LastPage"), {}});
        ForObjects(entry, "Operations", [&](auto const& written) {
            auto& operation = range.operations.emplace_back(RfidOperation{UintOf(written, "Type"), {}});
            auto const arguments = written.FindMember("Arguments");
            if (arguments == written.MemberEnd() || !arguments->value.IsObject()) return;
            for (auto const& argument : arguments->value.GetObject()) {
                if (argument.value.IsString())
                    operation.arguments.emplace_back(TextOf(argument.name), TextOf(argument.value));
            }
        });
    });
    return ranges;
}

}  // namespace

std::string JobMetaData::Text() const {
    JsonWriter writer;
    writer.StartObject().Key("JobName").String(jobName).Key("TotalPages").Int(totalPages);
    writer.Key("FirstPage").Int(firstPage).Key("PauseIndices").StartArray();
    for (unsigned const index : pauseIndices) writer.Int(index);
    writer.EndArray().Key("Flag").Bool(flag).Key("PauseAfterJob").Bool(pauseAfterJob);
    if (density) writer.Key("Density").Int(*density);
    if (!tagOperations.empty()) WriteTagOperations(writer, tagOperations);
    writer.Key("Serial").Int(static_cast<std::int64_t>(serial)).EndObject();
    return writer.Text();
}

std::optional<JobMetaData> JobMetaData::Parse(std::string_view text) {
    rapidjson::Document document;
    if (!ReadJson(text, document) || !document.IsObject()) return std::nullopt;
    JobMetaData data;
    data.tagOperations = ReadTagOperations(document);
    for (auto const& member : document.GetObject()) {
        std::string_view const name(member.name.GetString(), member.name.GetStringLength());
        auto const& value = member.value;
        if (name == "JobName" && value.IsString()) data.jobName = {value.GetString(), value.GetStringLength()};
        if (name == "TotalPages" && value.IsUint()) data.totalPages = value.GetUint();
        if (name == "FirstPage" && value.IsUint()) data.firstPage = value.GetUint();
        if (name == "Flag" && value.IsBool()) data.flag = value.GetBool();
        if (name == "PauseAfterJob" && value.IsBool()) data.pauseAfterJob = value.GetBool();
        if (name == "Density" && value.IsInt()) data.density = value.GetInt();
        if (name == "Serial" && value.IsUint64()) data.serial = value.GetUint64();
        if (name != "PauseIndices" || !value.IsArray()) continue;
        for (auto const& index : value.GetArray()) {
            if (index.IsUint()) data.pauseIndices.push_back(index.GetUint());
        }
    }
    return data;
}

std::optional<JobMetaData> JobMetaData::Read(std::filesystem::path const& jobPath) {
    std::string text;
    if (ReadFile(jobPath / JobFileSystemStrings::MetaDataFileName, text)) return std::nullopt;
    return Parse(text);
}

std::error_code JobMetaData::Write(std::filesystem::path const& jobPath) const {
    return WriteFileAtomically(jobPath / JobFileSystemStrings::MetaDataFileName, Text());
}

}  // namespace PrintEngine::Printing
