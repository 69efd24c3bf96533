#pragma once

class CommandHandlerPool;

/// The handler families of this folder, one function each.
void AddFormatHandlers(CommandHandlerPool& pool);                             // XA XZ DF XF
void AddLabelSetupHandlers(CommandHandlerPool& pool);                         // CI JM LH LL LR LT MC MU PM PO PW
void AddMediaHandlers(CommandHandlerPool& pool);                              // MD MM MT PR SD TA XB
void AddClockHandlers(CommandHandlerPool& pool);                              // KD KL KN SL SO ST
void AddPrintControlHandlers(CommandHandlerPool& pool, bool disablePausing);  // CC CD CT JA JR JX JZ PP PQ PS SP
void AddHostHandlers(CommandHandlerPool& pool);                               // HS HV WC WL

/// All of them.
void AddLabelHandlers(CommandHandlerPool& pool, bool disablePausing);
