#pragma once

class CommandHandlerPool;

/// The handlers of this room.
void AddMatrixBarcodeHandlers(CommandHandlerPool& pool);  // B0 BD BO BQ BX
