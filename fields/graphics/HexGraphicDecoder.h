#pragma once

#include <string_view>

#include "fields/graphics/GraphicData.h"

namespace ZplCore {

/// Reads hexadecimal picture data with repeat codes into an empty picture. Besides the digits: `G` to `Y` repeat the
/// next digit 1 to 19 times and `g` to `z` 20 to 400 times, counts in a row add up; `,` fills the row with white and
/// `!` with black, both a whole row if none has begun; `:` repeats the row above. Other characters are skipped.
void DecodeHexData(std::string_view text, Picture& picture);

}  // namespace ZplCore
