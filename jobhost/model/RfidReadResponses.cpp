#include "jobhost/model/RfidReadResponses.h"

#include <rapidjson/document.h>

#include "foundation/Json.h"

std::optional<std::vector<RfidReadResponse>> ParseRfidReadResponses(std::string_view text) {
    rapidjson::Document document;
    if (!ReadJson(text, document) || !document.IsArray()) return std::nullopt;
    std::vector<RfidReadResponse> responses;
    for (auto const& entry : document.GetArray()) {
        if (!entry.IsObject()) return std::nullopt;
        auto const number = entry.FindMember("Sequence");
        auto const data = entry.FindMember("Data");
        if (number == entry.MemberEnd() || !number->value.IsUint()) return std::nullopt;
        if (data == entry.MemberEnd() || !data->value.IsString()) return std::nullopt;
        responses.push_back({number->value.GetUint(), {data->value.GetString(), data->value.GetStringLength()}});
    }
    return responses;
}

std::string RfidReadResponsesText(std::vector<RfidReadResponse> const& responses) {
    JsonWriter writer;
    writer.StartArray();
    for (auto const& response : responses)
        writer.StartObject().Key("Sequence").Int(response.sequence).Key("Data").String(response.data).EndObject();
    writer.EndArray();
    return writer.Text();
}
