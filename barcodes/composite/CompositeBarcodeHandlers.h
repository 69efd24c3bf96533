#pragma once

class CommandHandlerPool;

/// The handlers of this room, by the file that holds them.
void AddGs1DatabarBarcodeHandler(CommandHandlerPool& pool);  // BR
void AddTlc39BarcodeHandler(CommandHandlerPool& pool);       // BT
