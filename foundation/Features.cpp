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
    if (document.HasParseError() || !document.IsObject()) return;
    auto const list = document.FindMember("Features");
    if (list == document.MemberEnd() || !list->value.IsArray()) return;
    for (auto const& name : list->value.GetArray()) {
        if (name.IsString()) Add({name.GetString(), name.GetStringLength()});
    }
}
