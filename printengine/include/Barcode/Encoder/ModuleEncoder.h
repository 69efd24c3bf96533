#pragma once

#include <string>
#include <vector>

#include "Barcode/Encoder/ValidationStatus.h"
#include "Scripting/Api.h"

namespace Barcode::Encoder {

/// Published symbologies whose symbols the engine gives as plain rows of modules.
enum class ModuleSymbology {
    Code49,           ///< AIM BC6; rows without separators
    MaxiCode,         ///< ISO/IEC 16023; 33 rows of 30 cells, the last cell of odd rows has no meaning
    IntelligentMail,  ///< USPS-B-3200; ascenders, tracking bars and descenders in the even columns of three rows
    GS1128,           ///< GS1 General Specifications, 5.4
    DataBarOmnidirectional,
    DataBarStacked,
    DataBarStackedOmnidirectional,
    DataBarLimited,
    DataBarExpanded,
    DataBarExpandedStacked,
    UPCA,
    UPCE,
    EAN,  ///< EAN-13 or EAN-8, by the length of the data
};

/// What a symbol is made of. GS1 data have their application identifiers in brackets.
struct ModuleRequest {
    ModuleSymbology symbology = ModuleSymbology::Code49;
    std::string data;
    /// Of a MaxiCode of mode 2 or 3: postal code, country and class of service. With GS1128, DataBar, UPC and EAN: the
    /// linear part, whose composite component `data` is then.
    std::string primary;
    bool isComposite = false;  ///< `data` goes into a composite component above the linear part
    bool isGs1 = false;        ///< `data` begin with FNC1
    unsigned mode = 0;         ///< of MaxiCode (2 to 6); of a composite component (1 to 3 for CC-A to CC-C, 0 chooses)
    unsigned columns = 0;      ///< of a stacked DataBar: pairs of segments in a row
    unsigned index = 0;        ///< place in a structured append, from 1
    unsigned count = 0;        ///< symbols in the structured append; below 2 there is none
};

/// Rows from the top; true is dark.
struct ModuleRows {
    ValidationStatus status = ValidationStatus::Valid;
    std::vector<std::vector<bool>> rows;
    std::vector<unsigned> heights;  ///< of each row in modules; 0 where the symbology leaves it open
};

PRINTENGINE_API ModuleRows EncodeModules(ModuleRequest const& request);

}  // namespace Barcode::Encoder
