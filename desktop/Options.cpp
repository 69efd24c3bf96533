#include "desktop/Options.h"

#include <algorithm>
#include <iterator>
#include <sstream>
#include <tuple>

#include "desktop/OptionValues.h"

namespace {

/// "a", "a or b", "a, b or c".
std::string Listed(std::vector<std::string> const& names, std::string const& lastJoin) {
    std::string list;
    for (std::size_t i = 0; i < names.size(); ++i)
        list += (i == 0 ? "" : i + 1 == names.size() ? lastJoin : ", ") + names[i];
    return list;
}

std::string NamesOfTakers(OptionRow const& option) {
    std::vector<std::string> names;
    for (auto const& command : Commands()) {
        if (option.commands & command.bit) names.push_back("zpl " + std::string(command.name));
    }
    return Listed(names, " and ");
}

OptionRow const& FindOption(CommandRow const& command, std::string_view name) {
    auto const options = Options();
    auto const found = std::find_if(options.begin(), options.end(),
                                    [name](OptionRow const& row) { return row.name == name || row.letter == name; });
    std::string const help = "; zpl " + std::string(command.name) + " --help lists ";
    if (found == options.end()) throw UsageError("unknown option " + std::string(name) + help + "them all");
    if (!(found->commands & command.bit))
        throw UsageError(std::string(name) + " is an option of " + NamesOfTakers(*found) + help + "its own");
    return *found;
}

void TakeOption(Reading& reading, OptionRow const& option, std::string const& value) {
    std::string const name(option.name);
    auto const choices = Words(option.choices);
    if (!choices.empty() && std::find(choices.begin(), choices.end(), value) == choices.end())
        throw UsageError(name + " is " + Listed(choices, " or ") + ", not \"" + value + "\"");
    option.take(reading, name, value);
}

void TakeOperand(Reading& reading, CommandRow const& command, std::string const& word) {
    std::string const name = "zpl " + std::string(command.name);
    if (command.operands.empty()) throw UsageError(name + " takes only options, not \"" + word + "\"");
    auto const words = Words(command.operandWords);
    if (!words.empty() && std::find(words.begin(), words.end(), word) == words.end())
        throw UsageError(name + " takes " + Listed(words, " or ") + ", not \"" + word + "\"");
    if (!words.empty() && !reading.operands.empty()) throw UsageError(name + " takes one of them at a time");
    reading.operands.push_back(word);
}

/// Null if the ending of the file's name is that of none.
PageFormat const* FormatByName(std::string const& file) {
    auto const* const found =
        std::find_if(std::begin(PageFormats), std::end(PageFormats),
                     [&](PageFormat const& format) { return file.ends_with("." + std::string(format.extension)); });
    return found == std::end(PageFormats) ? nullptr : found;
}

void BringTogether(Reading& reading) {
    RenderOptions& render = reading.render;
    render.inputs = reading.operands;
    render.help = reading.serve.help = reading.help;
    render.printerDpi = reading.printerDpi.value_or(render.designDpi);
    if (reading.size)
        std::tie(render.widthInches, render.heightInches) = OptionValues::Inches(*reading.size, render.designDpi);
    // A picture is looked for in what its file is called.
    if (auto const* const format = reading.hasFormat ? nullptr : FormatByName(render.outputFile))
        render.format = format;
    // Copies that are equal make no further files.
    constexpr unsigned MostDistinctCopies = 100'000;
    render.mostCopies = reading.mostCopies.value_or(render.isDistinct ? MostDistinctCopies : render.mostCopies);
    reading.serve.dpi = render.printerDpi;
    reading.serve.widthInches = render.widthInches;
    reading.serve.heightInches = render.heightInches;
}

}  // namespace

std::vector<std::string> Words(std::string_view list) {
    std::istringstream stream{std::string(list)};
    return {std::istream_iterator<std::string>(stream), {}};
}

Reading ReadArguments(CommandRow const& command, std::vector<std::string> const& arguments) {
    Reading reading;
    bool onlyOperands = false;
    for (std::size_t i = 0; i < arguments.size(); ++i) {
        std::string name = arguments[i];
        if (onlyOperands || name == "-" || !name.starts_with("-")) {
            TakeOperand(reading, command, name);
            continue;
        }
        if (name == "--") {
            onlyOperands = true;
            continue;
        }
        std::optional<std::string> value;
        if (auto const equals = name.find('='); name.starts_with("--") && equals != std::string::npos) {
            value = name.substr(equals + 1);
            name.resize(equals);
        }
        auto const& option = FindOption(command, name);
        if (value && option.value.empty()) throw UsageError(name + " takes no value");
        if (!value && !option.value.empty()) {
            if (i + 1 == arguments.size()) throw UsageError(name + " needs a value");
            value = arguments[++i];
        }
        TakeOption(reading, option, value.value_or(std::string()));
    }
    BringTogether(reading);
    return reading;
}
