#include "library/forms/DrawnSettings.h"

#include <cstdint>
#include <string>
#include <variant>

std::optional<double> SettingOf(DrawnField const& field, std::string_view name) {
    for (auto const& setting : field.details.notes.settings) {
        if (setting.name != name) continue;
        if (auto const* whole = std::get_if<std::int64_t>(&setting.value)) return static_cast<double>(*whole);
        if (auto const* fraction = std::get_if<double>(&setting.value)) return *fraction;
    }
    return std::nullopt;
}

std::optional<unsigned> SizeOf(DrawnField const& field, std::string_view name) {
    auto const value = SettingOf(field, name);
    return value ? std::optional(static_cast<unsigned>(*value)) : std::nullopt;
}

std::optional<FieldTraits::TextLine> TextLineOf(DrawnField const& field) {
    for (auto const& setting : field.details.notes.settings) {
        auto const* word = std::get_if<std::string>(&setting.value);
        if (setting.name != "text line" || !word) continue;
        return *word == "none"    ? FieldTraits::TextLine::None
               : *word == "above" ? FieldTraits::TextLine::Above
                                  : FieldTraits::TextLine::Below;
    }
    return std::nullopt;
}
