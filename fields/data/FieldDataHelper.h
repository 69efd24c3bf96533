#pragma once

#include <string>

#include "frontend/context/ContextProcessor.h"
#include "frontend/stream/ZplCommand.h"

namespace ZplCore::FieldDataHelper {

/// The data of a command as the host sent it: the parameters from `first` on, joined by the delimiter that parted them,
/// whatever it has been changed to since.
std::string ProcessDelimiterData(ZplCommand const& command, std::size_t first = 0);

/// `data` with each `indicator` that two hexadecimal digits follow replaced by the byte that they name. An indicator
/// without two digits behind it stays as it stands; 0 stands for no indicator.
std::string ExpandHex(std::string data, char indicator);

/// What the field in force makes of raw field data: bytes, before they are read through a code page.
std::string ProcessHexAndClockData(std::string data, ContextProcessor const& processor);

}  // namespace ZplCore::FieldDataHelper
