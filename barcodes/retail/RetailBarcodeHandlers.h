#pragma once

class CommandHandlerPool;

/// The handlers of this room.
void AddRetailBarcodeHandlers(CommandHandlerPool& pool);  // B8 B9 BE BS BU
