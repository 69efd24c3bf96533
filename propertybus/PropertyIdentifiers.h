#pragma once

#include "propertybus/Property.h"

/// The groups of the bus.
namespace PropertyGroups {
inline constexpr char const* PrintOperations = "6883533A-B81A-40AD-8F1A-722A99A3AB41";
inline constexpr char const* AnalyticsLifetime = "712BCB93-845A-4525-BD07-F4A4BE17EFE4";
inline constexpr char const* Error = "2EBF9DEF-D51C-47FE-935E-5EDCC530B867";
inline constexpr char const* SubstratePrinterProperties = "41B87577-BD88-48CE-BF21-BF5A6BFC9FE3";
}  // namespace PropertyGroups

/// The identifiers of the properties that the interpreter stands on.
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
}  // namespace PropertyNameStrings
