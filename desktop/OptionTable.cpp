#include <algorithm>
#include <iterator>

#include "desktop/OptionValues.h"
#include "desktop/Options.h"

namespace {

enum : unsigned {
    Render = 1,
    Check = 2,
    Serve = 4,
    Manual = 8,
    Completion = 16,
    Compare = 32,
    Web = 64,
    Drawing = Render | Check | Compare,
    All = 127
};

constexpr std::string_view ExitCodes =
    "0 if pages were made, 1 if the stream holds no printable label, 2 for bad usage or a file that cannot be read or "
    "written, 3 for findings under --strict.";

constexpr CommandRow CommandTable[] = {
    {"render", Render, "FILE...|-", "", "draw every page of a stream into picture files",
     "Draws every page of each stream as NAME-1.png, NAME-2.png, ... and prints one line per page. \"-\" reads "
     "standard input, and what stands behind \"--\" is a FILE whatever it begins with.",
     ExitCodes},
    {"check", Check, "FILE...|-", "", "tell what a stream holds and what is wrong with it, without drawing",
     "Reads each stream as zpl render does and reports its labels, their copies, and what would not print as it was "
     "sent: barcodes without fitting data and such as a scanner may not read, what does not stand on the page or in "
     "its block, unknown commands, numbers "
     "out of range, missing pictures, formats and fonts, damaged data. Each is told in a sentence with label, byte "
     "offset, line and column.\n"
     "Draws the first copy of each label in memory, and no files.",
     ExitCodes},
    {"compare", Compare, "EXPECTED ACTUAL", "", "count the dots by which pages differ from what is expected",
     "Holds the pages of ACTUAL against those of EXPECTED, dot for dot. Each of them is a stream, a picture (PNG of "
     "any "
     "kind, or PBM), or a folder with pictures, which count in the order of their names. \"-\" is a stream or picture "
     "from standard input.\n"
     "Prints a line for each page that differs: how many dots are missing or too many, and where.",
     "0 if all pages are alike, 1 if one differs or is missing, 2 for bad usage or a file that cannot be read or "
     "written."},
    {"serve", Serve, "", "", "be a virtual printer that any program can print to",
     "A virtual label printer: any program can print to it. Each page becomes a file NAME-JOB-PAGE.png.\n"
     "While it runs it takes these words on its terminal: status, pause, resume, cancel, cancel-all, preview, screen, "
     "quit."},
    {"web", Web, "", "", "write, see and check labels in the browser, and draw them for programs over HTTP",
     "Serves a page in which labels are written and seen, and doors at which programs have streams drawn and checked. "
     "It prints nothing: zpl serve does the same with a printer behind it. It ends by SIGINT (Ctrl-C) or SIGTERM."},
    {"man", Manual, "[COMMAND]", "render check compare serve web man completion", "print the manual page of a command",
     "Prints a manual page as roff text: of a COMMAND, or without one of all together. To read it: zpl man render | "
     "man -l -"},
    {"completion", Completion, "bash|zsh", "bash zsh", "print a script that lets a shell complete commands and options",
     "Prints a script for the shell to run when it starts, so that the Tab key completes commands, options and their "
     "values. For the shell under way: source <(zpl completion bash)"},
};

using Text = std::string const&;

constexpr OptionRow OptionTable[] = {
    {"--listen", "HOST:PORT", "", Serve,
     "where it takes print streams (default 127.0.0.1:9100; port 0 picks a free one); HOST is an address, as 0.0.0.0 "
     "or "
     "[::1], or a name that has one of IPv4",
     [](Reading& r, Text name, Text value) { OptionValues::Address(name, value, r.serve.host, r.serve.port); }},
    {"--dpi", "N", "203 300 600", Drawing | Serve, "resolution that streams are made for: 203 (default), 300 or 600",
     [](Reading& r, Text name, Text value) { r.render.designDpi = OptionValues::Number(name, value, 203, 600); }},
    {"--printer-dpi", "N", "203 300 600", Drawing, "resolution of the page, if it is another",
     [](Reading& r, Text name, Text value) { r.printerDpi = OptionValues::Number(name, value, 203, 600); }},
    {"--size", "WxH", "", Drawing | Serve,
     "size of the label part, as 4x6in (default), 100x150mm or 812x1218dots; a stream that gives its own width or "
     "length has the last word",
     [](Reading& r, Text, Text value) { r.size = OptionValues::Size(value); }},
    {"--out", "DIR", "", Render | Serve,
     "where the pages go (default: the current folder; it is made if it is missing); zpl render takes - for standard "
     "output",
     [](Reading& r, Text, Text value) {
         r.serve.outputFolder = (value == "-" ? r.render.outputFile : r.render.outputFolder) = value;
     }},
    {"-o", "FILE", "", Render,
     "makes one FILE of the pages of the input, in the format that its ending names; - is standard output. A PDF and a "
     "PBM hold any number of pages, a PNG one",
     [](Reading& r, Text, Text value) { r.render.outputFile = OptionValues::OutputFile(value); }},
    {"--name", "PATTERN", "", Render,
     "how files are called: {stem}-{page}.{ext}, where {stem} is the name of the input without its ending; without "
     "{page} one file holds all pages, as with -o",
     [](Reading& r, Text, Text value) { r.render.namePattern = OptionValues::NamePattern(value); }},
    {"--pages", "RANGES", "", Render, "only these pages of each input, as 2-5,8 or 3-; they keep their numbers",
     [](Reading& r, Text, Text value) { r.render.pages = OptionValues::Pages(value); }},
    {"--rotate", "N", "0 90 180 270", Render,
     "turns the pictures by N degrees clockwise, to look at; places that --json tells stay those of the page as it "
     "prints",
     [](Reading& r, Text name, Text value) { r.render.rotation = OptionValues::Number(name, value, 0, 270); }},
    {"--distinct", "", "", Render,
     "makes one page of copies of a label that are equal and follow each other, and tells how often it prints",
     [](Reading& r, Text, Text) { r.render.isDistinct = true; }},
    {"--watch", "", "", Render, "draws an input again whenever its file changes, until Ctrl-C ends it",
     [](Reading& r, Text, Text) { r.render.watches = true; }},
    {"--format", "F", FormatNames, Render, FormatHelp,
     [](Reading& r, Text, Text value) { r.render.format = &OptionValues::Format(value), r.hasFormat = true; }},
    {"--split", "", "", Render, "makes a file of each page, also in a format of which one file holds many",
     [](Reading& r, Text, Text) { r.render.isSplit = true; }},
    {"--copies", "N", "", Render | Compare,
     "copies of one label that are drawn at most (default 1000; 100000 with --distinct)",
     [](Reading& r, Text name, Text value) { r.mostCopies = OptionValues::Number(name, value, 1, 99'999'999); }},
    {"--threads", "N", "", Render,
     "draws and writes pages on N threads (default: one for each processor); 1: on the one that reads the stream",
     [](Reading& r, Text name, Text value) { r.render.mostThreads = OptionValues::Number(name, value, 1, 64); }},
    {"--font", "L=FILE", "", Drawing, "draws font letter L, or a named font, with this font file (.ttf, .otf, .ttc)",
     [](Reading& r, Text, Text value) { r.render.fonts.push_back(OptionValues::Font(value)); }},
    {"--time", "T", "", Drawing, "lets the clock stand still at T, as 2026-03-31T14:05:00",
     [](Reading& r, Text, Text value) { r.render.time = OptionValues::Time(value); }},
    {"--speed", "N", "", Serve, "inches a second (default 6); 0 prints as fast as it goes",
     [](Reading& r, Text, Text value) { r.serve.speed = OptionValues::Speed(value); }},
    {"--tag", "T", "", Drawing | Serve,
     "every label carries a tag: blank, or its memory as epc=3034F1,tid=E280,user=00,afi=00; without a tag its "
     "commands are unknown",
     [](Reading& r, Text, Text value) { r.serve.tag = r.render.tag = OptionValues::Tag(value); }},
    {"--job", "", "", Render, "keeps all pages as one job folder, as the print driver takes it",
     [](Reading& r, Text, Text) { r.render.keepJob = true; }},
    {"--json", "", "", Drawing | Serve,
     "prints JSON for programs instead of lines: zpl serve one object a line for each event, the others one in all",
     [](Reading& r, Text, Text) { r.serve.json = r.render.json = true; }},
    {"--scan", "", "", Render | Check,
     "reads each barcode back from its page, as a scanner would, and tells what it does not read or reads otherwise",
     [](Reading& r, Text, Text) { r.render.readsSymbols = true; }},
    {"--quiet", "", "", Render | Check, "prints neither pages nor findings, only what ends the run; --json stays",
     [](Reading& r, Text, Text) { r.render.isQuiet = true; }, "-q"},
    {"--strict", "", "", Render | Check,
     "ends with 3 if a command that may change the page is unknown, a format was dropped, or a barcode was refused, is "
     "not whole on its page or cannot be scanned",
     [](Reading& r, Text, Text) { r.render.strict = true; }},
    {"--tolerance", "N", "", Compare, "dots of a page that may differ (default 0)",
     [](Reading& r, Text name, Text value) { r.compare.tolerance = OptionValues::Number(name, value, 0, 67'108'864); }},
    {"--difference", "DIR", "", Compare,
     "writes a picture of each page that differs, DIR/difference-N.png: what is missing is red, what is too much blue",
     [](Reading& r, Text, Text value) { r.compare.differenceFolder = value; }},
    {"--pause-on-start", "", "", Serve, "begins paused", [](Reading& r, Text, Text) { r.serve.pauseOnStart = true; }},
    {"--preview", "", "", Serve, "opens a window that shows the pages while they print",
     [](Reading& r, Text, Text) { r.serve.preview = true; }},
    {"--screen", "", "", Serve, "opens the printer's touch screen in a window: preview, templates and editor",
     [](Reading& r, Text, Text) { r.serve.screen = true; }},
    {"--no-answers", "", "", Serve, "sends nothing back to those who ask the printer",
     [](Reading& r, Text, Text) { r.serve.answers = false; }},
    {"--state", "DIR", "", Serve, "where stored formats and counters are kept (default: the user's state folder)",
     [](Reading& r, Text, Text value) { r.serve.stateFolder = value; }},
    {"--web", "HOST:PORT", "", Serve | Web,
     "where the page and the doors for programs are served (default 127.0.0.1:9180; port 0 picks a free one)",
     [](Reading& r, Text name, Text value) {
         OptionValues::Address(name, value, r.web.host, r.web.port), r.web.isWanted = true;
     }},
    {"--no-web", "", "", Serve, "serves neither", [](Reading& r, Text, Text) { r.web.isWanted = false; }},
    {"--open", "", "", Web, "opens the page in the browser", [](Reading& r, Text, Text) { r.web.opens = true; }},
    {"--allow-origin", "ORIGIN", "", Serve | Web,
     "lets the pages of another server draw and print here, as https://labels.example; * lets all; may be repeated",
     [](Reading& r, Text, Text value) { r.web.origins.push_back(value); }},
    {"--allow-host", "NAME", "", Serve | Web,
     "a further name that this is reached by, with a port or without; may be repeated",
     [](Reading& r, Text, Text value) { r.web.hosts.push_back(value); }},
    {"--help", "", "", All, "lists what the command takes", [](Reading& r, Text, Text) { r.help = true; }, "-h"},
};

}  // namespace

std::span<CommandRow const> Commands() { return CommandTable; }

std::span<OptionRow const> Options() { return OptionTable; }

CommandRow const* FindCommand(std::string_view name) {
    auto const found = std::find_if(std::begin(CommandTable), std::end(CommandTable),
                                    [name](CommandRow const& row) { return row.name == name; });
    return found == std::end(CommandTable) ? nullptr : found;
}

std::vector<OptionRow const*> OptionsOf(CommandRow const& command) {
    std::vector<OptionRow const*> options;
    for (auto const& row : OptionTable) {
        if (row.commands & command.bit) options.push_back(&row);
    }
    return options;
}
