#pragma once

#include <chrono>
#include <optional>
#include <string>
#include <string_view>

#include "Scripting/Dpi.h"
#include "Scripting/RfidOperation.h"

namespace Scripting {

/// What the printer tells a host about itself.
struct PrinterStatus {
    bool paperOut = false;
    bool paused = false;
    bool headOpen = false;
    bool ribbonOut = false;
    bool thermalTransfer = false;
    bool continuousMedia = false;
    unsigned partLength = 0;       ///< of one label of the media, in dots of the design resolution
    unsigned formatsInBuffer = 0;  ///< jobs that wait
    unsigned labelsRemaining = 0;  ///< of the batch being printed
};

/// The services of the printer that a print stream can ask for: its characters, resolutions and clock, and the
/// requests that act on the machine. All calls come from the thread that interprets streams.
class PrinterContextInterface {
public:
    virtual ~PrinterContextInterface() = default;

    /// The characters that open and part commands. They are asked for anew before every command, so a change counts
    /// from the next byte on. Setters take any byte; who calls them has checked it.
    virtual char FormatPrefix() const = 0;
    virtual char ControlPrefix() const = 0;
    virtual char Delimiter() const = 0;
    virtual void SetFormatPrefix(char character) = 0;
    virtual void SetControlPrefix(char character) = 0;
    virtual void SetDelimiter(char character) = 0;

    /// Resolution of the print head: pages are drawn in its pixels.
    virtual Dpi PrinterDpi() const = 0;
    /// Resolution that labels are designed for: everything above the print engine speaks its dots.
    virtual Dpi DesignDpi() const = 0;

    /// The printer's clock, in local wall time. What a stream moves it by is the stream's own affair.
    virtual std::chrono::system_clock::time_point Now() const = 0;

    /// Whether a finished label is cut off.
    virtual bool CutsAfterLabel() const = 0;
    /// How many labels pass between cuts, if the printer counts them itself; 0 stands for a cut after every label.
    virtual std::optional<unsigned> CutInterval() const = 0;

    virtual PrinterStatus Status() const { return {}; }

    /// Requests of the stream to the machine.
    virtual void CancelAll() = 0;
    virtual void Pause() = 0;
    virtual void Start() = 0;
    /// Puts the print state back, made before pages are deleted or rendered again.
    virtual void Reset() = 0;

    /// Sends `data` (raw bytes) back to the sender of the stream.
    virtual void SendToHost(std::string_view data) = 0;

    /// The tag log: what a drawn page asks of its tag, and what was read from it before. Past its limit the oldest
    /// lines are dropped.
    virtual void AddToTagLog(std::vector<RfidOperation> const& /*operations*/,
                             std::vector<RfidReadResponse> const& /*responses*/) {}
    /// The log, which is empty afterwards.
    virtual std::string TakeTagLog() { return {}; }
};

}  // namespace Scripting
