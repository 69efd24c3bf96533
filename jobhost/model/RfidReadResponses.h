#pragma once

#include <optional>
#include <string_view>
#include <vector>

#include "Scripting/RfidOperation.h"

/// What the tag encoder read for a page, as it travels on the bus: a JSON array of objects with the number
/// "Sequence" and the text "Data". Nothing if the text is anything else.
std::optional<std::vector<RfidReadResponse>> ParseRfidReadResponses(std::string_view text);

/// The inverse.
std::string RfidReadResponsesText(std::vector<RfidReadResponse> const& responses);
