#pragma once

#include <string>

#include "barcodes/composite/Tlc39Model.h"
#include "barcodes/frame/BarcodeFunctions.h"

namespace ZplCore {

/// TLC39, the linked symbol of telecommunications equipment: a Code 39 of six digits (the equipment code) and, behind a
/// comma, a serial number of up to 25 characters and further data behind another comma, in a MicroPDF417 of four
/// columns that tells readers of the Code 39 beside it.
struct Tlc39Encoder {
    static BarcodeStatus Validate(std::string const& text);
    /// Of a text that Validate accepts.
    static Barcode::Model::Tlc39BarcodeModel Encode(std::string const& text);
};

}  // namespace ZplCore
