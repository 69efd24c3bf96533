#pragma once

#include <utility>
#include <vector>

#include "Barcode/Model/BarcodeModels.h"

namespace Barcode::Model {

/// 33 rows of hexagonal cells around a bull's-eye; odd rows stand half a cell to the right and lack their last cell.
class MaxiCodeBarcodeModel : public BarcodeModelBase {
public:
    explicit MaxiCodeBarcodeModel(std::vector<std::vector<bool>> modules = {}) : modules_(std::move(modules)) {}

    SymbologyGroup GetSymbologyGroup() const override { return SymbologyGroup::MaxiCode; }
    std::vector<std::vector<bool>> const& GetModules() const { return modules_; }

private:
    std::vector<std::vector<bool>> modules_;
};

}  // namespace Barcode::Model
