#pragma once

#include <string>
#include <string_view>

#include "Scripting/PrinterContextInterface.h"
#include "frontend/stream/ZplTypes.h"

class ContextProcessor;

namespace ZplCore {

/// What of the answer to `~HS` belongs to the stream and not to the printer.
struct StreamStatus {
    unsigned labelLength = 0;  ///< dots
    bool formatOpen = false;   ///< a format is only partly received
    ZplPrintMode printMode = ZplPrintMode::TearOff;
    unsigned storedGraphics = 0;
};

/// The three strings that answer `~HS`, each between STX and ETX with CR and LF behind it, in one piece: monitoring
/// programs read them from one packet. Numbers are padded with zeros to their width, and cut to it by their largest
/// value.
std::string HostStatusAnswer(Scripting::PrinterStatus const& printer, StreamStatus const& stream);

/// What the printer does with its pages, as hosts are told: until a stream sets a mode they are torn off, whatever a
/// label asks for when nothing is set.
ZplPrintMode PrintModeToTell(ContextProcessor const& processor);

/// Text between STX and ETX, with CR and LF behind it.
std::string HostString(std::string_view text);

}  // namespace ZplCore
