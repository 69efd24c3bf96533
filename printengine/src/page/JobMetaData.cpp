#include "PrintEngine/Printing/JobMetaData.h"

#include <rapidjson/document.h>

#include "PrintEngine/Printing/JobFileSystemStrings.h"
#include "foundation/Files.h"
#include "foundation/Json.h"

namespace PrintEngine::Printing {

std::string JobMetaData::Text() const {
    JsonWriter writer;
    writer.StartObject().Key("JobName").String(jobName).Key("TotalPages").Int(totalPages);
    writer.Key("FirstPage").Int(firstPage).Key("PauseIndices").StartArray();
    for (unsigned const index : pauseIndices) writer.Int(index);
    writer.EndArray().Key("Flag").Bool(flag).Key("PauseAfterJob").Bool(pauseAfterJob);
    if (density) writer.Key("Density").Int(*density);
    writer.Key("Serial").Int(static_cast<std::int64_t>(serial)).EndObject();
    return writer.Text();
}

std::optional<JobMetaData> JobMetaData::Parse(std::string_view text) {
    rapidjson::Document document;
    document.Parse<rapidjson::kParseIterativeFlag>(text.data(), text.size());
    if (document.HasParseError() || !document.IsObject()) return std::nullopt;
    JobMetaData data;
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
