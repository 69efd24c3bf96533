#pragma once

#include "frontend/handlers/CommandHandlerPool.h"

/// Every command of the language: the one place that knows all handler families. `rfidEncoderSupport` adds the tag
/// commands; `disablePausing` selects the print quantity that never pauses.
CommandHandlerPool CreateHandlers(bool rfidEncoderSupport, bool disablePausing);
