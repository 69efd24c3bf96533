#include "labels/ReportLabel.h"

#include <ifaddrs.h>
#include <net/if.h>
#include <netdb.h>
#include <netinet/in.h>
#include <unistd.h>

#include <array>
#include <memory>

#include "Scripting/PrinterContextInterface.h"
#include "fields/data/ClockFields.h"
#include "frontend/context/ContextProcessor.h"
#include "frontend/context/ZplContextKeys.h"
#include "labels/HostStatus.h"
#include "labels/PrintDensity.h"

namespace {

using Lines = std::vector<std::pair<std::string, std::string>>;

// Places in 1/100 of the printed width, so that the report fits any resolution.
constexpr unsigned LeftEdge = 5;
constexpr unsigned ValueColumn = 50;
constexpr unsigned LineHeight = 5;
constexpr unsigned TextHeight = 4;

std::string InDots(unsigned value) { return value == 0 ? "from the media" : std::to_string(value) + " dots"; }

std::string Character(char c) { return std::string(1, c); }

/// Date and time as the printer's own reports show them, or its version in their place.
std::pair<std::string, std::string> ClockLine(ContextProcessor const& processor) {
    constexpr std::array<std::string_view, 4> Patterns = {"m/d/y H:M", "m/d/y I:M p", "d/m/y H:M", "d/m/y I:M p"};
    unsigned const format = processor.at(ZplContextKeys::TimeMode).format.value_or(0);
    if (format == 0 || format > Patterns.size()) return {"Version", ZPL_VERSION};
    auto const time = processor.GetPrinterContext()->Now() + processor.at(ZplContextKeys::ClockAdjustment);
    std::string text;
    for (char const code : Patterns[format - 1])
        text += ZplCore::ClockFields::Format(code, time, ZplContextDefaults::CultureId).value_or(std::string(1, code));
    return {"Date and time", text};
}

std::string DarknessText(ContextProcessor const& processor) {
    auto const darkness = ZplCore::GetPrintDensityOverride(processor);
    return darkness ? std::to_string(*darkness) : "of the printer";
}

std::string OrNone(std::string const& text) { return text.empty() ? "none" : text; }

}  // namespace

void PrintReportLabel(ContextProcessor& processor, std::string const& title, Lines const& lines) {
    if (processor.GetContext(ContextProcessor::LabelContext)) return;
    processor.BeginFormat();
    // The report is to be read, whatever the stream has set up; in the format's own context this counts for it alone.
    auto const plain = [&](auto const& key) { processor.set(ContextProcessor::FormatContext, key, key.defaultValue); };
    plain(ZplContextKeys::UnitOfMeasure);
    plain(ZplContextKeys::DpiScaleFactor);
    plain(ZplContextKeys::FormatScale);
    plain(ZplContextKeys::LabelOriginX);
    plain(ZplContextKeys::LabelOriginY);
    plain(ZplContextKeys::LabelWidth);
    plain(ZplContextKeys::LabelLength);
    plain(ZplContextKeys::LabelAdjustY);
    plain(ZplContextKeys::LabelReversePrint);
    plain(ZplContextKeys::FieldOrientation);
    plain(ZplContextKeys::PrintOrientation);
    plain(ZplContextKeys::MirrorLabel);

    constexpr unsigned Inches = 4;
    unsigned const width = Inches * processor.GetPrinterContext()->DesignDpi().Value();
    auto const add = [&](char const* letters, ZplParameters parameters) {
        processor.AddFormatCommand({letters, false, std::move(parameters)});
    };
    auto const text = [&](unsigned x, unsigned y, std::string const& data) {
        add("FO", {std::to_string(width * x / 100), std::to_string(y)});
        add("A0", {"N", std::to_string(width * TextHeight / 100), ""});
        add("FD", {data});
        add("FS", {});
    };
    unsigned y = width * LineHeight / 100;
    text(LeftEdge, y, title);
    for (auto const& [name, value] : lines) {
        y += width * LineHeight / 100;
        text(LeftEdge, y, name);
        text(ValueColumn, y, value);
    }
    processor.EndFormat();
}

Lines ConfigurationLines(ContextProcessor const& processor) {
    using namespace ZplContextKeys;
    auto const& printer = *processor.GetPrinterContext();
    constexpr std::array<char const*, 4> Modes = {"tear-off", "cutter", "peel-off", "applicator"};
    return {
        {"Print head", std::to_string(printer.PrinterDpi().Value()) + " dpi"},
        {"Label design", std::to_string(printer.DesignDpi().Value()) + " dpi"},
        {"Print width", InDots(processor.at(LabelWidth))},
        {"Label length", InDots(processor.at(LabelLength))},
        {"Label home", std::to_string(processor.at(LabelOriginX)) + ", " + std::to_string(processor.at(LabelOriginY))},
        {"Label top", std::to_string(processor.at(LabelAdjustY))},
        {"Print mode", Modes[static_cast<std::size_t>(ZplCore::PrintModeToTell(processor))]},
        {"Darkness", DarknessText(processor)},
        {"Orientation", processor.at(PrintOrientation) == ZplPrintOrientation::Inverted ? "inverted" : "normal"},
        {"Mirror", processor.at(MirrorLabel) ? "yes" : "no"},
        {"Default font", Character(processor.at(DefaultFont))},
        {"Character set", std::to_string(processor.at(CodePageConverter).CodePage())},
        {"Format prefix", Character(printer.FormatPrefix())},
        {"Control prefix", Character(printer.ControlPrefix())},
        {"Delimiter", Character(printer.Delimiter())},
        {"Language", processor.at(CultureId)},
        {"Printer name", OrNone(processor.at(PrinterName))},
        ClockLine(processor),
    };
}

Lines NetworkLines() {
    Lines lines;
    std::array<char, 256> host{};
    if (::gethostname(host.data(), host.size() - 1) == 0) lines.emplace_back("Host name", host.data());

    ifaddrs* list = nullptr;
    if (::getifaddrs(&list) != 0) return lines;
    std::unique_ptr<ifaddrs, void (*)(ifaddrs*)> const owner(list, ::freeifaddrs);
    for (ifaddrs const* entry = list; entry; entry = entry->ifa_next) {
        if (!entry->ifa_addr || (entry->ifa_flags & IFF_UP) == 0) continue;
        int const family = entry->ifa_addr->sa_family;
        if (family != AF_INET && family != AF_INET6) continue;
        socklen_t const size = family == AF_INET ? sizeof(sockaddr_in) : sizeof(sockaddr_in6);
        std::array<char, NI_MAXHOST> address{};
        if (::getnameinfo(entry->ifa_addr, size, address.data(), address.size(), nullptr, 0, NI_NUMERICHOST) == 0) {
            lines.emplace_back(entry->ifa_name, address.data());
        }
    }
    return lines;
}
