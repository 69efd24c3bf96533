#pragma once

class CommandHandlerPool;

/// What holds for the barcodes that follow.
void AddBarcodeDefaultHandlers(CommandHandlerPool& pool);  // BY CV
