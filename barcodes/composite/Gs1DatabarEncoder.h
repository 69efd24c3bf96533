#pragma once

#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "Barcode/Encoder/ValidationStatus.h"
#include "Barcode/Model/BarcodeModels.h"
#include "barcodes/frame/GraphicHelper.h"

namespace Barcode::Model {

/// Rows of bars of different heights, from the top.
class GS1BarcodeModel : public BarcodeModelBase {
public:
    /// What a row's height follows.
    enum class Height {
        Modules,    ///< a number of modules
        Separator,  ///< the height of separators asked for
        Bars,       ///< the height of linear bars asked for
        Component,  ///< the row height of composite components asked for
    };
    struct GS1Fragment {
        std::vector<Block> blocks;
        Height height = Height::Modules;
        unsigned modules = 1;  ///< of Height::Modules
    };

    SymbologyGroup GetSymbologyGroup() const override { return SymbologyGroup::Composite; }
    std::vector<GS1Fragment> const& GetFragments() const { return fragments_; }
    GS1BarcodeModel& operator<<(GS1Fragment fragment) {
        fragments_.push_back(std::move(fragment));
        return *this;
    }

private:
    std::vector<GS1Fragment> fragments_;
};

}  // namespace Barcode::Model

namespace Barcode::Encoder {

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
    ValidationStatus status = ValidationStatus::Valid;
    Model::GS1BarcodeModel model;
    std::string_view reason = {};  ///< of a refusal that the status does not explain
};

/// GS1 DataBar (ISO/IEC 24724) and GS1 Composite (ISO/IEC 24723). The linear part and, behind a vertical bar, the data
/// of the component above it. `segments` counts those in a row of an expanded symbol, 22 for a single row.
Gs1Symbol EncodeGs1(std::string const& data, Gs1Type type, unsigned segments);

/// Element strings with their application identifiers in brackets. Identifiers of a fixed length are followed by the
/// next, others by FNC1 (0x1D). Brackets and parentheses of the sender are kept as such.
std::string BracketIdentifiers(std::string_view elements);

}  // namespace Barcode::Encoder

namespace Scripting::GraphicHelper {

/// Dots: the width of a module, the height of one in rows whose height the model tells, and the heights of separators,
/// of linear bars and of the rows of a composite component.
SketchedBitmap SketchGS1Barcode(Barcode::Model::GS1BarcodeModel const& model, unsigned module, unsigned moduleHeight,
                                unsigned separatorHeight, unsigned barHeight, unsigned componentRowHeight, Dpi dpi,
                                unsigned long designResolution);

}  // namespace Scripting::GraphicHelper
