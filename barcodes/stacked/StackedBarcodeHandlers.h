#pragma once

class CommandHandlerPool;

/// The handlers of this room, by the file that holds them.
void AddCodaBlockBarcodeHandler(CommandHandlerPool& pool);  // BB
void AddStackedBarcodeHandlers(CommandHandlerPool& pool);   // B4 B7 BF
