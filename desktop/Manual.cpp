#include "desktop/Manual.h"

#include <algorithm>
#include <cctype>

namespace {

constexpr std::size_t Columns = 80;
constexpr std::size_t TextColumn = 22;  // where the text behind an option begins

/// Appends `text` in lines, which begin at `column`; the first one goes on where `page` stands.
void AppendWrapped(std::string& page, std::string_view text, std::size_t column) {
    std::size_t at = page.size() - (page.rfind('\n') + 1);
    for (auto const& word : Words(text)) {
        if (at < column) {
            page.append(column - at, ' ');
            at = column;
        } else if (at > column && at + 1 + word.size() > Columns) {
            page.append("\n").append(column, ' ');
            at = column;
        } else if (at > column) {
            page += ' ';
            ++at;
        }
        page += word;
        at += word.size();
    }
    page += '\n';
}

std::vector<std::string> Paragraphs(std::string_view text) {
    std::vector<std::string> paragraphs;
    while (!text.empty()) {
        auto const end = std::min(text.find('\n'), text.size());
        paragraphs.emplace_back(text.substr(0, end));
        text.remove_prefix(std::min(end + 1, text.size()));
    }
    return paragraphs;
}

std::string WithValue(OptionRow const& option) {
    std::string const names =
        (option.letter.empty() ? "" : std::string(option.letter) + ", ") + std::string(option.name);
    return names + (option.value.empty() ? "" : " ") + std::string(option.value);
}

std::string UsageOf(CommandRow const& command) {
    std::string usage = "zpl " + std::string(command.name);
    if (!command.operands.empty()) usage.append(" ").append(command.operands);
    return usage + " [options]";
}

/// A list entry: what is named, and behind it the text.
void AppendEntry(std::string& page, std::string const& name, std::string_view text) {
    page += "  " + name;
    if (name.size() + 4 > TextColumn) page += '\n';
    AppendWrapped(page, text, TextColumn);
}

/// Text as roff takes it: neither a backslash nor a line that begins like a request means anything.
std::string Roff(std::string_view text) {
    std::string escaped = text.starts_with('.') || text.starts_with('\'') ? "\\&" : "";
    for (char const c : text) {
        if (c == '\\') {
            escaped += "\\e";
        } else if (c == '-') {
            escaped += "\\-";
        } else {
            escaped += c;
        }
    }
    return escaped;
}

std::string Header(std::string name, std::string const& version) {
    std::transform(name.begin(), name.end(), name.begin(), [](unsigned char c) { return std::toupper(c); });
    return ".TH " + Roff(name) + " 1 \"\" \"zpl " + Roff(version) + "\" \"User commands\"\n";
}

void AppendRoffParagraphs(std::string& page, std::string_view text) {
    for (auto const& paragraph : Paragraphs(text)) page += ".PP\n" + Roff(paragraph) + "\n";
}

void AppendRoffEntry(std::string& page, std::string const& name, std::string_view text) {
    page += ".TP\n.B " + Roff(name) + "\n" + Roff(text) + "\n";
}

}  // namespace

std::string GeneralHelp() {
    std::string page = "zpl: draws labels written in the ZPL label language, as the printer would print\nthem.\n\n";
    for (auto const& command : Commands())
        AppendEntry(page, std::string(command.name) + " " + std::string(command.operands), command.summary);
    AppendEntry(page, "COMMAND --help", "all options of a command");
    AppendEntry(page, "-V, --version", "the version of this program");
    return page + "\nTry:  ./zpl render examples/shipping-label.zpl\n";
}

std::string HelpText(CommandRow const& command) {
    std::string page = "usage: " + UsageOf(command) + "\n";
    for (auto const& paragraph : Paragraphs(command.description)) {
        page += '\n';
        AppendWrapped(page, paragraph, 0);
    }
    page += '\n';
    for (auto const* const option : OptionsOf(command)) AppendEntry(page, WithValue(*option), option->help);
    if (!command.exitStatus.empty()) {
        page += '\n';
        AppendWrapped(page, "Exit code: " + std::string(command.exitStatus), 0);
    }
    return page;
}

std::string ManualPage(CommandRow const& command, std::string const& version) {
    std::string const name = "zpl-" + std::string(command.name);
    std::string page = Header(name, version);
    page += ".SH NAME\n" + Roff(name) + " \\- " + Roff(command.summary) + "\n";
    page += ".SH SYNOPSIS\n.B " + Roff(UsageOf(command)) + "\n.SH DESCRIPTION\n";
    AppendRoffParagraphs(page, command.description);
    page += ".SH OPTIONS\n";
    for (auto const* const option : OptionsOf(command)) AppendRoffEntry(page, WithValue(*option), option->help);
    if (!command.exitStatus.empty()) page += ".SH EXIT STATUS\n" + Roff(command.exitStatus) + "\n";
    return page + ".SH SEE ALSO\n.BR zpl (1)\n";
}

std::string ManualPage(std::string const& version) {
    std::string page = Header("zpl", version);
    page += ".SH NAME\nzpl \\- draw labels written in the ZPL label language\n";
    page += ".SH SYNOPSIS\n.B zpl COMMAND [options]\n.SH DESCRIPTION\n";
    page += "Draws labels as the printer would print them.\n.SH COMMANDS\n";
    for (auto const& command : Commands())
        AppendRoffEntry(page, std::string(command.name) + " " + std::string(command.operands), command.summary);
    page += ".SH SEE ALSO\n";
    for (auto const& command : Commands())
        page += ".BR " + Roff("zpl-" + std::string(command.name)) + " (1)" +
                (&command == &Commands().back() ? "" : ",") + "\n";
    return page;
}
