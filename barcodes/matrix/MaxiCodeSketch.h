#pragma once

#include <string>
#include <utility>
#include <vector>

#include "Barcode/Encoder/ValidationStatus.h"
#include "Barcode/Model/BarcodeModels.h"
#include "barcodes/frame/GraphicHelper.h"
#include "frontend/context/ContextProcessor.h"

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

namespace Barcode::Encoder {

/// MaxiCode (ISO/IEC 16023). In modes 2 and 3 the data begin with the class of service and the country, three digits
/// each, and the postal code: nine digits (mode 2) or six characters (mode 3).
struct MaxiCodeEncoder {
    static ValidationStatus Validate(std::string const& data, unsigned mode);
    /// No cells if the data do not fit.
    static Model::MaxiCodeBarcodeModel Encode(std::string const& data, unsigned mode, unsigned index, unsigned count);
};

}  // namespace Barcode::Encoder

namespace Scripting::GraphicHelper {

/// The size follows the resolution of the target alone.
SketchedBitmap SketchMaxiCodeBarcode(Barcode::Model::MaxiCodeBarcodeModel const& model, Dpi dpi,
                                     unsigned long designResolution);

}  // namespace Scripting::GraphicHelper

namespace ZplCore {

struct MaxiCodeOptions {
    unsigned mode = 2;
    unsigned index = 1;  ///< in a structured append of `count` symbols
    unsigned count = 1;
};

void RenderMaxiCode(ContextProcessor& processor, MaxiCodeOptions const& options);

}  // namespace ZplCore
