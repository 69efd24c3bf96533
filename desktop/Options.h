#pragma once

#include <optional>
#include <span>
#include <string>
#include <string_view>
#include <vector>

#include "desktop/CommandLine.h"
#include "desktop/serve/ServeOptions.h"
#include "desktop/web/WebOptions.h"

/// What the command line can do and what it takes: one table of commands and one of options. Parsing, refusals, help,
/// manual pages and completion follow from their rows.

/// Width and height of a label part with their unit: in, mm or dots.
struct LabelSize {
    double width;
    double height;
    std::string unit;
};

/// What has been read so far. Sizes and densities are brought together at the end, as options come in any order.
struct Reading {
    RenderOptions render;
    ServeOptions serve;
    WebOptions web;
    CompareOptions compare;
    std::vector<std::string> operands;
    std::optional<unsigned> printerDpi;
    std::optional<LabelSize> size;
    std::optional<unsigned> mostCopies;
    bool hasFormat = false;
    bool help = false;
};

/// A command of `zpl`.
struct CommandRow {
    std::string_view name;
    unsigned bit;                   ///< stands for it in a set of commands
    std::string_view operands;      ///< as usage tells them; empty if it takes none
    std::string_view operandWords;  ///< if these are the only ones, with blanks in between
    std::string_view summary;       ///< in a list of commands
    std::string_view description;   ///< paragraphs with line ends in between
    std::string_view exitStatus = {};
};

/// An option with all that is known of it.
struct OptionRow {
    std::string_view name;
    std::string_view value;    ///< what its value is called; empty if it takes none
    std::string_view choices;  ///< if these are the only values, with blanks in between
    unsigned commands;         ///< the set of commands that take it
    std::string_view help;
    void (*take)(Reading&, std::string const& name, std::string const& value);
    std::string_view letter = {};  ///< a short name, as -h; empty if there is none
};

/// In the order in which help lists them.
std::span<CommandRow const> Commands();
std::span<OptionRow const> Options();
/// Null if there is no command of that name.
CommandRow const* FindCommand(std::string_view name);
/// Those that `command` takes.
std::vector<OptionRow const*> OptionsOf(CommandRow const& command);
/// The words of a list with blanks in between.
std::vector<std::string> Words(std::string_view list);

/// Reads what stands behind `zpl COMMAND`; throws UsageError.
Reading ReadArguments(CommandRow const& command, std::vector<std::string> const& arguments);
