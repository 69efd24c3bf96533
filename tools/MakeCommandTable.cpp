// Makes of the page of commands what an editor tells of them: one JSON object, whose list "commands" has for each row
// its names, its section, its parameters with ranges and defaults, and what is done for it.
// usage: MakeCommandTable commands.md OUTPUT.json

#include <algorithm>
#include <cstdio>
#include <fstream>
#include <string>
#include <string_view>
#include <vector>

#include "foundation/Json.h"

namespace {

std::string Trimmed(std::string_view text) {
    auto const first = text.find_first_not_of(' ');
    if (first == std::string_view::npos) return {};
    return std::string(text.substr(first, text.find_last_not_of(' ') - first + 1));
}

/// The parts between separators that stand in no brackets and no quoted text.
std::vector<std::string> Split(std::string_view text, char separator) {
    std::vector<std::string> parts(1);
    int depth = 0;
    bool isQuoted = false;
    for (char const c : text) {
        if (c == '`') isQuoted = !isQuoted;
        if (!isQuoted && (c == '[' || c == '(')) ++depth;
        if (!isQuoted && (c == ']' || c == ')')) --depth;
        if (c == separator && depth == 0 && !isQuoted)
            parts.emplace_back();
        else
            parts.back() += c;
    }
    for (auto& part : parts) part = Trimmed(part);
    return parts;
}

/// A dash between two names stands for all from the one to the other.
std::vector<std::string> NamesIn(std::string const& cell) {
    std::vector<std::string> names;
    for (auto at = cell.find('`'); at != std::string::npos; at = cell.find('`', at + 5)) {
        std::string const name = cell.substr(at + 1, 3);
        bool const isRange = at > 0 && cell[at - 1] == '-';
        while (isRange && names.back() < name) {
            std::string next = names.back();
            ++next.back();
            names.push_back(next);
        }
        if (!isRange) names.push_back(name);
    }
    return names;
}

std::string WithoutQuotes(std::string text) {
    std::erase(text, '`');
    return text;
}

void WriteRow(JsonWriter& writer, std::string const& section, std::vector<std::string> const& cells) {
    bool const hasSymbology = cells.size() == 4;
    writer.StartObject().Key("names").StartArray();
    for (auto const& name : NamesIn(cells.front())) writer.String(name);
    writer.EndArray().Key("section").String(section);
    writer.Key("now").Bool(cells.front().find("*now*") != std::string::npos);
    if (hasSymbology && !cells[1].empty()) writer.Key("symbology").String(cells[1]);
    writer.Key("parameters").StartArray();
    for (auto const& parameter : Split(cells[cells.size() - 2], ',')) {
        if (!parameter.empty()) writer.String(WithoutQuotes(parameter));
    }
    writer.EndArray().Key("state").String(WithoutQuotes(cells.back())).EndObject();
}

}  // namespace

int main(int argc, char** argv) {
    if (argc != 3) return 2;
    std::ifstream page(argv[1]);
    std::string section;
    JsonWriter writer;
    writer.StartObject().Key("commands").StartArray();
    for (std::string line; std::getline(page, line);) {
        if (line.starts_with("## ")) section = line.substr(3);
        if (!line.starts_with("| `")) continue;
        auto cells = Split(line.substr(1, line.rfind('|') - 1), '|');
        WriteRow(writer, section, cells);
    }
    std::ofstream output(argv[2]);
    output << writer.EndArray().EndObject().Text() << '\n';
    return page.eof() && output.flush() ? 0 : 1;
}
