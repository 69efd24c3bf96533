#pragma once

#include <string>
#include <vector>

#include "desktop/CommandLine.h"

/// `zpl render`: draws every page of the streams into files.
ExitCode RunRender(RenderOptions const& options);

/// `zpl check`: reports what the streams hold, and draws nothing.
ExitCode RunCheck(RenderOptions const& options);

/// Files in place of the patterns that no shell has resolved, as of *.zpl; what matches no file stays.
std::vector<std::string> NamedInputs(std::vector<std::string> const& inputs);

/// Reads a whole input; "-" is standard input. Throws UsageError if it cannot be read.
std::string ReadInput(std::string const& name);

/// The number of the signal that ended the run early; 0 if none did.
int InterruptedBy();

/// `code` unless an earlier input ended worse.
ExitCode Worse(ExitCode earlier, ExitCode code);
