#include "jobhost/model/StreamToPrint.h"

#include <charconv>

#include "foundation/Base64.h"
#include "foundation/Json.h"

namespace Zpl::Host {

namespace {

/// The members that both have, and those that only an answer has.
std::optional<StreamTaken> Read(std::string_view object) {
    StreamTaken read;
    bool const isObject = ReadJsonSettings(object, [&](std::string_view name, std::string_view value) {
        if (name == "Sender") read.sender = value;
        if (name == "Number") std::from_chars(value.data(), value.data() + value.size(), read.number);
        if (name == "Error") read.error = value;
        if (name == "Missing") read.isMissing = value == "true";
    });
    if (!isObject || read.sender.empty() || read.number == 0) return std::nullopt;
    return read;
}

}  // namespace

std::string StreamToPrint::Text() const {
    JsonWriter header;
    header.StartObject().Key("Sender").String(sender).Key("Number").Int(number).EndObject();
    return Base64::Encode(header.Text() + bytes);
}

std::optional<StreamToPrint> StreamToPrint::Parse(std::string const& text) {
    auto decoded = Base64::Decode(text);
    auto const brace = decoded ? decoded->find('}') : std::string::npos;
    if (brace == std::string::npos) return std::nullopt;
    auto const header = Read(std::string_view(*decoded).substr(0, brace + 1));
    if (!header) return std::nullopt;
    decoded->erase(0, brace + 1);
    return StreamToPrint{header->sender, header->number, std::move(*decoded)};
}

std::string StreamTaken::Text() const {
    JsonWriter writer;
    writer.StartObject().Key("Sender").String(sender).Key("Number").Int(number);
    if (!error.empty()) writer.Key("Error").String(error);
    if (isMissing) writer.Key("Missing").Bool(true);
    return writer.EndObject().Text();
}

std::optional<StreamTaken> StreamTaken::Parse(std::string const& text) { return Read(text); }

}  // namespace Zpl::Host
