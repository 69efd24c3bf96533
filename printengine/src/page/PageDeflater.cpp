#include "printengine/src/page/PageDeflater.h"

#include <libdeflate.h>

#include <new>

namespace PrintEngine::Pages {

namespace {

// Measured on photographs: higher levels take two or three times as long and save little.
constexpr int CompressionLevel = 1;

}  // namespace

void PageDeflater::FreeCompressor::operator()(libdeflate_compressor* compressor) const {
    libdeflate_free_compressor(compressor);
}

PageDeflater::PageDeflater() = default;
PageDeflater::~PageDeflater() = default;

void PageDeflater::Append(Drawing::Raster const& raster, PageLayout const& layout, std::string& out) {
    if (!AppendDotRows(raster, layout, out)) AppendByLibrary(raster, layout, out);
}

/// False if that would be a poor stream; nothing is appended then.
bool PageDeflater::AppendDotRows(Drawing::Raster const& raster, PageLayout const& layout, std::string& out) {
    dotRows_.Start(PackedRowBytes(layout.width) + 1);
    // In a greyscale picture of one bit, 1 is white.
    PageComposer composer(raster, layout, false);
    for (int y = 0; y < layout.height;) {
        std::uint8_t* const row = dotRows_.Row();
        row[0] = 0;  // filter type None
        composer.Write(y, row + 1);
        dotRows_.Add();
        if (dotRows_.IsPoor()) return false;
        int const end = composer.EndOfLike(y);
        dotRows_.Repeat(static_cast<std::size_t>(end - y - 1));
        y = end;
    }
    if (dotRows_.IsPoorAtEnd()) return false;
    std::size_t const start = out.size();
    dotRows_.Finish(out);
    // The library stores what cannot be compressed.
    bool const isSmaller = out.size() - start < PackedRowBytes(layout.width) * static_cast<std::size_t>(layout.height);
    if (!isSmaller) out.resize(start);
    return isSmaller;
}

void PageDeflater::AppendByLibrary(Drawing::Raster const& raster, PageLayout const& layout, std::string& out) {
    if (!library_) library_.reset(libdeflate_alloc_compressor(CompressionLevel));
    if (!library_) throw std::bad_alloc();
    std::size_t const rowBytes = PackedRowBytes(layout.width) + 1;
    std::vector<std::uint8_t> rows(rowBytes * static_cast<std::size_t>(layout.height));
    PageComposer composer(raster, layout, false);
    for (int y = 0; y < layout.height; ++y) composer.Write(y, rows.data() + static_cast<std::size_t>(y) * rowBytes + 1);
    std::size_t const start = out.size();
    out.resize(start + libdeflate_zlib_compress_bound(library_.get(), rows.size()));
    out.resize(start + libdeflate_zlib_compress(library_.get(), rows.data(), rows.size(), out.data() + start,
                                                out.size() - start));
}

}  // namespace PrintEngine::Pages
