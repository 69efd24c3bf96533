#include "jobhost/model/FindingMessage.h"

#include <charconv>

namespace Zpl::Host {

namespace {

/// The words that a person reads do not get longer.
void Cut(std::string& text) {
    constexpr std::size_t Longest = 500;
    if (text.size() <= Longest) return;
    text.resize(Longest);
    text += "...";
}

}  // namespace

std::string FindingMessage::Text() const {
    FindingMessage told = *this;
    Cut(told.job);
    Cut(told.finding.text);
    JsonWriter writer;
    writer.StartObject().Key("session").Int(session).Key("job").String(told.job);
    told.finding.WriteMembers(writer);
    writer.EndObject();
    return writer.Text();
}

std::optional<FindingMessage> FindingMessage::Parse(std::string const& text) {
    FindingMessage message;
    std::optional<Finding::Kind> kind;
    bool const whole = ReadJsonSettings(text, [&](std::string_view name, std::string_view value) {
        std::uint64_t number = 0;
        std::from_chars(value.data(), value.data() + value.size(), number);
        Finding& finding = message.finding;
        if (name == "session") message.session = static_cast<unsigned>(number);
        if (name == "job") message.job = value;
        if (name == "kind") kind = KindNamed(value);
        if (name == "text") finding.text = value;
        if (name == "label") finding.label = static_cast<unsigned>(number);
        if (name == "times") finding.times = static_cast<unsigned>(number);
        if (name == "offset") finding.offset = number;
        if (name == "line") finding.line = number;
        if (name == "column") finding.column = number;
    });
    if (!whole || !kind) return std::nullopt;
    message.finding.kind = *kind;
    return message;
}

}  // namespace Zpl::Host
