#pragma once

#include <string>

#include "printengine/src/page/PageDeflater.h"

namespace PrintEngine::Pages {

/// Appends the file of a page to `out`: 1-bit greyscale PNG (ISO/IEC 15948). `dpi` goes into pHYs.
void EncodePng(Drawing::Raster const& raster, PageLayout const& layout, unsigned dpi, PageDeflater& deflater,
               std::string& out);

}  // namespace PrintEngine::Pages
