#pragma once

class CommandHandlerPool;

/// Adds the handlers of all families of this folder.
void AddBarcodeHandlers(CommandHandlerPool& pool);
