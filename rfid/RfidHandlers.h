#pragma once

class CommandHandlerPool;

/// Reads and writes, which belong to fields: RA RF RI WF.
void AddTagFieldHandlers(CommandHandlerPool& pool);
/// Locks, set-up, log and reports: HL RB RL RS RV RW RZ.
void AddTagSetupHandlers(CommandHandlerPool& pool);

/// The tag commands, for printers with a tag encoder.
inline void AddRfidHandlers(CommandHandlerPool& pool) {
    AddTagFieldHandlers(pool);
    AddTagSetupHandlers(pool);
}
