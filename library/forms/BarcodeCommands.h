#pragma once

#include <algorithm>
#include <array>
#include <cstddef>
#include <string_view>

/// Where the command of a symbology has its settings, as indices of parameters; -1 where it has none of that kind.
struct BarcodeCommand {
    std::string_view letters;
    int height;  ///< of the bars or of a row
    int line;    ///< whether the data are printed
    int above;   ///< whether they stand above the bars
    int module;  ///< width of a module, or the magnification
    /// What it takes from `^BY`: W the width of a module, R that and the ratio; '-' nothing.
    char defaults;
    bool countsModules = false;  ///< the height is one of modules, not of dots
};

/// By letters. `^BD` has one size.
inline constexpr std::array<BarcodeCommand, 29> BarcodeCommands{{
    {"B0", -1, -1, -1, 1, '-'},  {"B1", 2, 3, 4, -1, 'R'},         {"B2", 1, 2, 3, -1, 'R'},
    {"B3", 2, 3, 4, -1, 'R'},    {"B4", 1, -1, -1, -1, 'W', true}, {"B5", 1, 2, 3, -1, '-'},
    {"B7", 1, -1, -1, -1, 'W'},  {"B8", 1, 2, 3, -1, 'W'},         {"B9", 1, 2, 3, -1, 'W'},
    {"BA", 1, 2, 3, -1, 'W'},    {"BB", 1, -1, -1, -1, 'W', true}, {"BC", 1, 2, 3, -1, 'W'},
    {"BD", -1, -1, -1, -1, '-'}, {"BE", 1, 2, 3, -1, 'W'},         {"BF", 1, -1, -1, -1, 'W'},
    {"BI", 1, 2, 3, -1, 'R'},    {"BJ", 1, 2, 3, -1, 'R'},         {"BK", 2, 3, 4, -1, 'R'},
    {"BL", 1, -1, 2, -1, 'R'},   {"BM", 2, 3, 4, -1, 'R'},         {"BO", -1, -1, -1, 1, '-'},
    {"BP", 2, 3, 4, -1, 'R'},    {"BQ", -1, -1, -1, 2, '-'},       {"BR", 4, -1, -1, 2, '-'},
    {"BS", 1, 2, 3, -1, 'W'},    {"BT", 3, -1, -1, 1, '-'},        {"BU", 1, 2, 3, -1, 'W'},
    {"BX", -1, -1, -1, 1, '-'},  {"BZ", 1, 2, 3, -1, '-'},
}};

/// Null if the command is that of no symbology.
constexpr BarcodeCommand const* FindBarcodeCommand(std::string_view letters) {
    auto const found = std::find_if(BarcodeCommands.begin(), BarcodeCommands.end(),
                                    [&](BarcodeCommand const& row) { return row.letters == letters; });
    return found == BarcodeCommands.end() ? nullptr : &*found;
}
