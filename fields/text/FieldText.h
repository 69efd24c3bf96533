#pragma once

#include <string>
#include <string_view>

#include "frontend/context/ContextProcessor.h"

namespace ZplCore {

/// The data of the field in force as UTF-8, by the character set in force. A tab is a blank.
std::string FieldText(std::string_view data, ContextProcessor const& processor);

/// Reports data that are plainly not of the character set that they are read in, with the set that is likely meant.
void ReportMisread(std::string_view data, ContextProcessor const& processor);

/// The beginning of what the field under way says, UTF-8: enough to know it by.
std::string BeginningOfData(ContextProcessor const& processor);

}  // namespace ZplCore
