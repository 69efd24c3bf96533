#pragma once

#include <utility>
#include <vector>

#include "Barcode/Model/BarcodeModels.h"

namespace Barcode::Model {

/// A Code 39 with a MicroPDF417 above it.
class Tlc39BarcodeModel : public BarcodeModelBase {
public:
    /// `microPDF417` has no rows where the Code 39 stands alone.
    Tlc39BarcodeModel(LinearBarcodeModel code39, StackedBarcodeModel microPDF417)
        : code39_(std::move(code39)), microPDF417_(std::move(microPDF417)) {}

    SymbologyGroup GetSymbologyGroup() const override { return SymbologyGroup::Composite; }
    LinearBarcodeModel const& GetCode39() const { return code39_; }
    StackedBarcodeModel const& GetMicroPDF417() const { return microPDF417_; }
    /// The elements between both parts, as wide as those of the Code 39: its first and last bar reach up towards the
    /// MicroPDF417. None where the Code 39 stands alone.
    std::vector<Block> GetLinkerBars() const {
        if (microPDF417_.GetRows() == 0) return {};
        std::vector<Block> bars = code39_.GetBlocks();
        for (std::size_t i = 1; i + 1 < bars.size(); ++i) bars[i].black = false;
        return bars;
    }

private:
    LinearBarcodeModel code39_;
    StackedBarcodeModel microPDF417_;
};

}  // namespace Barcode::Model
