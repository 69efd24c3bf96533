#pragma once

#include <cstdint>
#include <memory>
#include <string>
#include <vector>

#include "printengine/src/page/DotRowDeflater.h"
#include "printengine/src/page/PageLayout.h"

struct libdeflate_compressor;

namespace PrintEngine::Pages {

/// Makes the compressed data of a page as PNG holds them (ISO/IEC 15948, clause 10): a zlib stream of rows that are led
/// by a byte for their filter, which is none; a set bit is white. Keeps its buffers from page to page.
class PageDeflater {
public:
    PageDeflater();
    ~PageDeflater();
    PageDeflater(PageDeflater const&) = delete;
    PageDeflater& operator=(PageDeflater const&) = delete;

    /// Appends the data of a page to `out`.
    void Append(Drawing::Raster const& raster, PageLayout const& layout, std::string& out);

private:
    bool AppendDotRows(Drawing::Raster const& raster, PageLayout const& layout, std::string& out);
    void AppendByLibrary(Drawing::Raster const& raster, PageLayout const& layout, std::string& out);

    struct FreeCompressor {
        void operator()(libdeflate_compressor* compressor) const;
    };

    DotRowDeflater dotRows_;
    std::unique_ptr<libdeflate_compressor, FreeCompressor> library_;  ///< null until a page needs it
};

}  // namespace PrintEngine::Pages
