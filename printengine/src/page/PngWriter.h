#pragma once

#include <string>
#include <string_view>

#include "printengine/src/page/PageDeflater.h"

namespace PrintEngine::Pages {

/// Appends the file of a page to `out`: 1-bit greyscale PNG (ISO/IEC 15948). `dpi` goes into pHYs, `note`, if there is
/// one, into tEXt.
void EncodePng(Drawing::Raster const& raster, PageLayout const& layout, unsigned dpi, PageDeflater& deflater,
               std::string& out, std::string_view note = {});

}  // namespace PrintEngine::Pages
