#include "plugin/InstalledPart.h"

#include <cstdlib>

#include "foundation/AppSettings.h"

PrintEngine::PartManagement::LabelPart InstalledPart() {
    auto const inches = [](char const* name, double fallback) {
        double const value = std::strtod(AppSettings::GetInstance().Value(name).c_str(), nullptr);
        return value > 0 ? value : fallback;
    };
    return {inches("LabelWidth", 4), inches("LabelHeight", 6)};
}
