#pragma once

#include <chrono>
#include <optional>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "foundation/MachineSettings.h"
#include "library/VirtualTag.h"

/// What a desk is opened with.
struct DeskSettings {
    unsigned designDpi = 203;   ///< that streams are made for
    unsigned printerDpi = 203;  ///< of the pages
    double widthInches = 4;     ///< of the label part; a stream that gives its own has the last word
    double heightInches = 6;
    std::vector<std::pair<std::string, std::string>> fonts;     ///< font letter or object name, and file
    std::optional<std::chrono::system_clock::time_point> time;  ///< local wall time at which the clock stands still
    std::optional<VirtualTag> tag;  ///< that every label carries; without one the tag commands are unknown
    bool readsSymbols = false;      ///< barcodes are read back from their pages
    /// Without a formats folder, what streams store lasts as long as the desk.
    MachineSettings machine;
};

/// Whether there are printers of that resolution, in dots per inch.
constexpr bool IsPrinterDpi(unsigned dpi) { return dpi == 203 || dpi == 300 || dpi == 600; }

/// Whether a label part may be so long or wide, in inches.
constexpr bool IsLabelSide(double side) { return side >= 0.1 && side <= 200; }

/// The time of a clock that stands still, as 2026-03-31T14:05:00; nothing if the text is none.
std::optional<std::chrono::system_clock::time_point> ReadTime(std::string const& text);

/// A font and the file that draws it, as NAME=FILE; nothing if the text is no such pair.
std::optional<std::pair<std::string, std::string>> ReadFont(std::string_view text);
