#pragma once

#include <memory>

#include "fields/map/SymbolReader.h"

/// The reader of symbols in the module beside the print engine, which is loaded now and stays for the process. Throws
/// std::runtime_error with the reason if it cannot be loaded.
std::shared_ptr<ZplCore::SymbolReader const> LoadSymbolReader();
