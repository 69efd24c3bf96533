#include "desktop/CommandLine.h"

#include <algorithm>
#include <array>
#include <charconv>
#include <cmath>
#include <cstdio>
#include <iterator>

namespace {

constexpr double MillimetersPerInch = 25.4;
constexpr double SmallestSide = 0.1;  // inches
constexpr double LargestSide = 200;   // inches

unsigned ParseNumber(std::string_view option, std::string_view text, unsigned low, unsigned high) {
    unsigned value = 0;
    auto const [end, error] = std::from_chars(text.data(), text.data() + text.size(), value);
    if (error != std::errc() || end != text.data() + text.size() || value < low || value > high) {
        throw UsageError(std::string(option) + " takes a whole number from " + std::to_string(low) + " to " +
                         std::to_string(high) + ", not \"" + std::string(text) + "\"");
    }
    return value;
}

unsigned ParseDpi(std::string_view option, std::string_view text) {
    constexpr std::array<unsigned, 3> Known = {203, 300, 600};
    unsigned value = 0;
    auto const [end, error] = std::from_chars(text.data(), text.data() + text.size(), value);
    if (error != std::errc() || end != text.data() + text.size() ||
        std::find(Known.begin(), Known.end(), value) == Known.end()) {
        throw UsageError(std::string(option) + " is 203, 300 or 600, not \"" + std::string(text) + "\"");
    }
    return value;
}

struct Size {
    double width;
    double height;
    std::string unit;
};

/// `WxH` with a unit: in, mm or dots.
Size ParseSize(std::string_view text) {
    auto const bad = [&] {
        return UsageError("--size is WIDTHxHEIGHT with the unit in (if none is named), mm or dots, as 4x6in; not \"" +
                          std::string(text) + "\"");
    };
    Size size{};
    auto const [afterWidth, widthError] = std::from_chars(text.data(), text.data() + text.size(), size.width);
    if (widthError != std::errc() || afterWidth == text.data() + text.size() || *afterWidth != 'x') throw bad();
    auto const [afterHeight, heightError] = std::from_chars(afterWidth + 1, text.data() + text.size(), size.height);
    if (heightError != std::errc()) throw bad();
    size.unit = std::string(afterHeight, text.data() + text.size());
    if (size.unit.empty()) size.unit = "in";
    bool const known = size.unit == "in" || size.unit == "mm" || size.unit == "dots";
    if (!known || !(size.width > 0) || !(size.height > 0) || !std::isfinite(size.width) || !std::isfinite(size.height))
        throw bad();
    return size;
}

void ApplySize(RenderOptions& options, Size const& size) {
    double const perInch = size.unit == "in" ? 1 : size.unit == "mm" ? MillimetersPerInch : options.designDpi;
    options.widthInches = size.width / perInch;
    options.heightInches = size.height / perInch;
    auto const fits = [](double side) { return side >= SmallestSide && side <= LargestSide; };
    if (!fits(options.widthInches) || !fits(options.heightInches))
        throw UsageError("--size is from 0.1 to 200 inches on a side");
}

std::chrono::system_clock::time_point ParseTime(std::string const& text) {
    using namespace std::chrono;
    int y = 0;
    unsigned mo = 0;
    unsigned d = 0;
    unsigned h = 0;
    unsigned mi = 0;
    unsigned s = 0;
    int length = 0;
    bool const read = std::sscanf(text.c_str(), "%4d-%2u-%2uT%2u:%2u:%2u%n", &y, &mo, &d, &h, &mi, &s, &length) == 6;
    year_month_day const date{year(y), month(mo), day(d)};
    bool const whole = read && static_cast<std::size_t>(length) == text.size();
    if (!whole || !date.ok() || y < 1900 || y > 2200 || h > 23 || mi > 59 || s > 59) {
        throw UsageError("--time is YEAR-MONTH-DAYTHOUR:MINUTE:SECOND, as 2026-03-31T14:05:00; not \"" + text + "\"");
    }
    return sys_days(date) + hours(h) + minutes(mi) + seconds(s);
}

PageFormat ParseFormat(std::string_view text) {
    if (text == "png") return PageFormat::Png;
    if (text == "pbm") return PageFormat::Pbm;
    if (text == "pdf") return PageFormat::Pdf;
    throw UsageError("--format is png, pbm or pdf, not \"" + std::string(text) + "\"");
}

std::pair<std::string, std::string> ParseFont(std::string_view text) {
    auto const equals = text.find('=');
    if (equals == std::string_view::npos || equals == 0 || equals + 1 == text.size()) {
        throw UsageError("--font is LETTER=FILE.ttf, not \"" + std::string(text) + "\"");
    }
    return {std::string(text.substr(0, equals)), std::string(text.substr(equals + 1))};
}

/// What has been read so far. Sizes and densities are brought together at the end, as options come in any order.
struct Reading {
    RenderOptions options;
    std::optional<unsigned> printerDpi;
    std::optional<Size> size;
    bool onlyInputs = false;
};

struct Option {
    std::string_view name;
    bool takesValue;
    void (*take)(Reading&, std::string const& name, std::string const& value);
};

using Text = std::string const&;

constexpr Option Options[] = {
    {"--", false, [](Reading& r, Text, Text) { r.onlyInputs = true; }},
    {"--dpi", true, [](Reading& r, Text name, Text value) { r.options.designDpi = ParseDpi(name, value); }},
    {"--printer-dpi", true, [](Reading& r, Text name, Text value) { r.printerDpi = ParseDpi(name, value); }},
    {"--size", true, [](Reading& r, Text, Text value) { r.size = ParseSize(value); }},
    {"--out", true, [](Reading& r, Text, Text value) { r.options.outputFolder = value; }},
    {"--format", true, [](Reading& r, Text, Text value) { r.options.format = ParseFormat(value); }},
    {"--copies", true,
     [](Reading& r, Text name, Text value) { r.options.mostCopies = ParseNumber(name, value, 1, 99'999'999); }},
    {"--font", true, [](Reading& r, Text, Text value) { r.options.fonts.push_back(ParseFont(value)); }},
    {"--time", true, [](Reading& r, Text, Text value) { r.options.time = ParseTime(value); }},
    {"--tag", true, [](Reading& r, Text, Text value) { r.options.tag = VirtualTag::Parse(value); }},
    {"--job", false, [](Reading& r, Text, Text) { r.options.keepJob = true; }},
    {"--json", false, [](Reading& r, Text, Text) { r.options.json = true; }},
    {"--strict", false, [](Reading& r, Text, Text) { r.options.strict = true; }},
    {"--help", false, [](Reading& r, Text, Text) { r.options.help = true; }},
    {"-h", false, [](Reading& r, Text, Text) { r.options.help = true; }},
};

}  // namespace

RenderOptions ParseRenderOptions(std::vector<std::string> const& arguments) {
    Reading reading;
    for (std::size_t i = 0; i < arguments.size(); ++i) {
        std::string name = arguments[i];
        if (reading.onlyInputs || name == "-" || !name.starts_with("-")) {
            reading.options.inputs.push_back(name);
            continue;
        }
        std::optional<std::string> value;
        if (auto const equals = name.find('='); name.starts_with("--") && equals != std::string::npos) {
            value = name.substr(equals + 1);
            name.resize(equals);
        }
        auto const option = std::find_if(std::begin(Options), std::end(Options),
                                         [&name](Option const& candidate) { return candidate.name == name; });
        if (option == std::end(Options))
            throw UsageError("unknown option " + name + "; zpl render --help lists them all");
        if (value && !option->takesValue) throw UsageError(name + " takes no value");
        if (!value && option->takesValue) {
            if (i + 1 == arguments.size()) throw UsageError(name + " needs a value");
            value = arguments[++i];
        }
        option->take(reading, name, value.value_or(std::string()));
    }
    reading.options.printerDpi = reading.printerDpi.value_or(reading.options.designDpi);
    if (reading.size) ApplySize(reading.options, *reading.size);
    return reading.options;
}

std::string_view GeneralHelp() {
    return R"(zpl: draws labels written in the ZPL label language, as the printer would print them.

  zpl render FILE...   draw every page of a stream into picture files
  zpl check FILE...    tell what a stream holds and what is wrong with it, without drawing
  zpl serve            a virtual printer that any program can print to
  zpl COMMAND --help   all options of a command
  zpl --version        the version of this program

Try:  ./zpl render examples/shipping-label.zpl
)";
}

std::string_view RenderHelp() {
    return R"(usage: zpl render FILE...|- [options]

Draws every page of each stream ("-" reads standard input) as NAME-1.png, NAME-2.png, ... and prints one line per page.

  --dpi N             resolution that the stream is made for: 203 (default), 300 or 600
  --printer-dpi N     resolution of the page, if it is another
  --size WxH          size of the label part, as 4x6in (default), 100x150mm or 812x1218dots;
                      a stream that gives its own width or length has the last word
  --out DIR           where the pages go (default: the current folder; it is made if it is missing)
  --format F          png (default), pbm or pdf
  --copies N          copies of one label that are drawn at most (default 1000)
  --font L=FILE.ttf   draws font letter L, or a named font, with this TrueType file
  --time T            lets the clock stand still at T, as 2026-03-31T14:05:00
  --tag T             every label carries a tag: blank, or its memory as epc=3034F1,tid=E280,user=00,afi=00;
                      without a tag its commands are unknown
  --job               keeps all pages as one job folder, as the print driver takes it
  --json              prints one JSON object instead of lines
  --strict            ends with 3 if a command that may change the page is unknown, a format was dropped, or a barcode
                      was refused or is not whole on its page

Exit code: 0 pages were made, 1 the stream holds no printable label, 2 bad usage or a file that cannot be read or
written, 3 findings under --strict.
)";
}

std::string_view CheckHelp() {
    return R"(usage: zpl check FILE...|- [--dpi N] [--size WxH] [--tag T] [--json] [--strict]

Reads each stream as zpl render does and reports its labels, their copies, and what would not print as it was sent:
barcodes without fitting data, what does not stand on the page or in its block, unknown commands, numbers out of range,
missing pictures, formats and fonts, damaged data. Each is told in a sentence with label, byte offset, line and column.
Draws the first copy of each label in memory, and no files.

Exit code: as for zpl render.
)";
}
