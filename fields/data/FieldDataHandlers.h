#pragma once

class CommandHandlerPool;

/// The handlers of this room, by the file that holds them.
void AddFieldDataHandlers(CommandHandlerPool& pool);    // FC FD FH FN FS FV FX SF SN
void AddFieldOriginHandlers(CommandHandlerPool& pool);  // FO FP FR FT FW
