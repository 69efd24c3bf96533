#include "Barcode/Encoder/ModuleEncoder.h"

#include <cmath>

#include "printengine/src/barcode/PublishedSymbol.h"

namespace Barcode::Encoder {

namespace {

struct Symbology {
    ModuleSymbology symbology;
    int plain;
    int composite;
};

constexpr Symbology Symbologies[] = {
    {ModuleSymbology::Code49, BARCODE_CODE49, 0},
    {ModuleSymbology::MaxiCode, BARCODE_MAXICODE, 0},
    {ModuleSymbology::IntelligentMail, BARCODE_USPS_IMAIL, 0},
    {ModuleSymbology::GS1128, BARCODE_GS1_128, BARCODE_GS1_128_CC},
    {ModuleSymbology::DataBarOmnidirectional, BARCODE_DBAR_OMN, BARCODE_DBAR_OMN_CC},
    {ModuleSymbology::DataBarStacked, BARCODE_DBAR_STK, BARCODE_DBAR_STK_CC},
    {ModuleSymbology::DataBarStackedOmnidirectional, BARCODE_DBAR_OMNSTK, BARCODE_DBAR_OMNSTK_CC},
    {ModuleSymbology::DataBarLimited, BARCODE_DBAR_LTD, BARCODE_DBAR_LTD_CC},
    {ModuleSymbology::DataBarExpanded, BARCODE_DBAR_EXP, BARCODE_DBAR_EXP_CC},
    {ModuleSymbology::DataBarExpandedStacked, BARCODE_DBAR_EXPSTK, BARCODE_DBAR_EXPSTK_CC},
    {ModuleSymbology::UPCA, BARCODE_UPCA, BARCODE_UPCA_CC},
    {ModuleSymbology::UPCE, BARCODE_UPCE, BARCODE_UPCE_CC},
    {ModuleSymbology::EAN, BARCODE_EANX, BARCODE_EANX_CC},
};

int LibrarySymbology(ModuleRequest const& request) {
    for (auto const& row : Symbologies) {
        if (row.symbology == request.symbology) return request.isComposite ? row.composite : row.plain;
    }
    return 0;
}

/// Element strings as the library reads them, with its FNC1 (a bracket) where it leaves it out: it takes identifiers
/// that begin with 23 for ones of fixed length. Without identifiers a linear part is left as it is.
std::string ElementStrings(std::string_view bracketed) {
    std::string elements;
    bool lacksSeparator = false;
    for (std::size_t i = 0; i < bracketed.size(); ++i) {
        bool const opens = bracketed[i] == '[';
        if (opens && lacksSeparator) elements += '[';
        if (opens) lacksSeparator = bracketed.substr(i + 1, 2) == "23";
        elements += opens ? '(' : bracketed[i] == ']' ? ')' : bracketed[i];
    }
    return elements;
}

/// The places where the library looks for each option.
void SetOptions(PublishedSymbol& symbol, ModuleRequest const& request) {
    if (request.isGs1) symbol->input_mode = GS1_MODE | GS1NOCHECK_MODE | GS1PARENS_MODE;
    if (request.mode != 0) symbol->option_1 = static_cast<int>(request.mode);
    if (request.columns != 0) symbol->option_2 = static_cast<int>(request.columns);
    if (request.count >= 2) {
        symbol->structapp.index = static_cast<int>(request.index);
        symbol->structapp.count = static_cast<int>(request.count);
    }
}

}  // namespace

ModuleRows EncodeModules(ModuleRequest const& request) {
    ModuleRows result;
    int const symbology = LibrarySymbology(request);
    PublishedSymbol symbol(symbology);
    constexpr std::size_t MaxPrimary = sizeof symbol->primary - 1;
    std::string const primary = request.isGs1 ? ElementStrings(request.primary) : request.primary;
    if (symbology == 0 || primary.size() > MaxPrimary) {
        result.status = ValidationStatus::InvalidParameter;
        return result;
    }
    primary.copy(symbol->primary, MaxPrimary);
    SetOptions(symbol, request);
    result.status = symbol.Encode(request.isGs1 ? ElementStrings(request.data) : request.data);
    for (std::size_t r = 0; r < symbol.Rows(); ++r) {
        auto& row = result.rows.emplace_back(symbol.Columns());
        for (std::size_t c = 0; c < symbol.Columns(); ++c) row[c] = symbol.IsDark(r, c);
        result.heights.push_back(static_cast<unsigned>(std::lround(symbol->row_height[r])));
    }
    return result;
}

}  // namespace Barcode::Encoder
