#pragma once

#include <string>

#include "printengine/src/page/PageDeflater.h"

namespace PrintEngine::Pages {

/// Makes 1-bit greyscale PNG (ISO/IEC 15948) of pages. Keeps its buffers from page to page.
class PngWriter {
public:
    explicit PngWriter(PageDeflater& deflater) : deflater_(deflater) {}

    /// The file of a page; valid until the next call. `dpi` goes into pHYs.
    std::string const& Encode(Drawing::Raster const& raster, PageLayout const& layout, unsigned dpi);

private:
    PageDeflater& deflater_;
    std::string file_;
};

}  // namespace PrintEngine::Pages
