#pragma once

#include <rapidjson/fwd.h>

#include <cstdint>
#include <memory>
#include <string>
#include <string_view>

/// Writes one JSON text (RFC 8259). Text that is no valid UTF-8 is written with U+FFFD in place of what is wrong.
class JsonWriter {
public:
    JsonWriter();
    ~JsonWriter();

    JsonWriter& StartObject();
    JsonWriter& EndObject();
    JsonWriter& StartArray();
    JsonWriter& EndArray();
    JsonWriter& Key(std::string_view name);
    JsonWriter& String(std::string_view text);
    JsonWriter& Int(std::int64_t number);
    /// A finite number.
    JsonWriter& Double(double number);
    JsonWriter& Bool(bool value);

    /// A value that is JSON already.
    JsonWriter& Json(std::string_view text);

    /// The text written so far.
    std::string Text() const;

private:
    struct State;
    std::unique_ptr<State> state_;
};

/// Reads one JSON text that came from elsewhere. False if it is none, or if a text in it is no UTF-8 or holds half a
/// surrogate pair, since such a text could not be written again as it is.
bool ReadJson(std::string_view text, rapidjson::Document& document);

/// Reads the members of one flat settings object `{"name": value, ...}`; calls `take(name, value)` for each member with
/// the value as text (strings as they are, numbers and bools in JSON's words). False if the text is no JSON object.
template <typename Take>
bool ReadJsonSettings(std::string_view text, Take&& take);

namespace JsonDetail {
using TakeMember = void (*)(void* self, std::string_view name, std::string_view value);
bool ReadSettings(std::string_view text, TakeMember take, void* self);
}  // namespace JsonDetail

template <typename Take>
bool ReadJsonSettings(std::string_view text, Take&& take) {
    return JsonDetail::ReadSettings(
        text,
        [](void* self, std::string_view name, std::string_view value) {
            (*static_cast<std::remove_reference_t<Take>*>(self))(name, value);
        },
        &take);
}
