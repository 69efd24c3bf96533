#pragma once

#include <functional>
#include <vector>

#include "desktop/web/DrawingDoors.h"
#include "desktop/web/PrinterState.h"
#include "desktop/web/Router.h"

/// The doors to the formats and graphics that the printer behind this has stored.
std::vector<Door> ObjectDoors(PrinterState const* state, DrawingDoors& drawing);
