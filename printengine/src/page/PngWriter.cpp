#include "printengine/src/page/PngWriter.h"

#include <libdeflate.h>

#include <cmath>
#include <string_view>

namespace PrintEngine::Pages {

namespace {

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

std::string const& PngWriter::Encode(Drawing::Raster const& raster, PageLayout const& layout, unsigned dpi) {
    using namespace std::string_view_literals;
    if (file_.capacity() > KeptBytes) std::string().swap(file_);
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
    deflater_.Append(raster, layout, file_);
    CloseChunk(file_, chunk);

    CloseChunk(file_, OpenChunk(file_, "IEND"));
    return file_;
}

}  // namespace PrintEngine::Pages
