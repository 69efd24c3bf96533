#pragma once

#include <string>

#include "Barcode/Encoder/ValidationStatus.h"
#include "barcodes/composite/Tlc39Model.h"

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
