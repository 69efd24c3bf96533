#pragma once

#include <vector>

#include "Barcode/Model/BarcodeModels.h"
#include "Scripting/Api.h"

/// Parts of Code 128 (ISO/IEC 15417) for symbologies that are made of its rows.
namespace Barcode::Encoder::Code128Utils {

/// The characters that switch to a subset, in the order of the subsets A, B and C.
enum class ControlCharacter { CodeA, CodeB, CodeC };

/// The symbol character value of an ASCII character in a subset, -1 if the subset lacks it. Digits of subset C come in
/// pairs and are not told here.
PRINTENGINE_API int CharToSCV(unsigned char character, ControlCharacter subset);
/// Appends the modules of a symbol character from 0 to 105.
PRINTENGINE_API void CreateBars(unsigned char value, std::vector<Model::Block>& blocks);
PRINTENGINE_API void AddStopCode(std::vector<Model::Block>& blocks);
/// The check character: the first value and the second count once, the next twice, and so on, modulo 103.
PRINTENGINE_API int CheckCharacter(std::vector<int> const& values);

}  // namespace Barcode::Encoder::Code128Utils
