#pragma once

#include "PrintEngine/PartManagement/LabelPart.h"
#include "Scripting/Api.h"

namespace PrintEngine::PartManagement {

/// Knows the label part in the printer. On the desk the part is whatever SetInstalledPart said last, at first a label
/// of 4 x 6 inches.
class PRINTENGINE_API PrinterLabelPartManager {
public:
    void SetInstalledPart(LabelPart const& part);

    /// Reads the part from the printer.
    void LoadPartFromPrinter();
    /// Takes the columns of a part with several labels side by side as one label.
    void MergeAllColumns();
    LabelPart GetLabelPart() const;

private:
    LabelPart installed_;
    LabelPart part_;
};

}  // namespace PrintEngine::PartManagement
