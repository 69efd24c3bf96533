#pragma once

#include <cstdint>
#include <memory>
#include <string>
#include <vector>

#include "printengine/src/page/PageLayout.h"

struct libdeflate_compressor;

namespace PrintEngine::Pages {

/// Makes 1-bit greyscale PNG (ISO/IEC 15948) of pages. Keeps its buffers from page to page.
class PngWriter {
public:
    PngWriter();
    ~PngWriter();
    PngWriter(PngWriter const&) = delete;
    PngWriter& operator=(PngWriter const&) = delete;

    /// The file of a page; valid until the next call. `dpi` goes into pHYs.
    std::string const& Encode(Drawing::Raster const& raster, PageLayout const& layout, unsigned dpi);

private:
    struct FreeCompressor {
        void operator()(libdeflate_compressor* compressor) const;
    };

    std::unique_ptr<libdeflate_compressor, FreeCompressor> compressor_;
    std::vector<std::uint8_t> rows_;
    std::string file_;
};

}  // namespace PrintEngine::Pages
