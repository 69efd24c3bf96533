#include "printengine/src/page/PngWriter.h"

#include <libdeflate.h>

#include <cmath>
#include <new>
#include <string_view>

namespace PrintEngine::Pages {

namespace {

// Measured on label pages: higher levels take longer and save next to nothing, as most of a page is white.
constexpr int CompressionLevel = 1;

// Buffers of an extraordinarily large page are not kept.
constexpr std::size_t KeptBytes = std::size_t{4} << 20;

void Append32(std::string& out, std::uint32_t value) {
    for (int shift = 24; shift >= 0; shift -= 8) out.push_back(static_cast<char>(value >> shift));
}

/// Puts the length in front of and the check sum behind a chunk whose type starts at `typeAt`.
void CloseChunk(std::string& file, std::size_t typeAt) {
    auto const length = static_cast<std::uint32_t>(file.size() - typeAt - 4);
    for (std::size_t i = 0; i < 4; ++i) file[typeAt - 4 + i] = static_cast<char>(length >> (24 - 8 * i));
    Append32(file, libdeflate_crc32(0, file.data() + typeAt, file.size() - typeAt));
}

/// Starts a chunk; gives the place of its type, for CloseChunk.
std::size_t OpenChunk(std::string& file, std::string_view type) {
    Append32(file, 0);
    file += type;
    return file.size() - 4;
}

}  // namespace

void PngWriter::FreeCompressor::operator()(libdeflate_compressor* compressor) const {
    libdeflate_free_compressor(compressor);
}

PngWriter::PngWriter() : compressor_(libdeflate_alloc_compressor(CompressionLevel)) {
    if (!compressor_) throw std::bad_alloc();
}

PngWriter::~PngWriter() = default;

std::string const& PngWriter::Encode(Drawing::Raster const& raster, PageLayout const& layout, unsigned dpi) {
    using namespace std::string_view_literals;
    std::size_t const rowBytes = PackedRowBytes(layout.width) + 1;
    if (rows_.capacity() > KeptBytes) std::vector<std::uint8_t>().swap(rows_);
    if (file_.capacity() > KeptBytes) std::string().swap(file_);
    rows_.resize(rowBytes * static_cast<std::size_t>(layout.height));
    // In a greyscale picture of one bit, 1 is white.
    PageComposer composer(raster, layout, false);
    for (int y = 0; y < layout.height; ++y) {
        std::uint8_t* const row = rows_.data() + static_cast<std::size_t>(y) * rowBytes;
        row[0] = 0;  // filter type None
        composer.Write(y, row + 1);
    }

    file_ = "\x89PNG\r\n\x1a\n"sv;
    std::size_t chunk = OpenChunk(file_, "IHDR");
    Append32(file_, static_cast<std::uint32_t>(layout.width));
    Append32(file_, static_cast<std::uint32_t>(layout.height));
    file_ += "\1\0\0\0\0"sv;  // 1 bit, greyscale, deflate, adaptive filters, not interlaced
    CloseChunk(file_, chunk);

    chunk = OpenChunk(file_, "pHYs");
    auto const pixelsPerMetre = static_cast<std::uint32_t>(std::lround(dpi / 0.0254));
    Append32(file_, pixelsPerMetre);
    Append32(file_, pixelsPerMetre);
    file_ += '\1';  // the unit is the metre
    CloseChunk(file_, chunk);

    chunk = OpenChunk(file_, "IDAT");
    std::size_t const start = file_.size();
    file_.resize(start + libdeflate_zlib_compress_bound(compressor_.get(), rows_.size()));
    file_.resize(start + libdeflate_zlib_compress(compressor_.get(), rows_.data(), rows_.size(), file_.data() + start,
                                                  file_.size() - start));
    CloseChunk(file_, chunk);

    CloseChunk(file_, OpenChunk(file_, "IEND"));
    return file_;
}

}  // namespace PrintEngine::Pages
