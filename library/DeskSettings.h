#pragma once

#include <chrono>
#include <optional>
#include <string>
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
