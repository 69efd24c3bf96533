#pragma once

#include <string>
#include <utility>
#include <vector>

#include "Barcode/Encoder/ValidationStatus.h"
#include "Barcode/Model/BarcodeModels.h"
#include "barcodes/frame/GraphicHelper.h"

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
    std::vector<Block> GetLinkerBars() const;

private:
    LinearBarcodeModel code39_;
    StackedBarcodeModel microPDF417_;
};

}  // namespace Barcode::Model

namespace Barcode::Encoder {

/// TLC39, the linked symbol of telecommunications equipment: a Code 39 of six digits (the equipment code) and, behind a
/// comma, a serial number of up to 25 characters and further data behind another comma, in a MicroPDF417 of four
/// columns that tells readers of the Code 39 beside it.
struct Tlc39Encoder {
    static ValidationStatus Validate(std::string const& text);
    /// Of a text that Validate accepts.
    static Model::Tlc39BarcodeModel Encode(std::string const& text);
};

}  // namespace Barcode::Encoder

namespace Scripting::GraphicHelper {

/// Dots: the narrow and wide elements and the height of the Code 39, and the module and row height of the MicroPDF417.
/// Both parts stand in the middle; four modules lie between them, the upper one blank.
SketchedBitmap SketchTLC39Barcode(Barcode::Model::Tlc39BarcodeModel const& model, unsigned narrow, unsigned wide,
                                  unsigned height, unsigned module, unsigned rowHeight, Dpi dpi,
                                  unsigned long designResolution);

}  // namespace Scripting::GraphicHelper
