#pragma once

#include <string>

#include "Barcode/Encoder/ValidationStatus.h"
#include "Barcode/Model/BarcodeModels.h"
#include "Scripting/Api.h"

namespace Barcode::Encoder {

/// One of the 34 shapes of MicroPDF417. Rows 0 takes the fewest rows of that many columns that hold the text.
struct MicroPDF417Shape {
    unsigned columns = 1;  ///< of data codewords, 1 to 4
    unsigned rows = 0;

    friend bool operator==(MicroPDF417Shape, MicroPDF417Shape) = default;
};

/// Whether a reader is told to look for a linear symbol beside this one.
enum class MicroPDF417Linkage {
    None,
    LinearComponent,  ///< codeword 918: a linear symbol other than one of GS1
};

/// MicroPDF417 (ISO/IEC 24728). Texts are bytes.
struct PRINTENGINE_API MicroPDF417Encoder {
    static constexpr unsigned ModeCount = 34;
    /// The shape of a mode from 0 to 33.
    static MicroPDF417Shape ShapeOf(unsigned mode);

    /// A shape that there is not is an invalid parameter; whether the text fits is told by Encode.
    static ValidationStatus Validate(std::string const& text, MicroPDF417Shape shape);
    /// A narrow block for each module. No rows if the text does not fit.
    static Model::StackedBarcodeModel Encode(std::string const& text, MicroPDF417Shape shape,
                                             MicroPDF417Linkage linkage);
};

}  // namespace Barcode::Encoder
