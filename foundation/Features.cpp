#include "foundation/Features.h"

#include <rapidjson/document.h>

#include "foundation/AppSettings.h"
#include "foundation/Files.h"

Features& Features::GetInstance() {
    static Features instance(AppSettings::GetInstance().SystemFeaturesFilePath(),
                             AppSettings::GetInstance().SystemFeaturesFolder());
    return instance;
}

Features::Features(std::filesystem::path const& file, std::filesystem::path const& folder) {
    AddFeaturesFromFile(file);
    std::error_code error;
    for (auto const& entry : std::filesystem::directory_iterator(folder, error)) AddFeaturesFromFile(entry.path());
}

void Features::AddFeaturesFromFile(std::filesystem::path const& file) {
    std::string const text = ReadRegularFile(file);
    rapidjson::Document document;
    document.Parse(text.data(), text.size());
    if (document.HasParseError() || !document.IsObject() || !document.HasMember("Features")) return;
    auto const& list = document["Features"];
    if (!list.IsArray()) return;
    for (auto const& name : list.GetArray()) {
        if (name.IsString()) Add({name.GetString(), name.GetStringLength()});
    }
}
