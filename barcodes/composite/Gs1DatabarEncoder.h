#pragma once

#include <string>
#include <string_view>

#include "barcodes/composite/Gs1DatabarModel.h"
#include "barcodes/frame/BarcodeFunctions.h"

namespace ZplCore {

/// The symbols of the GS1 DataBar command, in its numbering.
enum class Gs1Type : unsigned {
    Omnidirectional = 1,
    Truncated,
    Stacked,
    StackedOmnidirectional,
    Limited,
    Expanded,
    UPCA,
    UPCE,
    EAN13,
    EAN8,
    Gs1128WithCcAb,
    Gs1128WithCcC,
};

struct Gs1Symbol {
    BarcodeStatus status = BarcodeStatus::Valid;
    Barcode::Model::GS1BarcodeModel model;
    std::string_view reason = {};  ///< of a refusal that the status does not explain
    std::string shortened = {};    ///< the digits of the linear part, if the data have more than it holds
};

/// GS1 DataBar (ISO/IEC 24724) and GS1 Composite (ISO/IEC 24723). The linear part and, behind a vertical bar, the data
/// of the component above it. `segments` counts those in a row of an expanded symbol, 22 for a single row.
Gs1Symbol EncodeGs1(std::string const& data, Gs1Type type, unsigned segments);

/// Element strings with their application identifiers in brackets. Identifiers of a fixed length are followed by the
/// next, others by FNC1 (0x1D). Brackets and parentheses of the sender are kept as such.
std::string BracketIdentifiers(std::string_view elements);

}  // namespace ZplCore
