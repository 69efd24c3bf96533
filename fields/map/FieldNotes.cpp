#include "fields/map/FieldNotes.h"

#include <array>
#include <charconv>

namespace ZplCore {

namespace {

std::string Words(FieldSetting const& setting) {
    std::string const name(setting.name);
    if (auto const* flag = std::get_if<bool>(&setting.value)) return *flag ? name : "no " + name;
    std::string value;
    if (auto const* text = std::get_if<std::string>(&setting.value)) value = *text;
    if (auto const* number = std::get_if<std::int64_t>(&setting.value)) value = std::to_string(*number);
    if (auto const* fraction = std::get_if<double>(&setting.value)) {
        std::array<char, 32> digits{};
        value.assign(digits.data(), std::to_chars(digits.data(), digits.data() + digits.size(), *fraction).ptr);
    }
    std::string words = name + ' ' + value;
    return setting.unit.empty() ? words : words + ' ' + std::string(setting.unit);
}

}  // namespace

std::string_view NameOf(FieldKind kind) {
    switch (kind) {
        case FieldKind::Text: return "text";
        case FieldKind::TextBlock: return "text block";
        case FieldKind::Barcode: return "barcode";
        case FieldKind::Graphic: return "graphic";
        case FieldKind::RecalledPicture: return "recalled picture";
        case FieldKind::Box: return "box";
        case FieldKind::Line: return "line";
        case FieldKind::Circle: return "circle";
        case FieldKind::Ellipse: return "ellipse";
        case FieldKind::Diagonal: return "diagonal";
        case FieldKind::GraphicSymbol: return "graphic symbol";
        case FieldKind::Tag: break;
    }
    return "tag";
}

std::string Describe(FieldNotes const& notes) {
    std::string words(notes.symbology.empty() ? NameOf(notes.kind) : notes.symbology);
    for (auto const& setting : notes.settings) words += ", " + Words(setting);
    return words;
}

}  // namespace ZplCore
