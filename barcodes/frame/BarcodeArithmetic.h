#pragma once

#include <string>
#include <string_view>

#include "Scripting/Dpi.h"
#include "barcodes/frame/BarcodeFunctions.h"

/// The arithmetic of widths and heights that barcodes share, and what their texts are mostly made of.
namespace ZplCore {

/// Width of a wide element in dots.
unsigned ComputeWideBarWidth(unsigned narrow, float ratio);
/// The ratio that a text begins with, to one decimal; 0 if it begins with no digit. Throws what std::stof throws.
float ParseRatio(std::string const& text);
/// From 2 to 3.
bool CheckRatio(float ratio);
/// At least one dot.
unsigned ClampBarcodeHeight(unsigned height);
/// The cell size in dots of two-dimensional symbols at that resolution; 0 if there is none.
unsigned MagnificationDefaultDPIConversion(Scripting::Dpi dpi);
/// 0 takes the default of the resolution; anything else is at most ten times `limit`.
unsigned ClampMagnificationFactor(Scripting::Dpi dpi, unsigned value, unsigned limit);

/// Makes lines of `leading`, the transformed data, the check digits if wanted, and `trailing`.
InterpretationText AddGuardsAndAppendCheckDigit(bool appendCheckDigit, char leading, char trailing,
                                                BarcodeTransform transform);
std::string ConvertToUpper(std::string_view text);
/// Leaves out every character that is not in `alphabet`.
BarcodeTransform KeepCharacters(std::string_view alphabet);

}  // namespace ZplCore
