#include "desktop/RenderReport.h"

#include <cstdio>

#include "rfid/TagOperations.h"

namespace {

constexpr std::string_view OutputLost = "standard output cannot be written";

}  // namespace

RenderReport::RenderReport(RenderOptions const& options)
    : json_(options.json),
      isQuiet_(options.isQuiet),
      hasLines_(!options.json && !options.isQuiet && options.outputFile != "-"),
      inputs_(options.inputs.size()) {
    if (json_) writer_.StartObject().Key("inputs").StartArray();
}

void RenderReport::StartInput(std::string const& name) {
    lead_ = inputs_ > 1 ? Printable(name) + ": " : "";
    if (!json_) return;
    writer_.StartObject().Key("input").String(name);
    inList_ = false;
}

void RenderReport::Page(RenderedPage const& page) {
    ++made_;
    if (!json_) {
        if (!hasLines_) return;
        auto const& report = page.report;
        std::string const place = page.page != 0 ? " page " + std::to_string(page.page) : "";
        std::string const times =
            page.prints.value_or(1) == 1 ? "" : "  prints " + std::to_string(*page.prints) + " times";
        std::printf("%s%s  %u x %u  copy %u of %u%s\n", page.path.c_str(), place.c_str(), report.width, report.height,
                    report.copy, report.copies, times.c_str());
        for (auto const& operation : report.tagOperations) {
            std::printf("  tag %s", std::string(TagOperations::NameOf(operation.type)).c_str());
            for (auto const& [name, value] : operation.arguments)
                std::printf(" %s=%s", name.c_str(), Printable(value).c_str());
            std::printf("\n");
        }
        return EndLine();
    }
    if (!inList_) writer_.Key("pages").StartArray();
    inList_ = true;
    writer_.StartObject().Key("path").String(page.path.string());
    if (page.page != 0) writer_.Key("page").Int(page.page);
    if (page.rotation != 0) writer_.Key("rotated").Int(page.rotation);
    if (page.prints) writer_.Key("prints").Int(*page.prints);
    page.report.WriteMembers(writer_);
    writer_.EndObject();
}

void RenderReport::Label(unsigned number, std::string const& text, unsigned copies, std::uint64_t offset,
                         std::optional<PageFields> const& fields) {
    ++made_;
    madeName_ = "label";
    if (!json_) {
        if (!hasLines_) return;
        std::printf("%slabel %u: %u %s, ends at byte %llu%s%s\n", lead_.c_str(), number, copies,
                    copies == 1 ? "copy" : "copies", static_cast<unsigned long long>(offset),
                    text.empty() ? "" : ", says ", Printable(text).c_str());
        return EndLine();
    }
    if (!inList_) writer_.Key("labels").StartArray();
    inList_ = true;
    writer_.StartObject().Key("label").Int(number).Key("copies").Int(copies);
    writer_.Key("offset").Int(static_cast<std::int64_t>(offset)).Key("text").String(text);
    if (fields) fields->WriteMembers(writer_);
    writer_.EndObject();
}

/// Each line goes out at once, so that a reader that has gone ends the run.
void RenderReport::EndLine() {
    if (std::fflush(stdout) == 0 && std::ferror(stdout) == 0) return;
    outputIsLost_ = true;
    throw OutputError(std::string(OutputLost));
}

void RenderReport::EndInput(Findings const& findings, bool everything) {
    if (!findings.List().empty()) ++withFindings_;
    if (!json_) {
        if (isQuiet_) return;
        std::fflush(stdout);
        for (auto const& finding : findings.List()) {
            if (finding.kind == Finding::Kind::SetupCommand && !everything) continue;
            std::fprintf(stderr, "zpl: %s%s\n", lead_.c_str(), finding.Describe().c_str());
        }
        return;
    }
    if (inList_) writer_.EndArray();
    WriteFindings(writer_.Key("findings"), findings.List());
    writer_.EndObject();
}

void RenderReport::Error(std::string const& line) {
    std::fflush(stdout);
    std::fprintf(stderr, "zpl: %s\n", line.c_str());
}

void RenderReport::UnreadInput(std::string const& name, std::string const& line) {
    ++unread_;
    Error(line);
    if (json_) writer_.StartObject().Key("input").String(name).Key("error").String(line).EndObject();
}

void RenderReport::Summarize() const {
    std::string const found = withFindings_ == 0 ? "" : ", " + std::to_string(withFindings_) + " with findings";
    std::string const unread = unread_ == 0 ? "" : ", " + std::to_string(unread_) + " not read";
    std::printf("%zu inputs: %u %s%s%s%s\n", inputs_, made_, std::string(madeName_).c_str(), made_ == 1 ? "" : "s",
                found.c_str(), unread.c_str());
}

ExitCode RenderReport::Finish(ExitCode code) {
    if (json_) {
        writer_.EndArray().Key("exitCode").Int(static_cast<int>(code)).EndObject();
        std::puts(writer_.Text().c_str());
    }
    if (hasLines_ && inputs_ > 1 && !outputIsLost_) Summarize();
    bool const isWritten = std::fflush(stdout) == 0 && std::ferror(stdout) == 0;
    if (!isWritten && !outputIsLost_ && (json_ || hasLines_)) Error(std::string(OutputLost));
    return isWritten ? code : ExitCode::Usage;
}
