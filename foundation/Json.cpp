#include "foundation/Json.h"

#include <rapidjson/document.h>
#include <rapidjson/stringbuffer.h>
#include <rapidjson/writer.h>
#include <utf8.h>

#include <algorithm>
#include <charconv>
#include <iterator>

namespace {

/// Whether an escape of a low surrogate stands without that of a high one in front; what is read must be JSON. The
/// library refuses only the other half alone.
bool HasLoneLowSurrogate(std::string_view text) {
    std::size_t behindHigh = text.npos;
    for (auto at = text.find('\\'); at < text.size(); at = text.find('\\', at)) {
        constexpr std::size_t Head = 2;
        constexpr std::size_t Digits = 4;
        unsigned unit = 0;
        if (text.substr(at, Head) == "\\u") {
            auto const* const digits = text.data() + at + Head;
            std::from_chars(digits, std::min(digits + Digits, text.data() + text.size()), unit, 16);
        }
        bool const isHigh = unit >= 0xD800 && unit < 0xDC00;
        if (unit >= 0xDC00 && unit < 0xE000 && at != behindHigh) return true;
        at += unit == 0 ? Head : Head + Digits;
        if (isHigh) behindHigh = at;
    }
    return false;
}

}  // namespace

struct JsonWriter::State {
    rapidjson::StringBuffer buffer;
    rapidjson::Writer<rapidjson::StringBuffer> writer{buffer};
};

JsonWriter::JsonWriter() : state_(std::make_unique<State>()) {}
JsonWriter::~JsonWriter() = default;

JsonWriter& JsonWriter::StartObject() { return state_->writer.StartObject(), *this; }
JsonWriter& JsonWriter::EndObject() { return state_->writer.EndObject(), *this; }
JsonWriter& JsonWriter::StartArray() { return state_->writer.StartArray(), *this; }
JsonWriter& JsonWriter::EndArray() { return state_->writer.EndArray(), *this; }
JsonWriter& JsonWriter::Int(std::int64_t number) { return state_->writer.Int64(number), *this; }
JsonWriter& JsonWriter::Double(double number) { return state_->writer.Double(number), *this; }
JsonWriter& JsonWriter::Bool(bool value) { return state_->writer.Bool(value), *this; }

JsonWriter& JsonWriter::Json(std::string_view text) {
    return state_->writer.RawValue(text.data(), text.size(), rapidjson::kObjectType), *this;
}

JsonWriter& JsonWriter::Key(std::string_view name) {
    state_->writer.Key(name.data(), static_cast<rapidjson::SizeType>(name.size()));
    return *this;
}

JsonWriter& JsonWriter::String(std::string_view text) {
    std::string valid;
    if (utf8::find_invalid(text.begin(), text.end()) != text.end()) {
        utf8::replace_invalid(text.begin(), text.end(), std::back_inserter(valid));
        text = valid;
    }
    state_->writer.String(text.data(), static_cast<rapidjson::SizeType>(text.size()));
    return *this;
}

std::string JsonWriter::Text() const { return {state_->buffer.GetString(), state_->buffer.GetSize()}; }

bool ReadJson(std::string_view text, rapidjson::Document& document) {
    // Iterative: a text of many brackets must not use up the stack.
    document.Parse<rapidjson::kParseIterativeFlag | rapidjson::kParseValidateEncodingFlag>(text.data(), text.size());
    return !document.HasParseError() && !HasLoneLowSurrogate(text);
}

bool JsonDetail::ReadSettings(std::string_view text, TakeMember take, void* self) {
    rapidjson::Document document;
    document.Parse(text.data(), text.size());
    if (document.HasParseError() || !document.IsObject()) return false;
    for (auto const& member : document.GetObject()) {
        std::string_view const name(member.name.GetString(), member.name.GetStringLength());
        if (member.value.IsString()) {
            take(self, name, {member.value.GetString(), member.value.GetStringLength()});
        } else {
            rapidjson::StringBuffer buffer;
            rapidjson::Writer<rapidjson::StringBuffer> writer(buffer);
            member.value.Accept(writer);
            take(self, name, {buffer.GetString(), buffer.GetSize()});
        }
    }
    return true;
}
