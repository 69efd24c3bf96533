#pragma once

#include <filesystem>
#include <string>

#include "foundation/Features.h"

/// What the interpreter takes from the machine that it runs on. A program reads it from its settings when it starts,
/// and hands it down: nothing below the programs asks for the settings of the process.
struct MachineSettings {
    std::filesystem::path formatsFolder;                     ///< where formats and graphics that streams store are kept
    std::filesystem::path jobsFolder;                        ///< below which each job gets a folder of its own
    std::filesystem::path fontsFolder = "/usr/share/fonts";  ///< below which font files are looked for
    std::string fontFiles;                                   ///< the files of single fonts; see UseFontFiles
    Features features;
    bool runningOnTarget = false;  ///< on a printer, false on a desk
};
