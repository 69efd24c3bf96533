#include "desktop/serve/PrinterEvent.h"

PrinterEvent::PrinterEvent(std::string line)
    : PrinterEvent(line, "notice", [&line](JsonWriter& writer) { writer.Key("text").String(line); }) {}

PrinterEvent::PrinterEvent(std::string line, std::string_view event, std::function<void(JsonWriter&)> const& write,
                           std::string sentence)
    : line_(std::move(line)), sentence_(std::move(sentence)) {
    JsonWriter writer;
    writer.StartObject().Key("event").String(event);
    write(writer);
    writer.EndObject();
    json_ = writer.Text();
}
