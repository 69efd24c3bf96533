#include "fields/scan/Symbologies.h"

#include <algorithm>
#include <array>

namespace ZplCore {

namespace {

using Shape = SymbologyRule::Shape;
using By = SymbologyRule::ModuleBy;

// Hand-held readers resolve 0.13 to 0.15 mm; standards leave the least module to who applies them. At a till the least
// is 80 per cent of the nominal size, or 75 where a thermal printer cannot do otherwise (0.249 mm).
constexpr double Thin = 0.15;
constexpr double Retail = 0.249;
// A hand that sweeps over bars needs 5 mm of them; the standards of linear symbols ask for 15 per cent of the length of
// long ones too, which few labels keep to and readers of today do not need.
constexpr double Sweep = 5.0;

constexpr QuietZone Ten{10, 10, 0, 0};
constexpr QuietZone None{};
constexpr QuietZone Postal{3.2, 3.2, 0, 0};  // an eighth of an inch

constexpr SymbologyRule Bars(std::string_view name, std::string_view decoder) {
    return {name, Shape::Bars, Ten, Thin, Sweep, false, By::BarcodeDefaults, decoder};
}

constexpr SymbologyRule Till(std::string_view name, QuietZone quiet, std::string_view decoder) {
    return {name, Shape::Bars, quiet, Retail, Sweep, false, By::BarcodeDefaults, decoder};
}

constexpr SymbologyRule Area(std::string_view name, QuietZone quiet, By by, std::string_view decoder,
                             bool mayBeWhiteOnBlack = false) {
    return {name, Shape::Area, quiet, by == By::Symbology ? 0 : Thin, 0, mayBeWhiteOnBlack, by, decoder};
}

constexpr std::array Rules = std::to_array<SymbologyRule>({
    Bars("Code 128", "Code128"),        // ISO/IEC 15417
    Bars("Code 39", "Code39"),          // ISO/IEC 16388
    Bars("LOGMARS", "Code39"),          // MIL-STD-1189
    Bars("Interleaved 2 of 5", "ITF"),  // ISO/IEC 16390
    Bars("Codabar", "Codabar"),         // EN 798
    Bars("Code 93", "Code93"),          // AIM BC5
    Bars("Code 11", ""),                // AIM USD-8
    Bars("Industrial 2 of 5", ""),
    Bars("Standard 2 of 5", ""),
    Bars("MSI", ""),
    Bars("Plessey", ""),
    // ISO/IEC 15420, and the GS1 General Specifications.
    Till("EAN-13", {11, 7, 0, 0}, "EAN-13"),
    Till("EAN-8", {7, 7, 0, 0}, "EAN-8"),
    Till("UPC-A", {9, 9, 0, 0}, "UPC-A"),
    Till("UPC-E", {9, 7, 0, 0}, "UPC-E"),
    Till("EAN/UPC supplement", {7, 5, 0, 0}, ""),
    // With the component of ISO/IEC 24723 above the bars.
    Area("EAN-13 composite", {11, 7, 0, 0}, By::ModuleSize, "EAN-13"),
    Area("EAN-8 composite", {7, 7, 0, 0}, By::ModuleSize, "EAN-8"),
    Area("UPC-A composite", {9, 9, 0, 0}, By::ModuleSize, "UPC-A"),
    Area("UPC-E composite", {9, 7, 0, 0}, By::ModuleSize, "UPC-E"),
    Area("GS1-128 with CC-A or CC-B", Ten, By::ModuleSize, "Code128"),
    Area("GS1-128 with CC-C", Ten, By::ModuleSize, "Code128"),
    // ISO/IEC 24724: they need none.
    Area("GS1 DataBar Omnidirectional", None, By::ModuleSize, "DataBar"),
    Area("GS1 DataBar Truncated", None, By::ModuleSize, "DataBar"),
    Area("GS1 DataBar Stacked", None, By::ModuleSize, "DataBar"),
    Area("GS1 DataBar Stacked Omnidirectional", None, By::ModuleSize, "DataBar"),
    Area("GS1 DataBar Limited", None, By::ModuleSize, ""),
    Area("GS1 DataBar Expanded", None, By::ModuleSize, "DataBarExpanded"),
    Area("PDF417", {2, 2, 2, 2}, By::BarcodeDefaults, "PDF417"),            // ISO/IEC 15438
    Area("MicroPDF417", {1, 1, 1, 1}, By::BarcodeDefaults, ""),             // ISO/IEC 24728, 5.8
    Area("CODABLOCK", {10, 10, 0, 0}, By::BarcodeDefaults, ""),             // EN 12323
    Area("Code 49", {10, 1, 0, 0}, By::BarcodeDefaults, ""),                // AIM BC6
    Area("TLC39", {10, 10, 0, 0}, By::ModuleSize, ""),                      // of its Code 39
    Area("QR Code", {4, 4, 4, 4}, By::Magnification, "QRCode", true),       // ISO/IEC 18004
    Area("Aztec Code", None, By::Magnification, "Aztec", true),             // ISO/IEC 24778: needs none
    Area("Data Matrix", {1, 1, 1, 1}, By::ModuleSize, "DataMatrix", true),  // ISO/IEC 16022
    Area("MaxiCode", {0.8, 0.8, 0.8, 0.8}, By::Symbology, "MaxiCode"),      // ISO/IEC 16023: one module
    Area("POSTNET", Postal, By::Symbology, ""),
    Area("PLANET", Postal, By::Symbology, ""),
    Area("Intelligent Mail", Postal, By::Symbology, ""),
});

}  // namespace

SymbologyRule const& RuleOf(std::string_view symbology) {
    auto const* const rule =
        std::find_if(Rules.begin(), Rules.end(), [&](auto const& row) { return row.name == symbology; });
    static constexpr SymbologyRule Other = Area("such symbols", None, By::ModuleSize, "");
    return rule == Rules.end() ? Other : *rule;
}

}  // namespace ZplCore
