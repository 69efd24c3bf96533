#pragma once

class CommandHandlerPool;

/// The handlers of this room, by the file that holds them.
void AddGraphicFieldHandler(CommandHandlerPool& pool);    // GF
void AddGraphicHandlers(CommandHandlerPool& pool);        // GB GC GD GE GS
void AddStoredGraphicHandlers(CommandHandlerPool& pool);  // DG HY IM IS XG
