#pragma once

#include "foundation/MachineSettings.h"

/// The machine that this process runs on, by its settings.
MachineSettings Machine();
