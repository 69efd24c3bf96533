#include "labels/HostStatus.h"

#include <algorithm>

#include "frontend/context/ContextProcessor.h"
#include "frontend/context/ZplContextKeys.h"

namespace ZplCore {

namespace {

/// 9600 baud, 8 data bits, no parity, 1 stop bit, Xon/Xoff: what hosts without a serial line expect to read.
constexpr unsigned InterfaceSettings = 0b000011110;
constexpr unsigned ContinuousMedia = 0x80;
constexpr unsigned ThermalTransfer = 0x01;

std::string Padded(unsigned value, unsigned width) {
    unsigned largest = 9;
    for (unsigned i = 1; i < width; ++i) largest = largest * 10 + 9;
    std::string const digits = std::to_string(std::min(value, largest));
    return std::string(width - digits.size(), '0') + digits;
}

std::string Flag(bool set) { return set ? "1" : "0"; }

/// The host's number of a print mode.
unsigned HostPrintMode(ZplPrintMode mode) {
    switch (mode) {
        case ZplPrintMode::PeelOff: return 1;
        case ZplPrintMode::Cutter: return 3;
        case ZplPrintMode::Applicator: return 4;
        case ZplPrintMode::TearOff: break;
    }
    return 2;
}

std::string Join(std::initializer_list<std::string> fields) {
    std::string text;
    for (auto const& field : fields) text += (text.empty() ? "" : ",") + field;
    return text;
}

}  // namespace

ZplPrintMode PrintModeToTell(ContextProcessor const& processor) {
    auto const* const mode = processor.GetSystemContext()->Find(ZplContextKeys::PrintMode);
    return mode ? *mode : ZplPrintMode::TearOff;
}

std::string HostString(std::string_view text) { return "\x02" + std::string(text) + "\x03\r\n"; }

std::string HostStatusAnswer(Scripting::PrinterStatus const& printer, StreamStatus const& stream) {
    unsigned const settings =
        (printer.continuousMedia ? ContinuousMedia : 0) | (printer.thermalTransfer ? ThermalTransfer : 0);
    bool const bufferFull = false;
    bool const diagnostics = false;
    return HostString(Join({Padded(InterfaceSettings, 3), Flag(printer.paperOut), Flag(printer.paused),
                            Padded(stream.labelLength, 4), Padded(printer.formatsInBuffer, 3), Flag(bufferFull),
                            Flag(diagnostics), Flag(stream.formatOpen), "000", "0", "0", "0"})) +
           HostString(Join({Padded(settings, 3), "0", Flag(printer.headOpen), Flag(printer.ribbonOut),
                            Flag(printer.thermalTransfer), Padded(HostPrintMode(stream.printMode), 1), "0", "0",
                            Padded(printer.labelsRemaining, 8), "1", Padded(stream.storedGraphics, 3)})) +
           HostString("0000,0");
}

}  // namespace ZplCore
