#include "jobhost/model/NetworkResponse.h"

#include <rapidjson/document.h>

#include "foundation/Json.h"

namespace zpl {

std::string NetworkResponse::Create(Status status, std::optional<std::string> data) {
    JsonWriter writer;
    writer.StartObject().Key("State").Int(static_cast<int>(status));
    if (data) writer.Key("Data").String(*data);
    return writer.EndObject().Text();
}

std::optional<NetworkResponse> NetworkResponse::Parse(std::string const& text) {
    rapidjson::Document document;
    if (!ReadJson(text, document) || !document.IsObject()) return std::nullopt;
    auto const state = document.FindMember("State");
    if (state == document.MemberEnd() || !state->value.IsInt()) return std::nullopt;
    NetworkResponse response{static_cast<Status>(state->value.GetInt()), std::nullopt};
    if (auto const data = document.FindMember("Data"); data != document.MemberEnd()) {
        if (!data->value.IsString()) return std::nullopt;
        response.data.emplace(data->value.GetString(), data->value.GetStringLength());
    }
    return response;
}

}  // namespace zpl
