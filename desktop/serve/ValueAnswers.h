#pragma once

#include <string>
#include <string_view>

#include "desktop/serve/HostAnswers.h"

/// The answer to a line `! U1 getvar "name"`: the value in double quotes, "?" for a name that is not known. Empty for a
/// line that is not answered: `setvar`, which sets nothing here, and what cannot be read.
std::string AnswerByName(PrinterFacts const& printer, std::string_view line);
