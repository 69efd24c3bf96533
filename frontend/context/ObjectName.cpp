#include "frontend/context/ObjectName.h"

#include <algorithm>

#include "frontend/stream/Ascii.h"

namespace {

constexpr std::string_view Devices = "REBAZ";
constexpr std::size_t LongestName = 16;
constexpr std::size_t LongestExtension = 3;

bool IsAsciiAlphanumeric(char c) { return (c >= 'A' && c <= 'Z') || (c >= '0' && c <= '9'); }

bool IsNameCharacter(char c) { return IsAsciiAlphanumeric(c) || c == '_' || c == '-'; }

}  // namespace

std::optional<ObjectName> ObjectName::Parse(std::string_view text, char defaultDevice, std::string_view defaultName,
                                            std::string_view defaultExtension) {
    ObjectName result{defaultDevice, {}, {}};
    if (NamesDevice(text)) {
        result.device = ToAsciiUpper(text[0]);
        text.remove_prefix(2);
    }
    auto const dot = text.find('.');
    result.name = text.substr(0, dot);
    if (dot != std::string_view::npos) result.extension = text.substr(dot + 1);
    // Hosts end names with blanks.
    while (!result.name.empty() && result.name.back() == ' ') result.name.pop_back();
    while (!result.extension.empty() && result.extension.back() == ' ') result.extension.pop_back();
    if (result.name.empty()) result.name = defaultName;
    if (result.extension.empty()) result.extension = defaultExtension;
    result.name = ToAsciiUpper(result.name);
    result.extension = ToAsciiUpper(result.extension);

    bool const allowed = Devices.find(result.device) != std::string_view::npos && !result.name.empty() &&
                         result.name.size() <= LongestName &&
                         std::all_of(result.name.begin(), result.name.end(), IsNameCharacter) &&
                         !result.extension.empty() && result.extension.size() <= LongestExtension &&
                         std::all_of(result.extension.begin(), result.extension.end(), IsAsciiAlphanumeric);
    if (!allowed) return std::nullopt;
    return result;
}

std::filesystem::path ObjectName::Path() const {
    return std::filesystem::path(std::string(1, device)) / (name + "." + extension);
}
