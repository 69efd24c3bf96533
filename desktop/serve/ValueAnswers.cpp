#include "desktop/serve/ValueAnswers.h"

#include <algorithm>
#include <array>

#include "frontend/stream/Ascii.h"

namespace {

using Value = std::string (*)(PrinterFacts const&);

struct NamedValue {
    std::string_view name;
    Value value;
};

constexpr Value Ok = [](PrinterFacts const&) { return std::string("ok"); };
constexpr Value Name = [](PrinterFacts const& printer) { return printer.name; };
constexpr Value Version = [](PrinterFacts const& printer) { return 'V' + printer.version; };
constexpr Value Dpi = [](PrinterFacts const& printer) { return std::to_string(printer.dpi); };
constexpr Value Width = [](PrinterFacts const& printer) { return std::to_string(printer.widthDots); };
constexpr Value Length = [](PrinterFacts const& printer) { return std::to_string(printer.lengthDots); };
constexpr Value Serial = [](PrinterFacts const& printer) { return printer.serialNumber; };
constexpr Value Address = [](PrinterFacts const& printer) { return printer.address; };

constexpr std::array Values = std::to_array<NamedValue>({
    {"device.languages", [](PrinterFacts const&) { return std::string("zpl"); }},
    {"device.friendly_name", Name},
    {"device.product_name", Name},
    {"device.unique_id", Serial},
    {"device.host_status", HostStatusLines},
    {"device.host_identification",
     [](PrinterFacts const& printer) { return FindHostQuestion("HI", true)->answer(printer, {}); }},
    {"appl.name", Version},
    {"head.resolution.in_dpi", Dpi},
    {"ezpl.print_width", Width},
    {"zpl.label_length", Length},
    {"zpl.caret", [](PrinterFacts const& printer) { return std::string(1, printer.formatPrefix); }},
    {"zpl.command_prefix", [](PrinterFacts const& printer) { return std::string(1, printer.controlPrefix); }},
    {"zpl.delimiter", [](PrinterFacts const& printer) { return std::string(1, printer.delimiter); }},
    {"media.status", Ok},
    {"head.latch", Ok},
    {"device.pause", [](PrinterFacts const& printer) { return std::string(printer.paused ? "on" : "off"); }},
    {"odometer.total_print_length",
     [](PrinterFacts const& printer) { return std::to_string(static_cast<long>(printer.printedInches)) + " INCHES"; }},
    {"interface.network.active.ip_addr", Address},
    {"ip.addr", Address},
});

/// The next word of `text`, which is shortened by it: up to a blank, or what stands in double quotes.
std::string_view NextWord(std::string_view& text) {
    text.remove_prefix(std::min(text.find_first_not_of(" \t"), text.size()));
    bool const isQuoted = text.starts_with('"');
    if (isQuoted) text.remove_prefix(1);
    auto const end = std::min(text.find_first_of(isQuoted ? "\"" : " \t"), text.size());
    auto const word = text.substr(0, end);
    text.remove_prefix(std::min(end + 1, text.size()));
    return word;
}

}  // namespace

std::string AnswerByName(PrinterFacts const& printer, std::string_view line) {
    NextWord(line);  // the "!"
    NextWord(line);  // and the language
    std::string verb(NextWord(line));
    std::transform(verb.begin(), verb.end(), verb.begin(), [](char c) { return static_cast<char>(c | 0x20); });
    auto const name = NextWord(line);
    if (verb != "getvar") return {};
    auto const* const found =
        std::find_if(Values.begin(), Values.end(), [&](NamedValue const& row) { return row.name == name; });
    return '"' + (found == Values.end() ? "?" : found->value(printer)) + '"';
}
