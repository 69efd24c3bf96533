#pragma once

#include <string_view>

namespace ZplCore {

/// White that a symbol needs at each of its sides, as it stands upright.
struct QuietZone {
    double left = 0;
    double right = 0;
    double top = 0;
    double bottom = 0;
};

/// What a scanner asks of the symbols of a symbology.
struct SymbologyRule {
    enum class Shape {
        Bars,  ///< one row of bars: any line across all of them is enough
        Area,  ///< all of the symbol counts
    };
    /// What makes a module as wide as it is.
    enum class ModuleBy { BarcodeDefaults, Magnification, ModuleSize, Symbology };

    std::string_view name;
    Shape shape;
    QuietZone quiet;         ///< modules; millimetres where the symbology sets the module
    double leastModule;      ///< millimetres; 0 where the symbology sets it
    double leastHeight;      ///< of bars, in millimetres; 0 where there is none
    bool mayBeWhiteOnBlack;  ///< by its standard
    ModuleBy moduleBy;
    std::string_view decoder;  ///< what the decoder calls it; empty if it does not know it
};

/// The rule of a symbology by its name in the field map; one that asks for little if there is none.
SymbologyRule const& RuleOf(std::string_view symbology);

}  // namespace ZplCore
