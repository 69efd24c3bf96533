#include "desktop/serve/HostAnswers.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <cstdio>

#include "frontend/stream/Ascii.h"
#include "labels/HostStatus.h"
#include "labels/PrintDensity.h"

namespace {

constexpr std::string_view LineEnd = "\r\n";

std::string Padded(std::string text, std::size_t width) {
    text.resize(std::max(text.size(), width), ' ');
    return text;
}

std::string Kilobytes(std::uint64_t bytes) {
    constexpr std::size_t Width = 4;
    std::string const digits = std::to_string(bytes / 1024);
    return std::string(Width - std::min(Width, digits.size()), '0') + digits;
}

std::string DotsPerMillimeter(PrinterFacts const& printer) {
    constexpr double MillimetersPerInch = 25.4;
    return std::to_string(std::lround(printer.dpi / MillimetersPerInch));
}

std::string Identification(PrinterFacts const& printer, std::string_view /*parameter*/) {
    return ZplCore::HostString(printer.name + ",V" + printer.version + ',' + DotsPerMillimeter(printer) + ',' +
                               Kilobytes(printer.totalMemory) + "KB,X");
}

std::string Memory(PrinterFacts const& printer, std::string_view /*parameter*/) {
    return ZplCore::HostString(Kilobytes(printer.totalMemory) + ',' + Kilobytes(printer.totalMemory) + ',' +
                               Kilobytes(printer.freeMemory));
}

/// A setting that `^HH` lists, or one that a head tells.
std::string Line(std::string const& value, std::string_view name) {
    constexpr std::size_t Column = 20;
    return "  " + Padded(value, Column) + Padded(std::string(name), Column) + std::string(LineEnd);
}

std::string Configuration(PrinterFacts const& printer, std::string_view /*parameter*/) {
    char speed[32];
    std::snprintf(speed, sizeof speed, "%.1f IPS", printer.inchesPerSecond);
    std::string const dots = " DOTS";
    // Darkness and rest position of the media are those of a printer as it is delivered.
    return '\x02' + Line(std::to_string(ZplCore::StandardDarkness) + ".0", "DARKNESS") + Line(speed, "PRINT SPEED") +
           Line("+000", "TEAR OFF") + Line("TEAR OFF", "PRINT MODE") + Line("DIRECT-THERMAL", "PRINT METHOD") +
           Line("GAP/NOTCH", "MEDIA TYPE") + Line(std::to_string(printer.widthDots) + dots, "PRINT WIDTH") +
           Line(std::to_string(printer.lengthDots) + dots, "LABEL LENGTH") +
           Line(std::string("<") + printer.controlPrefix + ">", "CONTROL CHAR") +
           Line(std::string("<") + printer.formatPrefix + ">", "COMMAND CHAR") +
           Line(std::string("<") + printer.delimiter + ">", "DELIM. CHAR") +
           Line(DotsPerMillimeter(printer) + "/MM", "RESOLUTION") + Line('V' + printer.version, "FIRMWARE") +
           Line(Kilobytes(printer.totalMemory) + "KB", "MEMORY") + Line(printer.address, "IP ADDRESS") +
           Line(printer.serialNumber, "SERIAL NUMBER") + '\x03' + std::string(LineEnd);
}

std::string HeadDiagnostics(PrinterFacts const& printer, std::string_view /*parameter*/) {
    return '\x02' + Line(std::to_string(printer.widthDots), "HEAD WIDTH IN DOTS") + Line("OK", "HEAD LATCH") + '\x03' +
           std::string(LineEnd);
}

/// A report of `~HQ`: lines between STX and ETX.
std::string Report(std::string_view title, std::initializer_list<std::string> lines) {
    std::string text = "\x02\r\n\r\n  " + std::string(title) + std::string(LineEnd);
    for (auto const& line : lines) text += "    " + line + std::string(LineEnd);
    return text + '\x03';
}

/// A flag, then the sixteen nibbles of the conditions in two halves, the first one last.
std::string Conditions(std::uint64_t nibbles) {
    char text[32];
    std::snprintf(text, sizeof text, "%d %08X %08X", nibbles != 0, static_cast<unsigned>(nibbles >> 32),
                  static_cast<unsigned>(nibbles));
    return text;
}

std::string ErrorsAndWarnings(PrinterFacts const& printer) {
    constexpr std::uint64_t Paused = 0x80000;  // nibble 5
    return Report("PRINTER STATUS",
                  {"ERRORS:         " + Conditions(printer.paused ? Paused : 0), "WARNINGS:       " + Conditions(0)});
}

std::string SerialNumber(PrinterFacts const& printer) { return Report("SERIAL NUMBER", {printer.serialNumber}); }

std::string Odometer(PrinterFacts const& printer) {
    return Report("PRINT METERS",
                  {"TOTAL NONRESETTABLE:  " + std::to_string(std::lround(printer.printedInches)) + " \""});
}

/// `~HQ`: its parameter chooses. The questions about parts that a desk does not have stay without answer.
std::string Query(PrinterFacts const& printer, std::string_view parameter) {
    struct Row {
        std::string_view letters;
        std::string (*answer)(PrinterFacts const&);
    };
    constexpr Row Rows[] = {{"ES", ErrorsAndWarnings}, {"SN", SerialNumber}, {"OD", Odometer}};
    for (auto const& row : Rows) {
        if (ToAsciiUpper(parameter.substr(0, row.letters.size())) == row.letters) return row.answer(printer);
    }
    return {};
}

constexpr bool Control = true;
constexpr bool Format = false;

constexpr std::array Questions = std::to_array<HostQuestion>({
    // clang-format off
    {"HS", Control, 0, nullptr},
    {"HL", Control, 0, nullptr},
    {"HI", Control, 0, Identification},
    {"HM", Control, 0, Memory},
    {"HD", Control, 0, HeadDiagnostics},
    {"HQ", Control, 2, Query},
    {"HH", Format,  0, Configuration},
    // clang-format on
});

}  // namespace

HostQuestion const* FindHostQuestion(std::string_view letters, bool isControl) {
    auto const* const found = std::find_if(Questions.begin(), Questions.end(), [&](HostQuestion const& row) {
        return row.letters == letters && row.isControl == isControl;
    });
    return found == Questions.end() ? nullptr : found;
}

std::string HostStatusLines(PrinterFacts const& printer) {
    Scripting::PrinterStatus status;
    status.paused = printer.paused;
    status.formatsInBuffer = printer.waitingJobs;
    ZplCore::StreamStatus stream;
    stream.labelLength = printer.lengthDots;
    return ZplCore::HostStatusAnswer(status, stream);
}
