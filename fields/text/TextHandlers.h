#pragma once

class CommandHandlerPool;

/// The handlers of this room, by the file that holds them.
void AddFontHandlers(CommandHandlerPool& pool);       // A A@ CF CW
void AddTextBlockHandlers(CommandHandlerPool& pool);  // FB TB
