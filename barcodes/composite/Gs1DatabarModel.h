#pragma once

#include <utility>
#include <vector>

#include "Barcode/Model/BarcodeModels.h"

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
