#pragma once

#include <string>
#include <string_view>

#include "Barcode/Encoder/QREncoder.h"

namespace ZplCore {

/// The data of a QR Code field: switches, a comma, and the text.
struct QrFieldData {
    std::string text;
    Barcode::Encoder::QROptions options;
    std::string dropped;  ///< data in the place of the switches that are none
};

/// `level` holds where the data name none. Switches are error level and input mode: A for plain text, M for runs with a
/// character mode each (N, A, B with four digits of byte count, K). `D`, two digits of place, two of count, two hex
/// digits of parity and a comma lead a structured append, whose runs are parted by commas. What stands in the place of
/// the switches is dropped, whatever it is.
QrFieldData ReadQrFieldData(std::string_view data, char level, unsigned mask);

}  // namespace ZplCore
