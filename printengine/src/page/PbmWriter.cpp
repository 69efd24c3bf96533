#include "printengine/src/page/PbmWriter.h"

#include <algorithm>
#include <cstdint>
#include <cstring>
#include <string_view>

namespace PrintEngine::Pages {

std::string PbmHeader(PageLayout const& layout) {
    return "P4\n" + std::to_string(layout.width) + " " + std::to_string(layout.height) + "\n";
}

void EncodePbm(Drawing::Raster const& raster, PageLayout const& layout, std::string& file) {
    auto const header = PbmHeader(layout);
    // Not wiped before: a page is as large as the one before it.
    file.resize(header.size() + PackedRowBytes(layout.width) * static_cast<std::size_t>(layout.height));
    header.copy(file.data(), header.size());
    PackPage(raster, layout, reinterpret_cast<std::uint8_t*>(file.data()) + header.size());
}

void EncodePbm(Drawing::Raster const& raster, PageLayout const& layout, std::string& room,
               Scripting::TakePiece const& take) {
    constexpr std::size_t PieceBytes = std::size_t{64} << 10;
    room.resize(PieceBytes + PackedRowBytes(layout.width));
    auto const header = PbmHeader(layout);
    std::size_t size = header.copy(room.data(), header.size());
    PagePacker packer(raster, layout);
    auto* const begin = reinterpret_cast<std::uint8_t*>(room.data());
    for (;;) {
        size = static_cast<std::size_t>(packer.Pack(begin + size, begin + PieceBytes) - begin);
        take(std::string_view(room).substr(0, std::min(size, PieceBytes)));
        if (size < PieceBytes) return;
        // What the last row has more begins the next piece.
        size -= PieceBytes;
        std::memcpy(begin, begin + PieceBytes, size);
    }
}

}  // namespace PrintEngine::Pages
