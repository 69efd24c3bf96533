#pragma once

#include <string>
#include <vector>

#include "Barcode/Encoder/ValidationStatus.h"
#include "Barcode/Model/BarcodeModels.h"

namespace Barcode::Encoder {

/// Data Matrix at the levels ECC 000, 050, 080, 100 and 140 (ISO/IEC 16022:2000, the annexes for these levels). A
/// symbol is a square of an odd number of modules from 9 to 49; 0 takes the smallest that fits. The formats 1 to 6 are
/// the alphabets of 11, 27, 41, 37, 128 and 256 characters.
struct DataMatrix0to140Encoder {
    static ValidationStatus Validate(std::string const& data, unsigned ecc, unsigned size, unsigned format);
    /// Of data that Validate accepts.
    static Model::MatrixBarcodeModel Encode(std::string const& data, int ecc, int size, int format);
};

using DataMatrixBits = std::vector<bool>;

/// Packs the characters of formats 1 to 4 in groups, the value of each group least significant bit first, the first
/// character with the weight 1.
void Base11Encode(DataMatrixBits& bits, std::string const& data);
void Base27Encode(DataMatrixBits& bits, std::string const& data);
void Base41Encode(DataMatrixBits& bits, std::string const& data);
void Base37Encode(DataMatrixBits& bits, std::string const& data);

}  // namespace Barcode::Encoder
