#pragma once

#include "propertybus/Property.h"

/// The components of the bus.
namespace ComponentIdentifiers {
inline constexpr char const* ZplHost = "33B8580D-7AB6-4D89-ADEE-0A499BB6D062";
inline constexpr char const* FirmwareDriver = "B80EB2EA-4F49-423A-875C-8ACB1ACB9734";
inline constexpr char const* JobHandler = "15C182D3-7F25-40AE-AF4E-36DAAD1DA4A4";
inline constexpr char const* PerMainAndApps = "9829BC5B-6892-46DB-A8AA-A6FEAB588255";
inline constexpr char const* PrintSpooler = "90AF7DE7-6DB1-45AF-A46F-C66605612E61";
}  // namespace ComponentIdentifiers

/// Their labels for people.
namespace ComponentIdentifierStrings {
inline constexpr char const* ZplHost = "ZplHost";
}  // namespace ComponentIdentifierStrings

/// The groups of the bus.
namespace PropertyGroups {
inline constexpr char const* PrintOperations = "6883533A-B81A-40AD-8F1A-722A99A3AB41";
inline constexpr char const* AnalyticsLifetime = "712BCB93-845A-4525-BD07-F4A4BE17EFE4";
inline constexpr char const* General = "99A61D40-20CE-41EA-A579-EB92C6ED94C6";
inline constexpr char const* PrintingPreferences = "B29B76CD-9926-4475-8767-3FB151CF1AC9";
inline constexpr char const* RfidEncoderOperations = "BA0CA03B-1567-428E-BB32-3ADA628409A9";
inline constexpr char const* DebugZone = "5D3C0E0A-6C1F-4B58-9E0B-0C6A4D0F7A21";
inline constexpr char const* Error = "2EBF9DEF-D51C-47FE-935E-5EDCC530B867";
inline constexpr char const* SubstratePrinterProperties = "41B87577-BD88-48CE-BF21-BF5A6BFC9FE3";
}  // namespace PropertyGroups

/// The identifiers of the properties that the process has or follows.
namespace PropertyNames {
inline constexpr char const* ZPLMissingCommands = "4F2C2452-5E5A-4A61-AC87-D69F4C68B88C";
inline constexpr char const* ZPLLifetimeScriptCount = "0C5D0098-42CC-4CD3-9566-F92C46D976C1";
inline constexpr char const* ZPLDelimiterCharacter = "CA3D2A8F-144A-4285-A841-AE2F8B21E31A";
inline constexpr char const* ZPLFormatCharacter = "43AEBC7B-1DD6-422D-A089-EE6A361BDB00";
inline constexpr char const* ZPLControlCharacter = "6EB0F47F-8FEA-457D-9033-46E52AB737DE";
inline constexpr char const* DefaultZplContinuousLabelLength = "A8218FF1-640A-4B1D-8801-F92FB06C2294";
inline constexpr char const* SubstrateMode = "20FFCE20-2E51-4EAD-956B-F45EFB4C3E75";
inline constexpr char const* ZPLEmulatedDpi = "873082B1-3902-4C70-9859-DE823B1B273B";
inline constexpr char const* ZPLLowMemoryError = "7F29A456-F79C-49D7-9B97-6F080188E472";
inline constexpr char const* ZplUnPause = "749AE083-34FF-4C7A-A354-9BF06F3DD0FA";
inline constexpr char const* ZPLCommandToProcess = "D39FA894-27F4-4527-89EE-2962D8DC2C92";
inline constexpr char const* ZPLResponseToProcess = "F49D4EE5-D6D4-4CA6-869C-F3B6F91A6303";
inline constexpr char const* StreamToPrint = "3B7F2A95-60D4-4E18-8C73-F1A94D05E6B2";
inline constexpr char const* StreamTaken = "A1C48E07-D952-4F3B-B60E-27859CF3410D";
inline constexpr char const* ZPLFinding = "8E61C0D7-42F9-4B35-A1D8-57B09E3C2F64";
inline constexpr char const* PrintJobStatus = "5B8CCE73-BF35-49C9-B3C1-0276DE4DC6D1";
inline constexpr char const* PrintingIsStopped = "E47994EA-42C9-4D2E-A414-F6B6D4BFE172";
inline constexpr char const* JobToPrintPathName = "B2BF4D98-0BC4-4D2F-B9B2-354D7A597FCF";
inline constexpr char const* PrintedPages = "5D0F3A86-E1B7-4C29-9A64-38C2D7F1B05E";
inline constexpr char const* CurrentPrintingPageNumber = "69C345C2-D02A-4517-80EE-359CBFBF13D5";
inline constexpr char const* PrintOnDemandToggle = "6B0C4F52-9D0E-4C37-8C55-2E0B8F4A9D13";
inline constexpr char const* PrintStyle = "4AD8DC1B-1023-4C5A-AABC-2182FF62DDC5";
inline constexpr char const* ZPLCancelAllJobs = "2AB1D438-E4C5-45EB-995D-E0DF6A2D119D";
inline constexpr char const* PrintingUnPaused = "A03F4D7F-957C-4A93-8AA4-F853C915964C";
inline constexpr char const* RfidReadCommandResponse = "FA533706-6F37-46B1-BAEC-DC64ADAB2CE8";
inline constexpr char const* CanSendCurrentJobToPrintResponse = "898415F6-9C63-4A20-A70D-041C71B95F87";
inline constexpr char const* ZPLRenderingJob = "F8F6A924-7FB8-41F4-A5EC-4A82D7794DC7";
inline constexpr char const* DotsPerInch = "1E7B5A60-52C4-4E8D-9B3F-7A1C0D2E6F84";
inline constexpr char const* ResumePrintingFromPageNumber = "C4D2A9E1-7F36-4B0D-8A5C-3E9F1B6D2047";
inline constexpr char const* ResumePrinting = "0A9E3C57-B1D8-4F62-95E4-6C7D8F20A1B3";
inline constexpr char const* PrintOnDemandModeUpdateLastPage = "7D61F0B2-3A8C-4E95-B7D4-902C5E1F6A38";
inline constexpr char const* PausePrinting = "93B6F1D8-2C47-4E0A-B5D9-6A81C3F7E204";
inline constexpr char const* JobToCancel = "6C94F1B3-2E8A-4D57-90BC-D35A7E1840F9";
inline constexpr char const* CancelAllPrintJobs = "E52B8D14-6F90-47A3-8C1E-B40D7A93F526";
}  // namespace PropertyNames

/// Their labels for people.
namespace PropertyNameStrings {
inline constexpr char const* ZPLMissingCommands = "ZPL commands not supported";
inline constexpr char const* ZPLLifetimeScriptCount = "ZPL Lifetime Script Count";
inline constexpr char const* ZPLDelimiterCharacter = "ZPL Delimiter Character";
inline constexpr char const* ZPLFormatCharacter = "ZPL Format Prefix";
inline constexpr char const* ZPLControlCharacter = "ZPL Control Prefix";
inline constexpr char const* DefaultZplContinuousLabelLength = "Default Zpl Continuous Label Length";
inline constexpr char const* SubstrateMode = "SubstrateMode (0-Unknown,1-NotPresent,2-Smart,3-Manual)";
inline constexpr char const* ZPLEmulatedDpi = "ZPL Emulated Dpi";
inline constexpr char const* ZPLLowMemoryError = "ZPLLowMemoryError";
inline constexpr char const* ZplUnPause = "ZplUnPause";
inline constexpr char const* ZPLCommandToProcess = "Processing ZPL command";
inline constexpr char const* ZPLResponseToProcess = "responding ZPL command";
inline constexpr char const* StreamToPrint = "Stream To Print";
inline constexpr char const* StreamTaken = "Stream Taken";
inline constexpr char const* ZPLFinding = "ZPL Finding";
inline constexpr char const* PrintJobStatus = "Job Status";
inline constexpr char const* PrintingIsStopped = "Printing Is Stopped";
inline constexpr char const* JobToPrintPathName = "Job To Print PathName";
inline constexpr char const* PrintedPages = "Printed Pages";
inline constexpr char const* CurrentPrintingPageNumber = "Current Printing Page Number";
inline constexpr char const* PrintOnDemandToggle = "Print On Demand";
inline constexpr char const* PrintStyle = "Print Style";
inline constexpr char const* ZPLCancelAllJobs = "Cancel all ZPL jobs";
inline constexpr char const* PrintingUnPaused = "Selected un pause";
inline constexpr char const* RfidReadCommandResponse = "RFID Read Command Response";
inline constexpr char const* CanSendCurrentJobToPrintResponse = "CanSendCurrentJobToPrintResponse";
inline constexpr char const* ZPLRenderingJob = "ZPL render job";
inline constexpr char const* DotsPerInch = "Dots Per Inch";
inline constexpr char const* ResumePrintingFromPageNumber = "Resume Printing From Page Number";
inline constexpr char const* ResumePrinting = "Resume Printing";
inline constexpr char const* PrintOnDemandModeUpdateLastPage = "Print On Demand Mode Update Last Page";
inline constexpr char const* PausePrinting = "Pause Printing";
inline constexpr char const* JobToCancel = "Job To Cancel";
inline constexpr char const* CancelAllPrintJobs = "Cancel All Print Jobs";
}  // namespace PropertyNameStrings
