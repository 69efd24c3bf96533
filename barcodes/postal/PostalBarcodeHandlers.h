#pragma once

class CommandHandlerPool;

/// The handlers of this room.
void AddPostalBarcodeHandlers(CommandHandlerPool& pool);  // B5 BZ
