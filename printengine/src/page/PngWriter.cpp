#include "printengine/src/page/PngWriter.h"

#include <libdeflate.h>

#include <cmath>
#include <string_view>

#include "Scripting/PageNotes.h"

namespace PrintEngine::Pages {

namespace {

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

void EncodePng(Drawing::Raster const& raster, PageLayout const& layout, unsigned dpi, PageDeflater& deflater,
               std::string& out, std::string_view note) {
    using namespace std::string_view_literals;
    out += "\x89PNG\r\n\x1a\n"sv;
    std::size_t chunk = OpenChunk(out, "IHDR");
    Append32(out, static_cast<std::uint32_t>(layout.width));
    Append32(out, static_cast<std::uint32_t>(layout.height));
    out += "\1\0\0\0\0"sv;  // 1 bit, greyscale, deflate, adaptive filters, not interlaced
    CloseChunk(out, chunk);

    chunk = OpenChunk(out, "pHYs");
    auto const pixelsPerMetre = static_cast<std::uint32_t>(std::lround(dpi / 0.0254));
    Append32(out, pixelsPerMetre);
    Append32(out, pixelsPerMetre);
    out += '\1';  // the unit is the metre
    CloseChunk(out, chunk);

    if (!note.empty()) {
        chunk = OpenChunk(out, "tEXt");
        out.append(Scripting::PageNotes::Keyword).append(1, '\0').append(note);
        CloseChunk(out, chunk);
    }

    chunk = OpenChunk(out, "IDAT");
    deflater.Append(raster, layout, out);
    CloseChunk(out, chunk);

    CloseChunk(out, OpenChunk(out, "IEND"));
}

}  // namespace PrintEngine::Pages
