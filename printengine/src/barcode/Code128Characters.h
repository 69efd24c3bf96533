#pragma once

#include <string_view>
#include <vector>

namespace Barcode::Encoder {

/// The control bytes of the encoder's input.
namespace Code128Control {
inline constexpr unsigned char Fnc3 = 224;
inline constexpr unsigned char Fnc2 = 225;
inline constexpr unsigned char Shift = 226;
inline constexpr unsigned char CodeC = 227;
inline constexpr unsigned char CodeB = 228;
inline constexpr unsigned char CodeA = 229;
inline constexpr unsigned char Fnc1 = 230;
inline constexpr unsigned char StartA = 231;
inline constexpr unsigned char StartB = 232;
inline constexpr unsigned char StartC = 233;
}  // namespace Code128Control

enum class Code128Subset { A, B, C };

/// Symbol characters (0 to 105) of a text whose subsets are switched by control bytes, from the start character to the
/// last one of the data. What the subset in force cannot carry is left out. Empty if no data is left.
std::vector<int> ManualCode128Characters(std::string_view text);

/// The fewest symbol characters for a text of ASCII and function characters; other bytes are left out. With
/// `startsWithFnc1` the symbol begins with start C and FNC1, which the text may hold already. Empty if no data is left.
std::vector<int> ShortestCode128Characters(std::string_view text, bool startsWithFnc1);

}  // namespace Barcode::Encoder
