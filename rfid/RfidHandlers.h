#pragma once

class CommandHandlerPool;

/// The tag commands, for printers with a tag encoder: HL RA RB RF RI RL RS RV RW RZ WF.
void AddRfidHandlers(CommandHandlerPool& pool);
