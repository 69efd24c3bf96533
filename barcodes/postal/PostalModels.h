#pragma once

#include <utility>
#include <vector>

#include "Barcode/Model/BarcodeModels.h"

namespace Barcode::Model {

/// A bar of four states: the middle third is always there.
struct IntelligentMailBar {
    bool descender = false;
    bool ascender = false;

    static constexpr IntelligentMailBar TrackingBar() { return {}; }
    friend constexpr bool operator==(IntelligentMailBar, IntelligentMailBar) = default;
};

/// Bars from left to right.
class IntelligentMailBarcodeModel : public BarcodeModelBase {
public:
    explicit IntelligentMailBarcodeModel(std::vector<IntelligentMailBar> bars = {}) : bars_(std::move(bars)) {}

    SymbologyGroup GetSymbologyGroup() const override { return SymbologyGroup::PostalFourState; }
    std::vector<IntelligentMailBar> const& GetBars() const { return bars_; }

private:
    std::vector<IntelligentMailBar> bars_;
};

}  // namespace Barcode::Model
