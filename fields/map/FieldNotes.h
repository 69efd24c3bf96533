#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <type_traits>
#include <variant>
#include <vector>

namespace ZplCore {

/// What a person would call a field.
enum class FieldKind {
    Text,
    TextBlock,
    Barcode,
    Graphic,          ///< a picture in the stream
    RecalledPicture,  ///< a stored one
    Box,
    Line,
    Circle,
    Ellipse,
    Diagonal,
    GraphicSymbol,  ///< registered, trade and approval marks
    Tag,            ///< for the tag encoder, draws nothing
};

/// "text block".
std::string_view NameOf(FieldKind kind);

/// One setting of a field, as it is in force: a number of what `unit` says, or a word.
struct FieldSetting {
    std::string_view name;
    std::variant<std::int64_t, double, bool, std::string> value;
    std::string_view unit = {};
};

/// What kind of field one is, and how it is set.
struct FieldNotes {
    FieldKind kind = FieldKind::Text;
    std::string_view symbology = {};  ///< of a barcode
    std::vector<FieldSetting> settings = {};
    std::optional<std::string> text = {};  ///< UTF-8, where the field says something else than its data

    template <typename Value>
    FieldNotes& Add(std::string_view name, Value value, std::string_view unit = {}) {
        if constexpr (std::is_same_v<Value, bool> || std::is_same_v<Value, double>) {
            settings.push_back({name, value, unit});
        } else if constexpr (std::is_same_v<Value, char>) {
            settings.push_back({name, std::string(1, value), unit});
        } else if constexpr (std::is_integral_v<Value>) {
            settings.push_back({name, std::int64_t{value}, unit});
        } else {
            settings.push_back({name, std::string(value), unit});
        }
        return *this;
    }
};

/// All of it in one line: "Code 128, mode A, module 3 dots, height 100 dots, text line below".
std::string Describe(FieldNotes const& notes);

}  // namespace ZplCore
