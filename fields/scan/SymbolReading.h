#pragma once

#include <optional>
#include <string>

#include "fields/map/FieldMap.h"
#include "fields/map/SymbolReader.h"
#include "fields/scan/Symbologies.h"

namespace ZplCore {

/// A symbol on its page, to be read.
struct SymbolOnPage {
    MappedSymbol const& symbol;
    SymbologyRule const& rule;
    Scripting::PixelRows const& picture;  ///< as it would stand on white paper
    Scripting::PixelRows shown;           ///< as it stands on the page, with the ground that belongs to it
    double module;                        ///< pixels; 0 if that is not known
};

/// How a reader reads a symbol.
struct SymbolReading {
    enum class Result {
        Right,
        Unknown,     ///< the reader does not know such symbols, not even on white paper
        Unread,      ///< it reads the symbol on white paper, but not on its page
        Other,       ///< it reads something else on the page than on white paper
        NotAsAsked,  ///< it reads what the symbol says, which is not what the field asks for
    };
    Result result = Result::Right;
    std::string read;    ///< of the last two
    std::string wanted;  ///< of the last two
};

SymbolReading ReadSymbol(SymbolOnPage const& symbol, SymbolReader const& reader);

}  // namespace ZplCore
