#pragma once

#include <string>

#include "printengine/src/scripts/ModuleTables.h"

/// The modules that only few labels need, loaded when the first one does, once for the process.
namespace PrintEngine::Scripts {

/// Null if the module is not there, or of another version.
ZplScriptsModule const* ScriptsModule();
ZplBreaksModule const* BreaksModule();

/// Why ScriptsModule() is null.
std::string const& WhyNoScripts();

}  // namespace PrintEngine::Scripts
