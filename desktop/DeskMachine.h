#pragma once

#include "foundation/AppSettings.h"
#include "foundation/MachineSettings.h"

/// What the programs of the command line, each in its main, read for their desk from the settings of the process.
/// Stored objects last as long as the command, and so there is no folder for them.
inline MachineSettings DeskMachine() {
    auto const& settings = AppSettings::GetInstance();
    MachineSettings machine;
    machine.fontsFolder = settings.SystemFontsDir();
    machine.fontFiles = settings.Value("FontFiles");
    machine.features = Features::GetInstance();
    return machine;
}
