#pragma once

#include <cstddef>
#include <cstdint>
#include <vector>

#include "Barcode/Model/BarcodeModels.h"

namespace Barcode::Encoder {

/// A symbol of ISO/IEC 18004, model 2.
struct QRShape {
    unsigned version = 1;  ///< 1 to 40
    char level = 'M';      ///< L, M, Q or H
    unsigned mask = 0;     ///< 0 to 7
};

constexpr unsigned MostQRVersion = 40;

/// How many codewords of data it holds; the mask does not matter.
std::size_t QRCapacity(QRShape const& shape);

/// The symbol of as many codewords.
Model::MatrixBarcodeModel QRSymbol(std::vector<std::uint8_t> const& data, QRShape const& shape);

}  // namespace Barcode::Encoder
