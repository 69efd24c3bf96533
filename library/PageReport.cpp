#include "library/PageReport.h"

#include "rfid/TagOperations.h"

namespace {

void WriteTagOperations(JsonWriter& writer, std::vector<RfidOperation> const& operations) {
    writer.Key("tagOperations").StartArray();
    for (auto const& operation : operations) {
        writer.StartObject().Key("operation").String(TagOperations::NameOf(operation.type));
        writer.Key("arguments").StartObject();
        for (auto const& [name, value] : operation.arguments) writer.Key(name).String(value);
        writer.EndObject().EndObject();
    }
    writer.EndArray();
}

}  // namespace

void PageReport::WriteMembers(JsonWriter& writer) const {
    writer.Key("width").Int(width).Key("height").Int(height);
    writer.Key("label").Int(label).Key("copy").Int(copy).Key("copies").Int(copies);
    if (!tagOperations.empty()) WriteTagOperations(writer, tagOperations);
    if (fields) fields->WriteMembers(writer);
}
