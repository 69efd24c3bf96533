#pragma once

class CommandHandlerPool;

/// The handlers of this room, by the file that holds them.
void AddCode128BarcodeHandler(CommandHandlerPool& pool);  // BC
void AddLinearBarcodeHandlers(CommandHandlerPool& pool);  // B1 B2 B3 BA BI BJ BK BL BM BP
