#include "desktop/web/StreamReport.h"

#include "desktop/CommandLine.h"

StreamReport::StreamReport() {
    // A stream that was sent has no name: it is told as one from standard input.
    writer_.StartObject().Key("inputs").StartArray().StartObject().Key("input").String("-");
}

void StreamReport::BeginList(char const* name) {
    if (!inList_) writer_.Key(name).StartArray();
    inList_ = true;
}

void StreamReport::AddLabel(FinishedLabel const& label, std::optional<PageFields> const& fields) {
    BeginList("labels");
    writer_.StartObject().Key("label").Int(label.number).Key("copies").Int(label.label.Quantity());
    writer_.Key("offset").Int(static_cast<std::int64_t>(label.offset)).Key("text").String(label.text);
    if (fields) fields->WriteMembers(writer_);
    writer_.EndObject();
}

void StreamReport::AddPage(PageReport const& page, std::string const& picture) {
    BeginList("pages");
    page.WriteMembers(writer_.StartObject());
    if (!picture.empty()) writer_.Key("picture").String(picture);
    writer_.EndObject();
    size_ += picture.size();
}

std::string StreamReport::Text(Findings const& findings) {
    if (inList_) writer_.EndArray();
    WriteFindings(writer_.Key("findings"), findings.List());
    auto const code = inList_ ? ExitCode::Success : ExitCode::NoLabel;
    return writer_.EndObject().EndArray().Key("exitCode").Int(static_cast<int>(code)).EndObject().Text();
}
