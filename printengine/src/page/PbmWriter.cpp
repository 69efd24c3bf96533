#include "printengine/src/page/PbmWriter.h"

#include <cstdint>

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

}  // namespace PrintEngine::Pages
