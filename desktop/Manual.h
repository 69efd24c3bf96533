#pragma once

#include <string>

#include "desktop/Options.h"

/// What `zpl --help` tells.
std::string GeneralHelp();
/// What `zpl COMMAND --help` tells; lines of at most 80 columns.
std::string HelpText(CommandRow const& command);

/// The manual page of a command, zpl-COMMAND(1), in the roff macros of man(7).
std::string ManualPage(CommandRow const& command, std::string const& version);
/// That of them all, zpl(1).
std::string ManualPage(std::string const& version);
